#!/usr/bin/env bash
# The layers of the house, checked on every include:
#   platform  <  state < raster < effects < presets  <  host  <  hostsim, cli, tools
#                        (the portable core)             (shell)
# The portable core and the user interface's portable halves never see the host's
# interface or Win32; only platform/win32/ and the user interface's win32/ halves include
# Win32 headers; the engine's tests run without a host.
#   check-layers.sh [TREE]      prints each violation, exits 1 if there is any
#   check-layers.sh --self-test plants one violation of each kind in a copy and expects
#                               every one to be caught
set -euo pipefail

ui="controls dialog pickers online"
core="state raster effects presets"
win32_headers='windows|commctrl|commdlg|mmsystem|shellapi|shlobj|shlwapi|winsock2|ws2tcpip|wininet|winhttp|uxtheme|richedit'

# What a folder of src/ may include from src/, by its first component.
allowed() {
  case $1 in
    platform) echo "platform" ;;
    state) echo "platform state" ;;
    raster) echo "platform state raster" ;;
    effects) echo "platform state raster effects" ;;
    presets) echo "platform state raster effects presets" ;;
    resources) echo "state resources" ;;
    host) echo "platform $core host resources" ;;
    controls | dialog | pickers | online) echo "platform $core resources $ui" ;;
    *) echo "" ;;
  esac
}

check() {
  local tree=$1 bad=0 file dir top inc allow line
  report() { echo "layers: $1"; bad=1; }
  while IFS= read -r file; do
    dir=${file#"$tree"/src/}
    top=${dir%%/*}
    allow=$(allowed "$top")
    # The win32/ halves of the user interface may also see the shell and Win32.
    local win32=0
    case $dir in
      platform/win32/*) win32=1 ;;
      */win32/*) for u in $ui; do [ "$top" = "$u" ] && win32=1 && allow="$allow host"; done ;;
    esac
    while IFS= read -r line; do
      inc=$(sed -E 's/^[0-9]+:[[:space:]]*#[[:space:]]*include[[:space:]]*[<"]([^>"]+)[>"].*/\1/' <<<"$line")
      if grep -qiE "^($win32_headers)\.h$" <<<"$inc"; then
        [ $win32 = 1 ] || report "$file:${line%%:*}: $inc outside a win32/ half"
        continue
      fi
      case $inc in */*) ;; *) continue ;; esac
      local first=${inc%%/*} ok=0
      [ -d "$tree/src/$first" ] || continue
      for a in $allow; do [ "$first" = "$a" ] && ok=1; done
      [ $ok = 1 ] || report "$file:${line%%:*}: $top/ may not include $inc"
    done < <(grep -nE '^[[:space:]]*#[[:space:]]*include' "$file" || true)
  done < <(find "$tree/src" -name '*.h' -o -name '*.cpp' | sort)

  # The core, and the tests of the core, never name the host's record.
  local dirs=() d
  for d in $core; do dirs+=("$tree/src/$d" "$tree/tests/$d"); done
  for d in "${dirs[@]}"; do
    [ -d "$d" ] || continue
    while IFS= read -r line; do report "$line: the host's record below the shell"; done \
      < <(grep -rnw 'gFilterRecord\|FilterRecord' "$d" || true)
    [[ $d == "$tree/tests/"* ]] || continue
    while IFS= read -r line; do report "$line: a test of the core reaches the host"; done \
      < <(grep -rnE '#[[:space:]]*include[[:space:]]*"(host/|hostsim/|ShellFixture)' "$d" || true)
  done
  return $bad
}

if [ "${1:-}" = --self-test ]; then
  here=$(cd "$(dirname "$0")/.." && pwd)
  tmp=$(mktemp -d)
  trap 'rm -rf "$tmp"' EXIT
  plant() { # plant FILE LINE: a copy of the tree with LINE added to FILE must fail
    rm -rf "$tmp/t" && mkdir -p "$tmp/t" && cp -r "$here/src" "$here/tests" "$tmp/t/"
    mkdir -p "$(dirname "$tmp/t/$1")" && echo "$2" >>"$tmp/t/$1"
    if check "$tmp/t" >/dev/null; then echo "layers self-test: not caught: $1: $2"; exit 1; fi
  }
  check "$here" >/dev/null || { echo "layers self-test: the tree itself fails"; exit 1; }
  plant src/effects/Noise.cpp '#include "host/Session.h"'
  plant src/raster/Raster.cpp '#include "effects/EffectLayer.h"'
  plant src/state/Progress.cpp '#include <windows.h>'
  plant src/presets/PresetFormat.cpp 'void f() { (void)gFilterRecord; }'
  plant src/dialog/Layout.cpp '#include "host/abi/HostInterface.h"'
  plant src/host/PluginMain.cpp '#include <Windows.h>'
  plant tests/effects/NoiseTest.cpp '#include "host/Session.h"'
  echo "layers self-test: 7 planted violations caught"
  exit 0
fi

check "${1:-$(cd "$(dirname "$0")/.." && pwd)}" && echo "layers: the tree keeps its layers"
