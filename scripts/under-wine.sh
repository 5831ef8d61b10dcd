#!/bin/sh
# Runs a program of the Windows build, with its arguments, where there is no Windows and no display.
set -eu
top=$(cd "$(dirname "$0")/.." && pwd)
build=${NBSCORE_WINDOWS_BUILD:-$top/build/windows}

# A folder of Wine's own, where the programs find their drives and settings.
export WINEPREFIX="${WINEPREFIX:-$HOME/.cache/nbscore-wine}"
mkdir -p "$WINEPREFIX"
export WINEDEBUG="${WINEDEBUG:--all}"
# No dialogue, no menu entry, no debugger when a program fails.
export WINEDLLOVERRIDES='mscoree,mshtml=;winedbg.exe,winemenubuilder.exe=d'
export LC_ALL=C.UTF-8
# Tests stand in folders of their own and lean on the libraries beside the command.
export WINEPATH="$build/bin"
unset DISPLAY

exec wine "$@"
