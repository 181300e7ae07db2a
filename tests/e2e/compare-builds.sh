#!/usr/bin/env bash
# One end-to-end case: the same picture and parameters through the native in-process host
# and through the Win64 filterhost.exe loading the real Quenzit64.8bf under wine; the two
# results must be the same bytes.
#   compare-builds.sh NATIVE_BIN WIN_BIN WINEPREFIX WORKDIR NAME WIDTH HEIGHT TUPLE [--same-as-input] [-- ARGS...]
set -euo pipefail
native=$1 win=$2 prefix=$3 work=$4 name=$5 width=$6 height=$7 tuple=$8
shift 8
same_as_input=0
if [ "${1:-}" = "--same-as-input" ]; then same_as_input=1; shift; fi
[ "${1:-}" = "--" ] && shift

here=$(cd "$(dirname "$0")" && pwd)
dir="$work/$name"
rm -rf "$dir" && mkdir -p "$dir" && cd "$dir"
cp "$win/Quenzit64.8bf" "$win/filterhost.exe" .

"$native/qz-testcard" in.pam "$width" "$height" "$tuple"
"$native/filterhost" --in in.pam --out native.pam "$@"
"$here/../../tools/wine-run.sh" "$prefix" filterhost.exe --plugin Quenzit64.8bf --in in.pam --out win.pam "$@"

cmp native.pam win.pam || { echo "$name: the Win64 module and the native build differ"; exit 1; }
if [ $same_as_input = 1 ]; then
  cmp in.pam native.pam || { echo "$name: the output differs from the input"; exit 1; }
fi
echo "$name: identical ($(stat -c %s native.pam) bytes)"
