#!/usr/bin/env bash
# Fetches real photographs for the end-to-end tests and the demo: the sample pictures
# that Debian's python3-skimage package ships (astronaut, coffee, chelsea...). Only the
# package's files are unpacked; nothing is installed and nothing is committed.
#   fetch-photos.sh DEST
# Quiet when DEST has them already. When the package cannot be had, DEST stays empty and
# the callers fall back to a generated test card.
set -uo pipefail
dest=$(realpath -m "$1")
photos=(astronaut coffee chelsea motorcycle_left)
have=1
for p in "${photos[@]}"; do [ -s "$dest/$p.png" ] || have=0; done
[ $have = 1 ] && exit 0

mkdir -p "$dest"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
# apt-get download writes to the current folder; the sandbox user must be able to.
chmod 777 "$work"
if ! apt-get download python3-skimage >/dev/null 2>&1; then
  echo "fetch-photos: python3-skimage could not be downloaded; the tests use a test card" >&2
  exit 0
fi
dpkg-deb -x python3-skimage_*.deb unpacked || exit 0
data=$(find unpacked -type d -path '*skimage/data' | head -n 1)
for p in "${photos[@]}"; do
  [ -s "$data/$p.png" ] && cp "$data/$p.png" "$dest/$p.png"
done
echo "fetch-photos: $(ls "$dest" | wc -l) photographs in $dest"
