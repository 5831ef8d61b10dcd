#!/usr/bin/env bash
# Tells how many lines of src/ have run since the last `make sanitize` began its tests; fails below 95 %.
#
#   coverage.sh         the sum
#   coverage.sh files   each file as well, with the lines that did not run, those with most of them last
set -euo pipefail
cd "$(dirname "$0")/.."

build=build/asan
least=95
[ -d "$build/coverage" ] || { echo "coverage: run \`make sanitize\` first" >&2; exit 2; }

# The programs of the tests link most of src/; the command and the libraries have the rest.
objects=()
for binary in "$build"/lib/*.so "$build"/tests/*_test; do
    [ ! -f "$binary" ] || objects+=(-object "$binary")
done
mapfile -t sources < <(find src -name '*.h' -o -name '*.cpp')
llvm-profdata-14 merge --sparse -o "$build/coverage/all.profdata" "$build"/coverage/*.profraw
llvm-cov-14 export --format=lcov --instr-profile="$build/coverage/all.profdata" "$build/bin/nbscore" "${objects[@]}" \
    "${sources[@]}" | python3 scripts/covered-lines.py "$least" "$@"
