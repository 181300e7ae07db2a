#!/usr/bin/env bash
# Pictures of the dialog as a user sees it: the real module under wine, driven by
# filterhost's --drive script over a photograph, one picture a tab at 96 and at 120 dpi,
# then the smallest and the maximised window, then OK.
#   demo-ui.sh WIN64_BUILD NATIVE_BIN PHOTO_DIR OUT_DIR
# The script checks as it goes (the zoom state at opening); a failed line fails the run.
set -euo pipefail
win=$(cd "$1" && pwd) native=$(cd "$2" && pwd) photos=$3 out=$4
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$out"
out=$(cd "$out" && pwd)
photo=()
[ -s "$photos/coffee.png" ] && photo=("$photos/coffee.png")
"$native/qz-testcard" "$out/in.pam" 1200 800 RGB "${photo[@]}"
# The module reads the data folder beside itself.
[ -e "$win/bin/Quenzit" ] || ln -s "$native/../data/Quenzit" "$win/bin/Quenzit"
wine() { "$here/wine-run.sh" "$win/wineprefix" "$@"; }
# The screen's dpi as the prefix keeps it; put back to 96 whatever happens.
set_dpi() { wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null 2>&1; }
trap 'set_dpi 96' EXIT
rm -f "$win/bin/Quenzit.ini"

shots=()
for dpi in 96 120; do
  set_dpi "$dpi"
  at=$dpi"dpi"
  cat >"$out/drive-$at.txt" <<SCRIPT
# Opens at 100 %, in the top left corner, with 1000 disabled.
expect-text 1003 100%
expect-enabled 1000 0
expect-enabled 1001 1
shot $out/basic-$at.png
tab 1
wait-render
shot $out/wash-$at.png
tab 2
wait-render
shot $out/surface-$at.png
tab 3
wait-render
shot $out/background-$at.png
tab 0
command 9001
expect-enabled 1001 0
shot $out/fit-$at.png
command 9002
expect-text 1003 100%
# Ctrl + drag on the Wash tab slides the wash's texture.
tab 1
wait-render
drag 200 200 160 170 ctrl
wait-render
shot $out/wash-moved-$at.png
ok
SCRIPT
  "$here/wine-run.sh" "$win/wineprefix" "$win/bin/filterhost.exe" --in "$out/in.pam" --out "$out/out-$at.pam" \
    --dialog --drive "$out/drive-$at.txt" --record "$out/recorded-$at.txt"
  if ! grep -Eq '^OW1[XY]=[1-9-]' "$out/recorded-$at.txt"; then
    echo "demo-ui: Ctrl + drag on the Wash tab left the wash's offset: $(grep OW1 "$out/recorded-$at.txt" | tr '\n' ' ')" >&2
    exit 1
  fi
  # The window's extremes in a run of their own, ended by Cancel.
  cat >"$out/sizes-$at.txt" <<SCRIPT
size 100 100
wait-render
shot $out/smallest-$at.png
maximize
wait-render
shot $out/maximised-$at.png
cancel
SCRIPT
  "$here/wine-run.sh" "$win/wineprefix" "$win/bin/filterhost.exe" --in "$out/in.pam" --out "$out/sizes-$at.pam" \
    --dialog --drive "$out/sizes-$at.txt" 2>"$out/sizes-$at.log" || grep -q "user cancelled" "$out/sizes-$at.log"
  # Cancel kept that place in the ini beside the module; the next run opens at the default.
  rm -f "$win/bin/Quenzit.ini"
  for shot in basic wash surface background fit wash-moved smallest maximised; do shots+=("$out/$shot-$at.png"); done
done
printf '%s\n' "${shots[@]}"
