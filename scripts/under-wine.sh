#!/bin/sh
# Runs a program of the Windows build, with its arguments, where there is no Windows and no display.
set -eu
top=$(cd "$(dirname "$0")/.." && pwd)
. "$top/scripts/wine-environment.sh"

# Tests stand in folders of their own and lean on the libraries beside the command.
export WINEPATH="${NBSCORE_WINDOWS_BUILD:-$top/build/windows}/bin"
exec wine "$@"
