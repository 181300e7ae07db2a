#!/usr/bin/env bash
# The drawers of the real module under wine, played through filterhost's driver, on a
# plug-in folder of its own (the thumbnail caches are written beside its textures):
#   drawer-checks.sh WIN64_BUILD NATIVE_BIN OUT_DIR
# - the texture drawer from the Wash page: its slide (pictures), the dialog in drawer mode,
#   paging, both filters, Live Preview; pages timed;
# - a tile tried in the preview, then Cancel: the preview as before, byte for byte;
# - a tile, then Select, then OK: equal to the headless repeat and the played keys;
# - the tones drawer refuses its separator rows; F1 in it opens the picker's help page;
# - both drawers open at 96 and 120 dpi, to look at.
source "$(dirname "$0")/driven-setup.sh" "$@"
"$native/qz-testcard" "$out/in.pam" 900 700 RGB

module_copy
ln -s "$data/Presets" "$plug/Quenzit/Presets"
# Every run, the repeats of play too, on the module copy.
host() { wine "$win/bin/filterhost.exe" --plugin "$plug/Quenzit64.8bf" "$@"; }
run() { # run NAME [ARGS...]: the dialog driven by NAME.txt
  local name=$1
  shift
  rm -f "$plug/Quenzit.ini"
  host --dialog --drive "$out/$name.txt" "$@" >"$out/$name.log" 2>&1
}
hash_of() { awk -v f="$out/$1.png" '$1 == "preview" && $2 == f { print $3 }' "$out/$2.log" | tail -1; }
cancelled() { [ "$1" = 3 ] && grep -q "user cancelled" "$out/$2.log"; }
textures=$(find "$data" -maxdepth 1 -name '*.qzt' | wc -l)

# The texture drawer: slide, drawer mode, pages, filters, Live Preview, a try and Cancel.
cat >"$out/browse.txt" <<SCRIPT
size 1000 860
wait-render
tab 1
wait-render
preview $out/before.png
expect-shown 1177 0
page-command 1077
shot-now $out/slide-1.png
shot-now $out/slide-2.png
shot $out/open.png
expect-shown 1177 1
expect-shown 114 1
expect-enabled 999 0
expect-enabled 1126 0
timed drawer-command 1004
timed drawer-command 1004
timed drawer-command 1004
drawer-command 1004
expect-shown 1004 0
expect-shown 1003 1
shot $out/page-1.png
timed drawer-command 1003
timed drawer-command 1004
select 1110 1
expect-shown 100 1
expect-shown 101 1
expect-shown 102 0
expect-shown 1003 0
shot $out/filter-solid.png
select 1110 0
select 1111 10
shot $out/filter-fabrics.png
select 1111 0
expect-shown 1003 1
picture 101
click 1443
wait-render
expect-picture 101 changed
shot $out/live.png
timed drawer-command 1003
timed drawer-command 1004
click 1443
wait-render
expect-picture 101 same
click 102
wait-render
expect-preview changed
click 2
wait-render
pause 800
expect-preview same
expect-shown 1177 0
expect-enabled 999 1
expect-enabled 1126 1
cancel
SCRIPT
status=0
run browse --in "$out/in.pam" --out "$out/browse.pam" || status=$?
cancelled "$status" browse || fail "the browsing run: status $status, $(cat "$out/browse.log")"
[ "$(find "$plug/Quenzit" -maxdepth 1 -name '*.qzt.bmp' | wc -l)" -ge 20 ] ||
  fail "the pages visited left no thumbnail caches beside the textures"
[ "$textures" -gt 15 ] || fail "too few textures ($textures) to page through"

# A tile, then Select, then OK: the same picture as the repeats.
cat >"$out/choose.txt" <<SCRIPT
tab 1
wait-render
preview $out/choose-before.png
click 1077
wait-render
click 104
wait-render
expect-preview changed
click 1
wait-render
pause 800
expect-shown 1177 0
expect-enabled 1 1
ok
SCRIPT
play choose
recorded choose 'WFN1=.*'

# The tones drawer from the Background page: a separator row cannot be chosen.
cat >"$out/tones.txt" <<SCRIPT
tab 3
wait-render
click 1200
wait-render
expect-shown 1178 1
key F1
wait-render
expect-text 1111 All Categories
select 1111 10
expect-text 1111 All Categories
select 1111 1
expect-text 1111 Red Tones
select 1111 19
expect-text 1111 Red Tones
shot $out/tones-red.png
select 1111 0
click 101
wait-render
click 2
wait-render
pause 800
expect-shown 1178 0
cancel
SCRIPT
status=0
run tones --in "$out/in.pam" --out "$out/tones.pam" --opened "$out/tones-opened.log" || status=$?
cancelled "$status" tones || fail "the tones run: status $status, $(cat "$out/tones.log")"
grep -q 'texture_picker\.html$' "$out/tones-opened.log" || fail "F1 in a drawer opened $(cat "$out/tones-opened.log")"

# Both drawers at 96 and 120 dpi.
for dpi in 96 120; do
  set_dpi "$dpi"
  cat >"$out/shots-$dpi.txt" <<SCRIPT
tab 1
wait-render
click 1077
shot $out/textures-${dpi}dpi.png
click 2
wait-render
pause 800
tab 2
wait-render
click 1402
shot $out/tones-${dpi}dpi.png
click 2
wait-render
pause 800
cancel
SCRIPT
  status=0
  run "shots-$dpi" --in "$out/in.pam" --out "$out/shots-$dpi.pam" || status=$?
  cancelled "$status" "shots-$dpi" || fail "the drawers at $dpi dpi: $(cat "$out/shots-$dpi.log")"
done
set_dpi 96
grep -h '^timed' "$out"/*.log || true
