#!/usr/bin/env bash
# The layer navigator of the real module under wine, played through filterhost's driver:
#   navigator-checks.sh WIN64_BUILD NATIVE_BIN OUT_DIR
# - Add Wash brings in wash 2's own texture; the delete behind Wash One leaves that texture
#   as the only wash, its seed in place; OK keeps it; the same for the surfaces;
# - Reset on the Wash tab asks nothing; Reset on Basic asks, and No changes nothing, Yes
#   takes every texture off;
# - each OK against the kept block and the recorded keys played with no dialog;
# - pictures of the row on every tab and in every state, at 96 and at 120 dpi, to look at.
source "$(dirname "$0")/driven-setup.sh" "$@"
"$native/qz-testcard" "$out/in.pam" 900 700 RGB

cat >"$out/delete.txt" <<SCRIPT
tab 1
wait-render
preview $out/step.png
expect-tip 503 Apply an additional wash effect
expect-tip 512 Delete wash effect
click 503
wait-render
expect W2Ex=1
expect WFN2=General_Store.qzt
expect-preview changed
preview $out/step.png
click 501
wait-render
expect-preview changed
click 512
wait-render
expect W2Ex=0
expect WFN1=General_Store.qzt
expect Rnd1=123
tab 2
wait-render
click 508
wait-render
expect Sf2E=1
click 510
wait-render
expect Sf2E=0
expect SFN1=Fiberglass.qzt
ok
SCRIPT
play delete
recorded delete 'WFN1=General_Store.qzt'
recorded delete 'W2Ex=(0|false)'
recorded delete 'Rnd1=123'
recorded delete 'SFN1=Fiberglass.qzt'

cat >"$out/reset-wash.txt" <<SCRIPT
tab 1
wait-render
preview $out/step.png
click 514
wait-render
expect WFN1=No_Texture.qzt
expect-enabled 1 1
expect-preview changed
expect SFN1=Battleship.qzt
ok
SCRIPT
play reset-wash
recorded reset-wash 'WFN1=No_Texture.qzt'

cat >"$out/reset-no.txt" <<SCRIPT
wait-render
preview $out/step.png
click 513
answer no
wait-render
expect-preview same
expect WFN1=Scratched.qzt
expect BkFN=Rusted.qzt
ok
SCRIPT
play reset-no
recorded reset-no 'WFN1=Scratched.qzt'

cat >"$out/reset-yes.txt" <<SCRIPT
wait-render
click 513
answer yes
wait-render
expect WFN1=No_Texture.qzt
expect SFN1=No_Texture.qzt
expect BkFN=No_Texture.qzt
ok
SCRIPT
play reset-yes

# The row in every state, at both dpi; the prefix goes back to 96 whatever happens.
for dpi in 96 120; do
  set_dpi "$dpi"
  at=$dpi"dpi"
  cat >"$out/row-$at.txt" <<SCRIPT
wait-render
shot $out/basic-$at.png
click 504
wait-render
shot $out/basic-original-$at.png
tab 1
wait-render
shot $out/wash-one-$at.png
click 503
wait-render
shot $out/wash-two-$at.png
tab 2
wait-render
shot $out/surface-one-$at.png
click 508
wait-render
shot $out/surface-two-$at.png
click 506
wait-render
shot $out/surface-two-first-$at.png
tab 3
wait-render
shot $out/background-$at.png
tab 1
wait-render
shot $out/wash-back-$at.png
cancel
SCRIPT
  host --in "$out/in.pam" --out "$out/row-$at.pam" --dialog --drive "$out/row-$at.txt" 2>"$out/row-$at.log" ||
    grep -q "user cancelled" "$out/row-$at.log" || fail "the row at $at: $(cat "$out/row-$at.log")"
  rm -f "$win/bin/Quenzit.ini"
done
echo "navigator-checks: pictures in $out"
