#!/usr/bin/env bash
# Installs the Debian packages the builds and tests need. Quiet and quick when
# everything is already there; safe to run again.
set -euo pipefail

packages=(
  cmake make g++ clang clang-format
  zlib1g-dev libpng-dev libjpeg62-turbo-dev libtiff-dev
  googletest libgtest-dev libbenchmark-dev
  g++-mingw-w64-x86-64-posix libz-mingw-w64-dev
  wine64 xvfb xauth
  fonts-dejavu-core fonts-liberation
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "install-deps: installing ${missing[*]}"
sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
