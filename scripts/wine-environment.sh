# To be sourced: how Wine runs programs of the Windows build. Its files take much room, so they lie outside the tree.
export WINEPREFIX="${WINEPREFIX:-${HOME:-/tmp}/.cache/nbscore-wine}"
mkdir -p "$WINEPREFIX"
export WINEDEBUG="${WINEDEBUG:--all}"
# No dialogues, no menu entries, and no debugger when a program fails.
export WINEDLLOVERRIDES='mscoree,mshtml=;winedbg.exe,winemenubuilder.exe=d'
export LC_ALL=C.UTF-8
unset DISPLAY
