#!/usr/bin/env bash
# Stages the plug-in folder as a user copies it into a host's Plug-ins folder:
# stage-dist.sh BINDIR DATADIR DESTDIR
#   BINDIR   the Win64 build's bin folder (Quenzit64.8bf)
#   DATADIR  the generated data folder (textures, presets, help)
set -euo pipefail
bin=$1 data=$2 dest=$3
rm -rf "$dest"
mkdir -p "$dest/Quenzit/Help"
for kind in Basic Wash Surface Background User Colors BackPalette; do
  mkdir -p "$dest/Quenzit/Presets/$kind"
done
cp "$bin/Quenzit64.8bf" "$dest/"
if [ -d "$data" ]; then
  cp -r "$data/." "$dest/Quenzit/"
  # Test runs under wine leave their update stamp in the build's data folder.
  rm -f "$dest/Quenzit/Updatings.db"
fi
