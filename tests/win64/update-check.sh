#!/usr/bin/env bash
# The update check in the real module under wine, against a server of our own on
# 127.0.0.1: update-check.sh WIN64_BUILD NATIVE_BIN OUT_DIR
# - a server telling 2.1 gets the exact request, the update file keeps its answer and
#   the About button shows its other face; one telling 2.0 leaves the usual face;
# - with the stamp fresh the next dialog asks nobody.
source "$(dirname "$0")/driven-setup.sh" "$@"
stamp="$win/bin/Quenzit/Updatings.db"
"$native/qz-testcard" "$out/in.pam" 300 200 RGB
printf 'shot %s\ncancel\n' "$out/about-face.png" >"$out/play.txt"

# One dialog against a server answering BODY; the shot of its frame goes to NAME.png.
run() {
  local name=$1 body=$2
  rm -f "$stamp" "$out/port"
  python3 "$here/update-server.py" "$body" "$out/port" "$out/$name.request" &
  local server=$!
  for _ in $(seq 50); do [ -s "$out/port" ] && break; sleep 0.1; done
  local port
  port=$(cat "$out/port")
  sed "s#about-face#$name#" "$out/play.txt" >"$out/$name.txt"
  QZ_TEST_UPDATE_ENDPOINT="http://127.0.0.1:$port/qzt/updateinfo.php" host --in "$out/in.pam" --out "$out/$name.pam" --dialog \
    --drive "$out/$name.txt" >"$out/$name.log" 2>&1 || true
  wait "$server" || fail "$name: the server saw no request"
  printf 'GET /qzt/updateinfo.php?request=updateinfo&os=Win HTTP/1.1\r\nHost: 127.0.0.1:%s\r\nUser-agent: Mozilla/4.0 (compatible; MSIE 6.0; Windows NT 5.1; SV1)\r\nAccept: */*\r\n\r\n' \
    "$port" >"$out/expected.request"
  cmp "$out/$name.request" "$out/expected.request" || fail "$name: the request's bytes differ"
  grep -q "^datestr:[0-9]*;$body\$" "$stamp" || fail "$name: the update file holds $(cat "$stamp")"
  grep -q "Conecting to 127.0.0.1...Ok" "$out/$name.log" || fail "$name: no progress line: $(cat "$out/$name.log")"
}
run newer 'lastvers:2.1;set_uid:11;set_name:Paper;set_uid:12;set_name:Rust;set_uid:13;set_name:Concrete;'
run same 'lastvers:2.0;'

# The About button (client 23, 18, 400 by 35) changes its face, nothing else.
python3 - "$out/newer.png" "$out/same.png" <<'PY' || fail "the About button's faces: see $out"
import struct, sys, zlib
def rows(path):
    data = open(path, "rb").read()
    w, h = struct.unpack(">II", data[16:24])
    pos, packed = 8, b""
    while pos < len(data):
        n, kind = struct.unpack(">I4s", data[pos:pos + 8])
        if kind == b"IDAT":
            packed += data[pos + 8:pos + 8 + n]
        pos += 12 + n
    raw = zlib.decompress(packed)
    return [raw[y * (w * 3 + 1) + 1:(y + 1) * (w * 3 + 1)] for y in range(h)]
a, b = rows(sys.argv[1]), rows(sys.argv[2])
differ = [y for y in range(min(len(a), len(b))) if a[y] != b[y]]
print("rows that differ:", differ[:1], "to", differ[-1:])
# The button lies in the frame's top 100 rows; the rest of the window stays as it was.
sys.exit(0 if differ and max(differ) < 100 else 1)
PY

# A fresh stamp: the next dialog asks nobody (the closed port would say Error).
QZ_TEST_UPDATE_ENDPOINT=http://127.0.0.1:1/ host --in "$out/in.pam" --out "$out/fresh.pam" --dialog --drive "$out/play.txt" \
  --timings >"$out/fresh.log" 2>&1 || true
if grep -q "Conecting" "$out/fresh.log"; then fail "a fresh stamp still asked: $(cat "$out/fresh.log")"; fi
rm -f "$stamp"
echo "update-check: passed"
