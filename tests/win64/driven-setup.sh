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
fail() {
  echo "$check: $*" >&2
  exit 1
}
