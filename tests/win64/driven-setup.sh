# Sourced by the driven wine checks, with their arguments: WIN64_BUILD NATIVE_BIN OUT_DIR.
# Gives win, native, out (emptied) and here; no window place kept by an earlier run; the
# module's data folder beside it; wine, host (filterhost under wine) and fail.
set -euo pipefail
win=$(cd "$1" && pwd) native=$(cd "$2" && pwd) out=$3
here=$(cd "$(dirname "${BASH_SOURCE[1]}")" && pwd)
check=$(basename "${BASH_SOURCE[1]}" .sh)
rm -rf "$out" && mkdir -p "$out"
out=$(cd "$out" && pwd)
# A kept place would move the preview under the drags.
rm -f "$win/bin/Quenzit.ini"
[ -e "$win/bin/Quenzit" ] || ln -s "$native/../data/Quenzit" "$win/bin/Quenzit"
wine() { "$here/../../tools/wine-run.sh" "$win/wineprefix" "$@"; }
host() { wine "$win/bin/filterhost.exe" "$@"; }
# set_dpi N: the screen's dpi for the runs that follow; 96 comes back when the check ends.
set_dpi() { wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null 2>&1; }
trap 'set_dpi 96' EXIT
# module_copy: a copy of the module in $plug with the data folder ($data) linked beside it,
# all but its Presets tree (the check makes its own) and thumbnail caches (written there).
module_copy() {
  data=$(cd "$native/../data/Quenzit" && pwd)
  plug="$out/plug"
  mkdir -p "$plug/Quenzit"
  cp "$win/bin/Quenzit64.8bf" "$plug/"
  local f
  for f in "$data"/*; do
    case $(basename "$f") in Presets | *.bmp) ;; *) ln -s "$f" "$plug/Quenzit/" ;; esac
  done
}
fail() {
  echo "$check: $*" >&2
  exit 1
}
# play NAME [HOST ARGUMENTS...]: runs the dialog on $out/NAME.txt, then holds its OK to the
# repeat from the kept block and to its recorded keys played back, byte for byte.
play() {
  local name=$1
  shift
  host --in "$out/in.pam" --out "$out/$name.pam" --dialog --drive "$out/$name.txt" \
    --record "$out/$name-keys.txt" --save-block "$out/$name.bin" "$@" >"$out/$name.log" 2>&1 ||
    fail "the $name run failed: $(cat "$out/$name.log")"
  host --in "$out/in.pam" --out "$out/$name-repeat.pam" --load-block "$out/$name.bin"
  cmp "$out/$name.pam" "$out/$name-repeat.pam" || fail "$name: the repeat from the kept block differs from OK"
  local keys
  mapfile -t keys < <(grep -v '^SFH2=' "$out/$name-keys.txt")
  host --in "$out/in.pam" --out "$out/$name-played.pam" "${keys[@]}"
  cmp "$out/$name.pam" "$out/$name-played.pam" || fail "$name: the recorded keys played differ from OK"
}
# recorded NAME PATTERN: the run recorded a key matching PATTERN.
recorded() { grep -Eq "^$2\$" "$out/$1-keys.txt" || fail "$1: no $2 among $(tr '\n' ' ' <"$out/$1-keys.txt")"; }
