#!/usr/bin/env bash
# The tab pages of the real module under wine, played through filterhost's driver:
#   page-checks.sh WIN64_BUILD NATIVE_BIN OUT_DIR
# - per page, one run that changes each kind of control (slider by the keyboard, edit,
#   spinner, combo, check, radio, swatch answered by the host's picker, pad, rotate
#   buttons), each followed by a changed preview and the expected key; then OK, and the
#   same picture from the kept block and from the recorded keys played with no dialog;
# - Esc in a changed field restores it; a second Esc ends the dialog as a cancel that
#   keeps what was committed;
# - pictures of the pages with every texture off, to look at.
source "$(dirname "$0")/driven-setup.sh" "$@"
"$native/qz-testcard" "$out/in.pam" 900 700 RGB

# Each change: the key it writes and a preview unlike the one before.
# The key is read first: a click that went astray shows there, not as an unchanged picture.
step() { printf '%s\nwait-render\n%s\nwait-render\nexpect-preview changed\npreview %s\n' "$1" "${2:-}" "$out/step.png"; }

{
  echo "tab 1"
  echo "wait-render"
  echo "preview $out/step.png"
  # A slider by the keyboard: the click gives the trackbar the focus.
  step "click 1042
wait-render
key END" "expect ESf1=200"
  echo "expect-text 1043 200"
  # An edit ends with Enter, which moves on and leaves the dialog open.
  step "type 1024 150
key ENTER" "expect WSc1=150"
  # Five spinner steps at once render once, after the last.
  printf 'click-at 1328 6 3\n%.0s' 1 2 3 4 5
  echo "expect-preview same"
  echo "expect-text 1027 105"
  step "wait-render
wait-render
wait-render" "expect WIt1=105"
  step "click 1129
key DOWN
key ENTER" "expect WTp1=1"
  step "click 1130"
  step "click 1005" "expect WFV1=1"
  echo "expect WFH1=0"
  step "click 1002" "expect WAg1=90"
  step "click 1231"
  # The seed shows only where the coverage leaves gaps.
  step "type 1034 40
key ENTER" "expect Cov1=40"
  step "type 1029 1234
key ENTER"
  echo "expect-text 1029 234"
  echo "expect Rnd1=234"
  echo "click 1032"
  echo "expect Isd1=0"
  # The read-only name's focus leaving reaches the light's handler.
  echo "type 1015 x"
  echo "key TAB"
  echo "expect SAp1=0"
  echo "shot $out/wash-changed.png"
  echo "ok"
} >"$out/wash.txt"
play wash --pick-colour 40,160,90

{
  echo "tab 2"
  echo "wait-render"
  echo "preview $out/step.png"
  step "type 1276 150
key ENTER"
  echo "expect-text 1276 100"
  echo "expect SMD1=100"
  step "click 1352
wait-render
key END" "expect SDh1=100"
  step "type 1062 40
key ENTER" "expect SSc1=40"
  printf 'click-at 1070 6 3\n%.0s' 1 2 3
  step "wait-render
wait-render
wait-render" "expect SHue=3"
  # Small steps: a washed-out picture would hide the changes after them.
  step "click 1353
wait-render
key RIGHT" "expect SBRH=101"
  step "click 1354
wait-render
key LEFT" "expect SfCn=99"
  step "click 1132
key DOWN
key ENTER" "expect STp1=2"
  step "click 1073"
  echo "expect-text 1150 Custom"
  step "click 1058"
  step "click 1007" "expect SPO1=1"
  step "click 1090" "expect SFV1=1"
  step "click 1089" "expect SFH1=1"
  echo "click 1006"
  echo "wait-render"
  echo "expect SIn1=1"
  echo "preview $out/step.png"
  step "click 1201" "expect SAg1=90"
  echo "shot $out/surface-changed.png"
  echo "ok"
} >"$out/surface.txt"
play surface --pick-colour 40,160,90

{
  echo "tab 3"
  echo "wait-render"
  echo "preview $out/step.png"
  step "click 1050
wait-render
key END" "expect BScl=200"
  echo "click-at 1028 6 14"
  step "wait-render
wait-render
wait-render" "expect BHue=-1"
  step "type 1330 40
key ENTER" "expect BMdt=40"
  step "click 1047"
  echo "expect-text 1015 Custom"
  step "click 1405" "expect BEnh=1"
  step "click 1306" "expect BFpV=1"
  step "click 1053" "expect BInv=1"
  step "click 1079" "expect BAng=90"
  echo "shot $out/background-changed.png"
  echo "ok"
} >"$out/background.txt"
play background --pick-colour 40,160,90

# Esc puts back a field's stored value and keeps the dialog; Esc on a field that shows its
# stored value ends the dialog, and what was committed stays.
cat >"$out/esc.txt" <<SCRIPT
tab 1
wait-render
type 1024 30
key ENTER
expect WSc1=30
type 1027 77
key ESC
expect-text 1027 100
expect-enabled 1 1
type 1027 100
key ESC
SCRIPT
status=0
host --in "$out/in.pam" --out "$out/esc.pam" --dialog --drive "$out/esc.txt" --save-block "$out/esc.bin" \
  2>"$out/esc.log" || status=$?
[ "$status" = 3 ] && grep -q "user cancelled" "$out/esc.log" || fail "the second Esc: status $status, $(cat "$out/esc.log")"
host --in "$out/in.pam" --out "$out/esc-repeat.pam" --load-block "$out/esc.bin"
host --in "$out/in.pam" --out "$out/esc-played.pam" WSc1=30
cmp "$out/esc-repeat.pam" "$out/esc-played.pam" || fail "the cancel did not keep the committed wash scale"

# Every texture off: each page as it stands disabled; its tooltips, the flips' mismatched
# ones on the Background page among them.
cat >"$out/off.txt" <<SCRIPT
tab 0
expect-tip 1084 Click to apply factory created settings
expect-tip 1300 Save current settings
tab 1
wait-render
expect-tip 1005 Flip wash effect horizontally
expect-tip 2001 Rotate wash effect 90 degrees counter-clockwise
expect-tip 1035 Adjust the area the wash effect is applied
expect-tip 1146 Set offset of wash effect (Hold CTRL + Drag in Preview Area)
expect-tip 1129 Select desired wash type
expect-enabled 1077 1
expect-enabled 1023 0
expect-enabled 1130 0
shot $out/wash-off.png
tab 2
wait-render
expect-tip 1077 Adjust the amount of colorization applied to the surface effect
expect-tip 1015 Adjust the lighting direction applied to surface effect
expect-tip 1352 Reduce or increase the intensity of the surface effect
expect-tip 1132 Type of Surface
expect-enabled 1000 1
expect-enabled 1061 0
expect-enabled 1205 0
shot $out/surface-off.png
tab 3
wait-render
expect-tip 1306 Flip background effect vertically
expect-tip 1052 Flip background effect horizontally
expect-tip 1028 Adjust background color hue
expect-tip 1015 Select preset colors to apply to background effect
expect-tip 1405 Enhanced mode
expect-enabled 1050 0
shot $out/background-off.png
cancel
SCRIPT
host --in "$out/in.pam" --out "$out/off.pam" --dialog --drive "$out/off.txt" WFN1=No_Texture.qzt \
  SFN1=No_Texture.qzt BkFN=No_Texture.qzt 2>"$out/off.log" || grep -q "user cancelled" "$out/off.log" ||
  fail "the pages with no texture: $(cat "$out/off.log")"
echo "page-checks: pictures in $out"
