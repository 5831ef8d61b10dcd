#!/bin/sh
# Runs the tests of the Windows build under Wine, without a display, and compares its answers with the Linux build's: all
# tests, or those of the test programs that are named.
set -eu
cd "$(dirname "$0")/.."
jobs=${JOBS:-$(nproc)}
scripts/install-packages.sh windows-run

# What the answers are compared with.
cmake --preset test >/dev/null
cmake --build --preset test -j "$jobs" --target write_random_answers

# Wine's server stays while the tests run: every start without it costs seconds.
. scripts/wine-environment.sh
wineboot -i
server=$(command -v wineserver || echo /usr/lib/wine/wineserver)
"$server" -p || true  # one may be running already
trap '"$server" -k || true' EXIT

# Each test has its program's name as label. Now and then, on a busy machine, Wine fails to start a program, the tests'
# own or the command that they run. So a test that fails is tried again, twice at the most.
[ $# -eq 0 ] || set -- -L "^($(echo "$@" | tr ' ' '|'))\$"
ctest --preset windows -j "$jobs" --repeat until-pass:3 "$@"
scripts/compare-answers.sh
