#!/usr/bin/env bash
# The dialog of the real module under wine, played through filterhost's driver:
#   drive-checks.sh WIN64_BUILD NATIVE_BIN OUT_DIR
# - the zoom keys, a plain drag that renders only at release, Ctrl + drag on the Wash tab;
# - OK, then the same picture from the kept block (a repeat with no dialog) and from the
#   recorded keys played with the dialog off, byte for byte;
# - a host whose advanceState fails: the dialog still opens, takes commands, Esc cancels.
source "$(dirname "$0")/driven-setup.sh" "$@"
"$native/qz-testcard" "$out/in.pam" 900 700 RGB

cat >"$out/play.txt" <<SCRIPT
expect-text 1003 100%
expect-enabled 1000 0
key CTRL+0
expect-enabled 1001 0
expect-enabled 1000 1
key CTRL+1
expect-text 1003 100%
expect-enabled 1000 0
# A plain drag moves the picture but renders nothing until the button is let go.
preview $out/before-pan.png
press 300 300
move 260 250
move 200 180
expect-preview same
release 200 180
expect-preview changed
preview $out/after-pan.png
# Ctrl + drag on the Wash tab slides the wash and renders on the way.
tab 1
wait-render
preview $out/wash.png
press 200 200 ctrl
move 180 185
expect-preview changed
release 160 170
expect WFN1=Scratched.qzt
ok
SCRIPT
host --in "$out/in.pam" --out "$out/ok.pam" --dialog --drive "$out/play.txt" --record "$out/recorded.txt" \
  --save-block "$out/block.bin" >"$out/play.log" || fail "the played dialog failed: $(cat "$out/play.log")"
grep -Eq '^OW1[XY]=[1-9-]' "$out/recorded.txt" ||
  fail "Ctrl + drag on the Wash tab left the wash's offset: $(grep OW1 "$out/recorded.txt" | tr '\n' ' ')"
[ "$(grep -c '^preview ' "$out/play.log")" = 3 ] || fail "three previews expected: $(cat "$out/play.log")"

# The same parameters again without a dialog: the kept block, then the recorded keys.
host --in "$out/in.pam" --out "$out/repeat.pam" --load-block "$out/block.bin"
cmp "$out/ok.pam" "$out/repeat.pam" || fail "the repeat from the kept block differs from OK"
mapfile -t keys <"$out/recorded.txt"
host --in "$out/in.pam" --out "$out/played.pam" "${keys[@]}"
cmp "$out/ok.pam" "$out/played.pam" || fail "the recorded keys played differ from OK"

# No source at all: diagonals, yet every command still answers and Esc cancels.
cat >"$out/no-source.txt" <<SCRIPT
expect-text 1003 100%
shot $out/no-source.png
tab 2
wait-render
command 9001
command 9002
key CTRL+0
key ESC
SCRIPT
status=0
host --in "$out/in.pam" --out "$out/none.pam" --dialog --drive "$out/no-source.txt" --advance-error -108 \
  2>"$out/no-source.log" || status=$?
[ "$status" = 3 ] && grep -q "user cancelled" "$out/no-source.log" ||
  fail "with advanceState failing: status $status, $(cat "$out/no-source.log")"
[ ! -e "$out/none.pam" ] || fail "a cancelled run wrote a picture"
echo "drive-checks: pictures in $out"
