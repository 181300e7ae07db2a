#!/usr/bin/env bash
# Runs a Win64 program under wine with a private prefix: wine-run.sh PREFIX PROGRAM [ARGS...]
# A virtual display is started when there is none, since dialogs may open.
set -euo pipefail
export WINEPREFIX="$(realpath -m "$1")"; shift
# No crash debugger: a crash must fail the test, not wait for someone to attach.
export WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=;winedbg.exe=d" WINEARCH=win64
# The update check of a program under test asks a closed loopback port, never the real
# server, unless the test names a server of its own.
export QZ_TEST_UPDATE_ENDPOINT="${QZ_TEST_UPDATE_ENDPOINT:-http://127.0.0.1:1/}"
wine=/usr/lib/wine/wine64
[ -x "$wine" ] || wine=$(command -v wine64 || command -v wine)
if [ ! -f "$WINEPREFIX/system.reg" ]; then
  mkdir -p "$WINEPREFIX"
  # First use: build the prefix once, under a lock so parallel tests wait for it.
  exec 9>"$WINEPREFIX.lock"
  flock 9
  if [ ! -f "$WINEPREFIX/system.reg" ]; then
    "$wine" wineboot --init >/dev/null 2>&1 || true
    # Wine has no Arial; the dialog's labels are sized for it, so give them its metric twin.
    "$wine" reg add 'HKCU\Software\Wine\Fonts\Replacements' /v Arial /d 'Liberation Sans' /f >/dev/null 2>&1 || true
    /usr/lib/wine/wineserver -w 2>/dev/null || wineserver -w || true
  fi
  flock -u 9
fi
if [ -z "${DISPLAY:-}" ] && command -v xvfb-run >/dev/null; then
  exec xvfb-run -a -s "-screen 0 1280x1024x24" "$wine" "$@"
fi
exec "$wine" "$@"
