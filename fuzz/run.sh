#!/usr/bin/env bash
# Builds one fuzz target with clang (libFuzzer, ASan, UBSan) in build/fuzz and runs it.
#   fuzz/run.sh TARGET SECONDS      e.g. fuzz/run.sh texture_reader 600
# The seed corpus fuzz/corpus/TARGET is read, never written; what the run learns goes
# to build/fuzz/corpus/TARGET, crashes to build/fuzz/artifacts/TARGET/. The reader's own
# messages on stderr are silenced (-close_fd_mask=2); libFuzzer's and the sanitizers' are not.
set -euo pipefail
target=${1:?target, e.g. texture_reader}
seconds=${2:-60}
root=$(cd "$(dirname "$0")/.." && pwd)
build=$root/build/fuzz
seeds=$root/fuzz/corpus/$target
work=$build/corpus/$target
artifacts=$build/artifacts/$target

cmake -S "$root/fuzz" -B "$build" -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ >/dev/null
cmake --build "$build" -j2 --target "${target}_fuzz"
# The texture reader's seeds are made by a script (zlib streams); other targets' are files.
if [ "$target" = texture_reader ]; then python3 "$root/fuzz/make-seeds.py" "$seeds"; fi
mkdir -p "$work" "$artifacts"
exec "$build/${target}_fuzz" "$work" "$seeds" -max_total_time="$seconds" -rss_limit_mb=2560 \
  -max_len=4096 -timeout=10 -close_fd_mask=2 -artifact_prefix="$artifacts/" -print_final_stats=1
