#!/bin/sh
# Formatting, static analysis with every finding an error, and the rules of the source tree.
set -eu
jobs=${1:-2}
cd "$(dirname "$0")/.."

# sources SUFFIX FOLDER...: the files of these folders; an empty list would pass every check, so it is a fault.
sources() {
    suffix=$1
    shift
    list=$(find "$@" -name "*.$suffix" | sort)
    [ -n "$list" ] || { echo "lint: no files in $*" >&2; exit 1; }
    echo "$list"
}

for suffix in h cpp; do
    sources $suffix src tests | xargs clang-format --dry-run -Werror
done
scripts/check-floors.sh

# Every header compiles alone.
sources h src | xargs -P "$jobs" -I{} g++ -std=c++20 -Isrc -fsyntax-only -Wno-pragma-once-outside-header -x c++ {}

cmake --preset dev -B build/lint -DNBSCORE_TESTS=OFF -DCMAKE_CXX_COMPILER=clang++ >/dev/null
sources cpp src | xargs -P "$jobs" -n 4 clang-tidy --quiet -p build/lint
echo "lint: no findings"
