#!/usr/bin/env bash
# Stages the plug-in folder as a user copies it into a host's Plug-ins folder:
# stage-dist.sh BINDIR DESTDIR
set -euo pipefail
bin=$1 dest=$2
rm -rf "$dest"
mkdir -p "$dest/Quenzit/Help"
for kind in Basic Wash Surface Background User Colors BackPalette; do
  mkdir -p "$dest/Quenzit/Presets/$kind"
done
cp "$bin/Quenzit64.8bf" "$dest/"
