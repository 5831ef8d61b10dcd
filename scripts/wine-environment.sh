# To be sourced: where and how Wine runs programs of the Windows build. Outside of the tree, because it takes much room.
export WINEPREFIX="${WINEPREFIX:-${HOME:-/tmp}/.cache/nbscore-wine}"
mkdir -p "$WINEPREFIX"
export WINEDEBUG="${WINEDEBUG:--all}"
# No dialogue, no menu entry, no debugger when a program fails.
export WINEDLLOVERRIDES='mscoree,mshtml=;winedbg.exe,winemenubuilder.exe=d'
export LC_ALL=C.UTF-8
unset DISPLAY
