#!/usr/bin/env bash
# The control gallery under wine, then its screenshots as PNGs:
#   run-gallery.sh WINEPREFIX GALLERY.exe NATIVE_BIN SHOTS_DIR [GTEST ARGS...]
set -euo pipefail
prefix=$1 gallery=$2 native=$3 shots=$4
shift 4
here=$(cd "$(dirname "$0")" && pwd)
rm -rf "$shots" && mkdir -p "$shots"
QZ_UI_SHOTS=$(cd "$shots" && pwd) "$here/../../tools/wine-run.sh" "$prefix" "$gallery" "$@"
"$native/qz-shots-to-png" "$shots"
