#!/usr/bin/env bash
# How long the dialog takes on a big picture, under wine: a 6000 by 4000 RGB photograph
# (a test card without one), the default look, an 800 by 600 preview. Prints filterhost's
# --timings lines: the opening to the first painted preview, the picture rebuilt and
# blitted, zoom steps, a pan release, then a wash's intensity and coverage and a surface's
# hue typed on their pages. Logged for people to read, never judged.
#   dialog-timings.sh WIN64_BUILD NATIVE_BIN PHOTO_DIR OUT_DIR
set -euo pipefail
win=$(cd "$1" && pwd) native=$(cd "$2" && pwd) photos=$3 out=$4
here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$out"
out=$(cd "$out" && pwd)
photo=()
[ -s "$photos/coffee.png" ] && photo=("$photos/coffee.png")
[ -s "$out/big.pam" ] || "$native/qz-testcard" "$out/big.pam" 6000 4000 RGB "${photo[@]}"
[ -e "$win/bin/Quenzit" ] || ln -s "$native/../data/Quenzit" "$win/bin/Quenzit"
# The window's place lives in the ini beside the module: one that opens the window for an
# 800 by 600 preview stands in for the user's while this runs.
ini="$win/bin/Quenzit.ini"
[ ! -e "$ini" ] || mv "$ini" "$out/ini.kept"
trap 'rm -f "$ini"; [ ! -e "$out/ini.kept" ] || mv "$out/ini.kept" "$ini"' EXIT
printf ';Parameters for Quenzit plug-in UI\r\ntfeL 0 \t\t\t\t;Left of window\r\nhtdW 1271 \t\t\t\t;Width of window\r\nthgH 846 \t\t\t\t;Height of window\r\n' >"$ini"
host() { "$here/wine-run.sh" "$win/wineprefix" "$win/bin/filterhost.exe" --in "$out/big.pam" --out "$out/out.pam" "$@"; }
cat >"$out/timed.txt" <<SCRIPT
wait-render
send $((0x18)) 1
repaint
command 1001
command 1000
command 9001
command 9002
drag 400 300 300 220
drag 300 220 400 300
size 1271 846
shot $out/timed.png
tab 1
wait-render
type 1027 150
key ENTER
wait-render
type 1034 30
key ENTER
wait-render
tab 2
wait-render
type 1069 20
key ENTER
wait-render
cancel
SCRIPT
host --dialog --drive "$out/timed.txt" --timings 2>&1 | grep 'timing:' || true
