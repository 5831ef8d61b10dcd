#!/bin/sh
# Runs the tests of the Windows build under Wine, without a display: all tests, or those of the test programs named as
# arguments. Then compares its scores with the Linux build's.
set -eu
cd "$(dirname "$0")/.."
jobs=${JOBS:-$(nproc)}
scripts/install-packages.sh windows-run

# The Linux build, to compare with.
cmake --preset test >/dev/null
cmake --build --preset test -j "$jobs" --target write_random_answers

# Keep Wine's server running during the tests: every start without it costs seconds.
. scripts/wine-environment.sh
wineboot -i
server=$(command -v wineserver || echo /usr/lib/wine/wineserver)
"$server" -p || true  # one may be running already
trap '"$server" -k || true' EXIT

# Each test has its program's name as label. On a busy machine Wine now and then fails to start a test program or the
# command that it runs, so a test that fails is tried again, at most twice.
[ $# -eq 0 ] || set -- -L "^($(echo "$@" | tr ' ' '|'))\$"
ctest --preset windows -j "$jobs" --repeat until-pass:3 "$@"
scripts/compare-answers.sh
