#!/usr/bin/env bash
# The preset lists of the real module under wine, played through filterhost's driver, on a
# plug-in folder of its own whose Presets tree the checks may change:
#   preset-checks.sh WIN64_BUILD NATIVE_BIN OUT_DIR
# - the fixed rows, folder rows and the walk into a sub-folder and back;
# - a preset row changes the preview, a second one too, and Last Used Settings brings back
#   the picture from before the first, also after Reset All; OK equals the headless repeat
#   and the played keys;
# - Save over an existing name warns, No returns to the name, Yes overwrites and adds no row;
#   a new name adds one; a name no file can carry ends in "Cannot Save File!"; Delete removes
#   the file at once, and stays off on a folder row; Cancel leaves the files so;
# - the lists with folder rows at 96 and 120 dpi, to look at; timings, logged.
source "$(dirname "$0")/driven-setup.sh" "$@"
"$native/qz-testcard" "$out/in.pam" 900 700 RGB
"$native/qz-testcard" "$out/big.pam" 6000 4000 RGB

# The module with the shipped textures beside it, and a Presets tree made of shipped presets
# (our own writer's) under names the checks know.
module_copy
presets="$plug/Quenzit/Presets"
for kind in Basic Wash Surface Background User Colors BackPalette; do mkdir -p "$presets/$kind"; done
cp "$data/Presets/Basic/Coffee_Table_on_Bark.qztpst" "$presets/Basic/Bark.qztpst"
cp "$data/Presets/Basic/Old_Film_on_Riveted_Hull.qztpst" "$presets/Basic/Hull.qztpst"
mkdir -p "$presets/Basic/Old"
cp "$data/Presets/Basic/Ink_Spill_on_Glazed_Pot.qztpst" "$presets/Basic/Old/Pot.qztpst"
cp "$data/Presets/Wash/Ink_Spill.qztpst" "$presets/Wash/Alpha.qztpst"
cp "$data/Presets/Wash/Old_Film.qztpst" "$presets/Wash/Beta.qztpst"
cp "$data/Presets/Wash/Peeled_Away.qztpst" "$presets/Wash/Gamma.qztpst"
mkdir -p "$presets/Wash/Old"
cp "$data/Presets/Basic/Sun_Bleached_on_Denim_Patch.qztpst" "$presets/User/Mine.qztpst"
mkdir -p "$presets/User/Many" "$presets/User/Sub"
for i in $(seq -w 1 500); do cp "$presets/Basic/Bark.qztpst" "$presets/User/Many/Look_$i.qztpst"; done
run() { # run NAME [ARGS...]: the dialog on the module copy, driven by NAME.txt
  local name=$1
  shift
  [ "$name" = timings ] || rm -f "$plug/Quenzit.ini"
  host --plugin "$plug/Quenzit64.8bf" --dialog --drive "$out/$name.txt" "$@" >"$out/$name.log" 2>&1
}
hash_of() { awk -v f="$out/$1.png" '$1 == "preview" && $2 == f { print $3 }' "$out/$2.log" | tail -1; }

# Loading rows, then OK.
cat >"$out/load.txt" <<SCRIPT
tab 0
wait-render
expect-rows 1084 5
expect-row 1084 0 Reset All
expect-row 1084 1 Last Used Settings
expect-row 1084 2 \\tOld
expect-rows 1013 3
expect-row 1013 0 \\tMany
expect-row 1013 2 Mine
expect-enabled 1092 0
preview $out/before.png
select 1084 3
wait-render
expect-preview changed
preview $out/first.png
select 1084 4
wait-render
expect-preview changed
preview $out/second.png
select 1084 1
wait-render
preview $out/last-used.png
select 1084 0
wait-render
expect WFN1=No_Texture.qzt
expect BkFN=No_Texture.qzt
expect-preview changed
select 1084 1
wait-render
preview $out/last-used-again.png
dblclick 1084 2
expect-text 1091 Old\\\\
expect-rows 1084 4
expect-row 1084 2 \\t..
select 1084 2
wait-render
preview $out/folder-click.png
shot $out/basic-folder-96dpi.png
dblclick 1084 2
expect-text 1091 
expect-rows 1084 5
select 1013 2
expect-enabled 1092 1
wait-render
preview $out/user.png
select 1013 0
expect-enabled 1092 0
tab 1
wait-render
select 1085 1
wait-render
expect-preview changed
ok
SCRIPT
run load --in "$out/in.pam" --out "$out/load.pam" --record "$out/load-keys.txt" --save-block "$out/load.bin" ||
  fail "the loading run failed: $(cat "$out/load.log")"
[ -n "$(hash_of before load)" ] && [ "$(hash_of before load)" = "$(hash_of last-used load)" ] ||
  fail "Last Used Settings did not bring back the picture from before the first preset"
[ "$(hash_of last-used load)" = "$(hash_of last-used-again load)" ] ||
  fail "after Reset All, Last Used Settings did not bring back the picture from before the presets"
[ "$(hash_of last-used load)" = "$(hash_of folder-click load)" ] || fail "a folder row's click changed the picture"
host --plugin "$plug/Quenzit64.8bf" --in "$out/in.pam" --out "$out/load-repeat.pam" --load-block "$out/load.bin"
cmp "$out/load.pam" "$out/load-repeat.pam" || fail "load: the repeat from the kept block differs from OK"
mapfile -t keys < <(grep -v '^SFH2=' "$out/load-keys.txt")
host --plugin "$plug/Quenzit64.8bf" --in "$out/in.pam" --out "$out/load-played.pam" "${keys[@]}"
cmp "$out/load.pam" "$out/load-played.pam" || fail "load: the recorded keys played differ from OK"

# Save and Delete on the Wash page, then Cancel: the files stay as the clicks left them.
cp "$presets/Wash/Beta.qztpst" "$out/beta-before.qztpst"
cat >"$out/save.txt" <<SCRIPT
tab 1
wait-render
expect-rows 1085 4
expect-row 1085 0 \\tOld
expect-row 1085 2 Beta
type 1024 150
key ENTER
expect WSc1=150
click 1382
box expect-title Save Parameters Preset
box expect-text 1359 The name of new preset
box expect-enabled 1 0
box type 1358 Beta.qztpst
box expect-enabled 1 1
box shot $out/save-name.png
box command 1
box expect-title File Save Warning
box expect-text 65535 The file already exist!\\n Do you want rewrite it?
box shot $out/save-warning.png
answer no
box expect-title Save Parameters Preset
box expect-text 1358 Beta.qztpst
box command 1
box expect-title File Save Warning
answer yes
expect-rows 1085 4
click 1382
box type 1358 Fresh
box command 1
expect-rows 1085 5
expect-row 1085 3 Fresh
click 1382
box type 1358 ..\\Escape
box command 1
box expect-text 65535 Cannot Save File!
answer ok
expect-rows 1085 5
click 1382
box type 1358 Never
box command 2
expect-rows 1085 5
select 1085 3
expect-enabled 1087 1
click 1087
expect-rows 1085 4
expect-row 1085 3 Gamma
expect-enabled 1087 0
select 1085 0
expect-enabled 1087 0
click 1087
expect-rows 1085 4
expect-row 1085 0 \\tOld
cancel
SCRIPT
status=0
run save --in "$out/in.pam" --out "$out/save.pam" || status=$?
[ "$status" = 3 ] && grep -q "user cancelled" "$out/save.log" || fail "the saving run: status $status, $(cat "$out/save.log")"
[ ! -e "$presets/Wash/Fresh.qztpst" ] || fail "Delete left Fresh"
[ -d "$presets/Wash/Old" ] || fail "a click on Delete over a folder row removed the folder"
[ ! -e "$presets/Wash/Never.qztpst" ] && [ ! -e "$presets/Escape.qztpst" ] && [ ! -e "$presets/Wash/..\\Escape.qztpst" ] ||
  fail "a cancelled or refused name left a file"
! cmp -s "$out/beta-before.qztpst" "$presets/Wash/Beta.qztpst" || fail "Yes did not rewrite Beta"
grep -q '^1cSW 150 ' "$presets/Wash/Beta.qztpst" || fail "Beta does not hold the wash scale typed: $(head -8 "$presets/Wash/Beta.qztpst")"

# The lists with folder rows at 96 and 120 dpi, on the Basic and Wash pages.
for dpi in 96 120; do
  set_dpi "$dpi"
  cat >"$out/shots-$dpi.txt" <<SCRIPT
tab 0
wait-render
select 1013 1
shot $out/basic-lists-${dpi}dpi.png
tab 1
wait-render
select 1085 1
shot $out/wash-list-${dpi}dpi.png
cancel
SCRIPT
  run "shots-$dpi" --in "$out/in.pam" --out "$out/shots-$dpi.pam" ||
    grep -q "user cancelled" "$out/shots-$dpi.log" || fail "the lists at $dpi dpi: $(cat "$out/shots-$dpi.log")"
done
set_dpi 96

# Timings with a preview of 800 x 600 on a big picture, logged only: a preset row to the
# repainted preview (every layer rebuilt), and a folder of 500 presets listed.
printf ';Parameters for Quenzit plug-in UI\r\ntfeL 0 \t\t\t\t;Left of window\r\nhtdW 1271 \t\t\t\t;Width of window\r\nthgH 846 \t\t\t\t;Height of window\r\n' >"$plug/Quenzit.ini"
cat >"$out/timings.txt" <<SCRIPT
tab 0
wait-render
timed select 1084 3
wait-render
timed select 1084 4
wait-render
timed select 1084 3
wait-render
timed dblclick 1013 0
expect-rows 1013 501
timed dblclick 1013 0
timed dblclick 1013 0
timed dblclick 1013 0
shot $out/timings.png
# For comparison, a render with no layer rebuilt (the key's settling adds some 60 ms).
tab 1
wait-render
type 1027 150
timed key ENTER
cancel
SCRIPT
run timings --in "$out/big.pam" --out "$out/timings.pam" || grep -q "user cancelled" "$out/timings.log" ||
  fail "the timings run: $(cat "$out/timings.log")"
grep '^timed' "$out/timings.log" | sed 's/^/preset-checks: /'
echo "preset-checks: pictures in $out"
