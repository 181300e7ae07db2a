#!/usr/bin/env bash
# Help and About of the real module under wine, played through filterhost's driver, with
# every open logged by --opened instead of reaching a browser:
#   help-checks.sh WIN64_BUILD NATIVE_BIN OUT_DIR
# - F1 on each tab, the help and the all-presets buttons: the paths they open;
# - a second F1 while the opener is held is dropped, and closing the dialog ends the opener;
# - the About box from button 1130 at 96 and 120 dpi (screenshots): its size, 1005 toggling
#   its text, F1 in it, and after OK the ini keeping the switch;
# - the host's About command alone: the switch made there kept in the ini.
source "$(dirname "$0")/driven-setup.sh" "$@"
ini=$win/bin/Quenzit.ini
"$native/qz-testcard" "$out/in.pam" 400 300 RGB
# The module's help folder as wine names it.
helpdir='Z:'$(printf '%s' "$win/bin/Quenzit/Help/" | tr / '\\')
site=https://www.quenzit.com

# F1 on every tab, then the two header buttons; each opener is let end before the next.
cat >"$out/f1.txt" <<SCRIPT
key F1
wait-render
tab 1
key F1
wait-render
tab 2
key F1
wait-render
tab 3
key F1
wait-render
command 1126
wait-render
command 1127
wait-render
cancel
SCRIPT
status=0
host --in "$out/in.pam" --out "$out/f1.pam" --dialog --drive "$out/f1.txt" --opened "$out/f1.log" \
  2>"$out/f1.err" || status=$?
[ "$status" = 3 ] && grep -q "user cancelled" "$out/f1.err" || fail "F1 run: status $status, $(cat "$out/f1.err")"
printf 'open %s\n' "${helpdir}basic.html" "${helpdir}wash.html" "${helpdir}surface.html" \
  "${helpdir}background.html" "${helpdir}index.html" "$site/filters/quenzit/examples/all-sets" >"$out/f1.want"
diff "$out/f1.want" "$out/f1.log" >&2 || fail "F1 and the header buttons opened other paths"

# An opener held in its open: the second F1 is dropped, and closing the dialog ends it
# before it logs the end of its hold (filterhost waits as long again).
cat >"$out/held.txt" <<SCRIPT
tab 2
key F1
key F1
cancel
SCRIPT
status=0
host --in "$out/in.pam" --out "$out/held.pam" --dialog --drive "$out/held.txt" --opened "$out/held.log" \
  --hold 4000 2>"$out/held.err" || status=$?
[ "$status" = 3 ] || fail "held run: status $status, $(cat "$out/held.err")"
[ "$(cat "$out/held.log")" = "open ${helpdir}surface.html" ] ||
  fail "with an opener held: $(cat "$out/held.log")"

# The About box from its button at 96 and 120 dpi: the picture's size, the switch, F1.
for dpi in 96 120; do
  set_dpi "$dpi"
  rm -f "$ini"
  cat >"$out/about-$dpi.txt" <<SCRIPT
command 1130
box expect-client 520 487
box expect-text 1005 Disable SFX
box shot $out/about-${dpi}dpi.png
box command 1005
box expect-text 1005 Enable SFX
box shot $out/about-${dpi}dpi-off.png
box key F1
box command 1
ok
SCRIPT
  host --in "$out/in.pam" --out "$out/about-$dpi.pam" --dialog --drive "$out/about-$dpi.txt" \
    --opened "$out/about-$dpi.log" 2>"$out/about-$dpi.err" || fail "About at $dpi dpi: $(cat "$out/about-$dpi.err")"
  grep -q '^nSsU 0 ' "$ini" || fail "after OK at $dpi dpi the ini holds: $(cat "$ini")"
  [ "$(cat "$out/about-$dpi.log")" = "open $site/qzt/index.html" ] ||
    fail "F1 in the About box at $dpi dpi: $(cat "$out/about-$dpi.log")"
done
set_dpi 96

# The host's About command alone: the switch goes back on and the ini keeps it, with the
# window's place as the dialog left it.
width=$(awk '$1 == "htdW" { print $2 }' "$ini")
cat >"$out/host-about.txt" <<SCRIPT
expect-text 1005 Enable SFX
shot $out/host-about.png
command 1005
expect-text 1005 Disable SFX
command 1
SCRIPT
host --about --drive "$out/host-about.txt" 2>"$out/host-about.err" ||
  fail "the host's About command: $(cat "$out/host-about.err")"
grep -q '^nSsU 1 ' "$ini" && grep -q "^htdW $width " "$ini" || fail "after the host's About box: $(cat "$ini")"
rm -f "$ini"
echo "help-checks: pictures in $out"
