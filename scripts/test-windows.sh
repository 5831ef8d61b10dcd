#!/bin/sh
# Runs the tests of the Windows build under Wine, without a display, and compares its answers with the Linux build's.
# Arguments go to ctest.
set -eu
cd "$(dirname "$0")/.."

# Wine's server stays while the tests run: every start without it costs seconds.
scripts/under-wine.sh wineboot -i >/dev/null 2>&1
WINEPREFIX="${WINEPREFIX:-$HOME/.cache/nbscore-wine}"
export WINEPREFIX
server=$(command -v wineserver || echo /usr/lib/wine/wineserver)
"$server" -p || true  # one may be running already
trap '"$server" -k || true' EXIT

ctest --preset windows "$@"
scripts/compare-answers.sh
