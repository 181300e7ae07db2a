#!/usr/bin/env bash
# Linked textures in the real module under wine, played through filterhost's driver:
#   link-checks.sh WIN64_BUILD NATIVE_BIN OUT_DIR
# - wash and surface on one texture: the link dialog from the Surface page with its radios
#   (the background's hidden), No leaves the link off, Yes with the wash as master gives
#   the surface the wash's scale, and later wash scale changes move the surface's too;
# - wash, surface and background on one texture: unlinking the wash leaves the others;
# - every OK against the repeat from the kept block and the recorded keys played;
# - the dialog and the link buttons' faces at 96 and 120 dpi, to look at.
source "$(dirname "$0")/driven-setup.sh" "$@"
"$native/qz-testcard" "$out/in.pam" 600 450 RGB

pair="WFN1=Rusted.qzt SFN1=Rusted.qzt BkFN=No_Texture.qzt W2Ex=false Sf2E=false WSc1=100 SSc1=60"
cat >"$out/pair.txt" <<SCRIPT
tab 1
wait-render
expect-checked 2000 0
shot $out/wash-unlinked.png
tab 2
wait-render
expect-enabled 1001 1
expect-checked 1001 0
shot $out/surface-unlinked.png
click 1001
box expect-shown 1100 1
box expect-checked 1100 0
box expect-shown 1099 1
box expect-checked 1099 1
box expect-shown 1101 0
box expect-text 1102 Would you like to link and apply the same settings to this texture?
box expect-text 1099 Same as Wash tab settings
box expect-text 1100 Same as Surface tab settings
box expect-text 1101 Same as Background tab settings
box expect-text 6 Yes
box shot $out/link-dialog-96dpi.png
answer no
expect-checked 1001 0
expect SSc1=60
preview $out/step.png
click 1001
box click 1100
box expect-checked 1099 0
box click 1099
box expect-checked 1100 0
answer yes
wait-render
expect-checked 1001 1
expect SSc1=100
expect-text 1062 100
expect-preview changed
shot $out/surface-linked.png
tab 1
wait-render
expect-checked 2000 1
shot $out/wash-linked.png
type 1024 150
key ENTER
expect WSc1=150
expect SSc1=150
click 1023
wait-render
key END
expect WSc1=200
expect SSc1=200
ok
SCRIPT
# shellcheck disable=SC2086
play pair $pair
grep -qx 'ILkS=1' "$out/pair-keys.txt" || fail "the surface's link is not recorded"

# At 120 dpi the page's right column lies under the preview: the button's command goes to
# the page straight, for the dialog's picture.
set_dpi 120
cat >"$out/pair-120.txt" <<SCRIPT
tab 2
wait-render
page-command 1001
box expect-shown 1101 0
box expect-checked 1099 1
box shot $out/link-dialog-120dpi.png
answer yes
wait-render
expect SSc1=100
ok
SCRIPT
# shellcheck disable=SC2086
play pair-120 $pair
set_dpi 96

# Three tabs on one texture, linked from the Surface page; the wash's button unlinks it alone.
cat >"$out/three.txt" <<SCRIPT
tab 2
wait-render
click 1001
box expect-shown 1101 1
box expect-checked 1099 1
answer yes
wait-render
expect-checked 1001 1
tab 1
wait-render
expect-enabled 2000 1
expect-checked 2000 1
click 2000
expect-checked 2000 0
expect-enabled 2000 1
shot $out/wash-unlinked-by-press.png
tab 2
wait-render
expect-checked 1001 1
tab 3
wait-render
expect-checked 1098 1
shot $out/background-linked.png
ok
SCRIPT
play three WFN1=Rusted.qzt SFN1=Rusted.qzt BkFN=Rusted.qzt W2Ex=false Sf2E=false SSc1=60
grep -qx 'ILkW=0' "$out/three-keys.txt" && grep -qx 'ILkS=1' "$out/three-keys.txt" &&
  grep -qx 'ILkB=1' "$out/three-keys.txt" || fail "after unlinking the wash: $(grep ILk "$out/three-keys.txt")"
echo "link-checks: pictures in $out"
