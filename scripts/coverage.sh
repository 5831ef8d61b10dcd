#!/usr/bin/env bash
# Tells how many lines of src/ the tests of the last `make sanitize` have run; fails below 95 %.
#
#   coverage.sh         the sum
#   coverage.sh files   each file as well, with the lines that did not run, those with most of them last
set -euo pipefail
cd "$(dirname "$0")/.."

build=build/asan
least=95
[ -d "$build/coverage" ] || { echo "coverage: run \`make sanitize\` first" >&2; exit 2; }

# The programs of the tests link most of src/; the command and the libraries have the rest.
binaries=("$build"/bin/nbscore "$build"/lib/*/*.so "$build"/lib/*.so "$build"/tests/*_test)
objects=()
for binary in "${binaries[@]}"; do
    [ ! -f "$binary" ] || objects+=(-object "$binary")
done
llvm-profdata-14 merge --sparse -o "$build/coverage/all.profdata" "$build"/coverage/*.profraw
llvm-cov-14 export --format=lcov --instr-profile="$build/coverage/all.profdata" "${objects[@]}" src |
    python3 scripts/covered-lines.py "$least" "$@"
