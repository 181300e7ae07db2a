#!/usr/bin/env bash
# Formats every C++ source of the tree with the committed .clang-format.
#   format.sh           rewrites the files in place (make format)
#   format.sh --check   lists the files that differ and fails if there is any (a test)
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t files < <(find src hostsim cli tools tests bench fuzz \( -name '*.cpp' -o -name '*.h' \) -not -path '*/corpus/*' | sort)
if [ "${1:-}" = --check ]; then
  bad=0
  for f in "${files[@]}"; do
    if ! clang-format --dry-run -Werror "$f" >/dev/null 2>&1; then echo "format: $f differs (make format)"; bad=1; fi
  done
  [ $bad = 0 ] && echo "format: ${#files[@]} files as .clang-format says"
  exit $bad
fi
clang-format -i "${files[@]}"
