#!/usr/bin/env bash
# One end-to-end case: the same picture and parameters through the native in-process host
# and through the Win64 filterhost.exe loading the real Quenzit64.8bf under wine; the two
# results must be the same bytes.
#   compare-builds.sh NATIVE_BIN WIN_BIN WINEPREFIX WORKDIR NAME WIDTH HEIGHT TUPLE
#                     [--same-as-input | --changed] [--selection] [--data DIR] [--photo NAME]
#                     [-- ARGS...]
# --selection makes a grey test card of the same size the host's selection.
# --photo takes the picture from the photograph NAME.png that tools/fetch-photos.sh put
# beside the build folders (a test card when it is missing).
# --data links DIR (default: the native build's texture library) in as the Quenzit folder
# beside the module.
set -euo pipefail
native=$1 win=$2 prefix=$3 work=$4 name=$5 width=$6 height=$7 tuple=$8
shift 8
same_as_input=0 changed=0 selection=0 data= photo=
while [ $# -gt 0 ] && [ "$1" != "--" ]; do
  case "$1" in
    --same-as-input) same_as_input=1 ;;
    --changed) changed=1 ;;
    --selection) selection=1 ;;
    --data) data=$2; shift ;;
    --photo) photo=$2; shift ;;
    *) echo "compare-builds: unknown option $1"; exit 1 ;;
  esac
  shift
done
[ "${1:-}" = "--" ] && shift
# By default the generated library, as a user's install has it.
if [ -z "$data" ] && [ -d "$native/../data/Quenzit" ]; then data=$native/../data/Quenzit; fi

here=$(cd "$(dirname "$0")" && pwd)
dir="$work/$name"
rm -rf "$dir" && mkdir -p "$dir" && cd "$dir"
cp "$win/Quenzit64.8bf" "$win/filterhost.exe" .
data_args=()
if [ -n "$data" ]; then
  ln -s "$(cd "$data" && pwd)" Quenzit
  data_args=(--data Quenzit)
fi

photo_args=()
[ -n "$photo" ] && photo_args=("$native/../../photos/$photo.png")
"$native/qz-testcard" in.pam "$width" "$height" "$tuple" "${photo_args[@]}"
if [ $selection = 1 ]; then
  "$native/qz-testcard" selection.pam "$width" "$height" GRAYSCALE
  set -- --selection selection.pam "$@"
fi
"$native/filterhost" "${data_args[@]}" --in in.pam --out native.pam "$@"
"$here/../../tools/wine-run.sh" "$prefix" filterhost.exe --plugin Quenzit64.8bf "${data_args[@]}" --in in.pam --out win.pam "$@"

cmp native.pam win.pam || { echo "$name: the Win64 module and the native build differ"; exit 1; }
if [ $same_as_input = 1 ]; then
  cmp in.pam native.pam || { echo "$name: the output differs from the input"; exit 1; }
fi
if [ $changed = 1 ] && cmp -s in.pam native.pam; then
  echo "$name: the effect left the picture as it was"; exit 1
fi
echo "$name: identical ($(stat -c %s native.pam) bytes)"
