#!/bin/sh
# Checks the sources: formatting, the rules of the source tree, and that each header compiles alone.
set -eu
cd "$(dirname "$0")/.."
jobs=$(nproc)

# sources SUFFIX FOLDER...: the files of these folders. No files is an error, because every check would pass.
sources() {
    suffix=$1
    shift
    list=$(find "$@" -name "*.$suffix" | sort)
    [ -n "$list" ] || { echo "lint: no files in $*" >&2; exit 1; }
    echo "$list"
}

for suffix in h cpp; do
    sources $suffix src tests bench fuzz python | xargs clang-format --dry-run -Werror
    # The formatter does not wrap comments on lines of their own. Lines with texts between backticks may be longer.
    sources $suffix src tests bench fuzz python | xargs awk '
        /^ *\/\/\/? [^`]*$/ && length > 120 { print FILENAME ":" FNR ": a comment of over 120 columns"; found = 1 }
        END { exit found }'
done
scripts/check-floors.sh
# A fuzzer writes new inputs, named by a hash, to the first folder that it is given.
if find fuzz | grep -E '/[0-9a-f]{32,}'; then
    echo "lint: ^ name kept inputs after what they show" >&2
    exit 1
fi
# shellcheck disable=SC2016 # the inner shell expands it
sources h src | xargs -P "$jobs" -I{} \
    sh -c 'echo "#include \"${1#src/}\"" | g++ -std=c++20 -Isrc -fsyntax-only -x c++ -' lint {}
echo "lint: no findings"
