#!/usr/bin/env bash
# The Background page's preset strip and the Auto button, on the real module under wine,
# from a plug-in folder of its own (the strip writes its pictures beside its presets):
#   strip-checks.sh WIN64_BUILD NATIVE_BIN OUT_DIR
# - the first opening makes a picture file per preset, the second reads them (timed);
# - the strip slides to its second page (shots during and after), a click on a picture
#   applies that preset's background and changes the preview; OK equals the headless
#   repeat and the played keys;
# - Auto plays its sound (logged, not heard), changes the look; OK equals the repeats;
# - the strip at 96 and 120 dpi, to look at.
source "$(dirname "$0")/driven-setup.sh" "$@"
"$native/qz-testcard" "$out/in.pam" 600 400 RGB

module_copy
mkdir -p "$plug/Quenzit/Presets"
for kind in Basic Wash Surface Background User Colors; do
  [ -e "$data/Presets/$kind" ] && ln -s "$data/Presets/$kind" "$plug/Quenzit/Presets/$kind"
done
palette="$plug/Quenzit/Presets/BackPalette"
mkdir -p "$palette"
cp "$data/Presets/BackPalette/"*.qztpst "$palette/"
[ -f "$palette/none.qztpst" ] || fail "no none.qztpst among the shipped palettes"
count=$(ls "$palette" | grep -c '\.qztpst$')
run() { # run NAME: the dialog on the module copy, driven by NAME.txt to its Cancel
  local name=$1 status=0
  rm -f "$plug/Quenzit.ini"
  host --plugin "$plug/Quenzit64.8bf" --in "$out/in.pam" --out "$out/$name.pam" --dialog --drive "$out/$name.txt" \
    >"$out/$name.log" 2>&1 || status=$?
  [ "$status" = 3 ] && grep -q "user cancelled" "$out/$name.log" && ! grep -q "drive:" "$out/$name.log" ||
    fail "the $name run: status $status, $(cat "$out/$name.log")"
}

# Cold, then warm: the pictures are made once and read after.
cat >"$out/open.txt" <<SCRIPT
timed tab 3
wait-render
shot $out/strip-open.png
cancel
SCRIPT
run open
made=$(ls "$palette" | grep -c '\.bmp$' || true)
[ "$made" -eq $((count - 1)) ] || fail "expected $((count - 1)) picture files beside the presets, found $made"
[ ! -e "$palette/none.bmp" ] || fail "the placeholder of none was written to a file"
cp "$out/open.log" "$out/open-cold.log"
run open
cp "$out/open.log" "$out/open-warm.log"
echo "strip_checks: Background page first shown, pictures made: $(awk '$1 == "timed" { print $2 " ms" }' "$out/open-cold.log")"
echo "strip_checks: Background page first shown, pictures read: $(awk '$1 == "timed" { print $2 " ms" }' "$out/open-warm.log")"

# The preset at index 5, the first of the second page: the sixth name in listing order
# with "none" first.
sixth=$(ls "$palette" | grep '\.qztpst$' | grep -vix 'none\.qztpst' | awk '{ print toupper($0) "\t" $0 }' |
  LC_ALL=C sort | cut -f2 | sed -n 5p)
texture=$(awk '$1 == "NFkB" { print $2; exit }' "$palette/$sixth")
[ -n "$texture" ] || fail "no background texture in $sixth"

# Slide to page 2 and click its first picture.
cat >"$out/strip.txt" <<SCRIPT
tab 3
wait-render
expect-enabled 1157 1
preview $out/before.png
click-at 1157 345 30
pause 120
shot-now $out/slide-during.png
pause 600
shot $out/slide-after.png
click-at 1157 50 30
wait-render
expect BkFN=$texture
expect-preview changed
shot $out/applied.png
ok
SCRIPT
play strip --plugin "$plug/Quenzit64.8bf"
recorded strip "BkFN=$texture"

# Auto, its sound logged instead of played.
cat >"$out/auto.txt" <<SCRIPT
tab 0
wait-render
preview $out/auto-before.png
click 1129
wait-render
expect-preview changed
shot $out/auto.png
ok
SCRIPT
rm -f "$out/sound.log"
export QZ_SOUND_LOG="Z:$out/sound.log"
play auto --plugin "$plug/Quenzit64.8bf"
unset QZ_SOUND_LOG
grep -q '^play [1-9]' "$out/sound.log" || fail "Auto did not ask for its sound"
recorded auto 'BkFN=.+'

# The strip to look at.
for dpi in 96 120; do
  set_dpi "$dpi"
  cat >"$out/shots-$dpi.txt" <<SCRIPT
tab 3
wait-render
shot $out/strip-${dpi}dpi.png
cancel
SCRIPT
  run "shots-$dpi"
done
echo "strip_checks: passed"
