#!/bin/sh
# What a look at the sources alone can tell: formatting, the rules of the source tree, headers that compile alone.
# `lint.sh tidy` runs the static analysis instead, with every finding an error.
set -eu
cd "$(dirname "$0")/.."
jobs=$(nproc)

# sources SUFFIX FOLDER...: the files of these folders; an empty list would pass every check, so it is a fault.
sources() {
    suffix=$1
    shift
    list=$(find "$@" -name "*.$suffix" | sort)
    [ -n "$list" ] || { echo "lint: no files in $*" >&2; exit 1; }
    echo "$list"
}

if [ "${1:-}" = tidy ]; then
    cmake --preset dev -B build/lint -DNBSCORE_TESTS=OFF -DCMAKE_CXX_COMPILER=clang++ >/dev/null
    sources cpp src | xargs -P "$jobs" -n 4 clang-tidy --quiet -p build/lint
    echo "tidy: no findings"
    exit
fi

for suffix in h cpp; do
    sources $suffix src tests bench fuzz | xargs clang-format --dry-run -Werror
    # The formatter leaves comments on lines of their own as they are. Texts between backticks may be longer.
    sources $suffix src tests bench fuzz | xargs awk '
        /^ *\/\/\/? [^`]*$/ && length > 120 { print FILENAME ":" FNR ": a comment of over 120 columns"; found = 1 }
        END { exit found }'
done
scripts/check-floors.sh
# A fuzzer leaves what it learns in the first folder that it is given, each under a hash.
if find fuzz | grep -E '/[0-9a-f]{32,}'; then
    echo "lint: ^ inputs that are kept say in their names what they show" >&2
    exit 1
fi
# shellcheck disable=SC2016 # the inner shell expands it
sources h src | xargs -P "$jobs" -I{} \
    sh -c 'echo "#include \"${1#src/}\"" | g++ -std=c++20 -Isrc -fsyntax-only -x c++ -' lint {}
echo "lint: no findings"
