#!/bin/sh
# Runs a program of the Windows build, with its arguments, under Wine and without a display.
set -eu
top=$(cd "$(dirname "$0")/.." && pwd)
. "$top/scripts/wine-environment.sh"

# Test programs have their own folders and need the libraries beside the command.
export WINEPATH="${NBSCORE_WINDOWS_BUILD:-$top/build/windows}/bin"
exec wine "$@"
