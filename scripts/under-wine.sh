#!/bin/sh
# Runs a program of the Windows build, with its arguments, where there is no Windows and no display.
set -eu
top=$(cd "$(dirname "$0")/.." && pwd)
build=${NBSCORE_WINDOWS_BUILD:-$top/build/windows}

# A folder of Wine's own, where the programs find their drives and settings.
export WINEPREFIX="${WINEPREFIX:-$HOME/.cache/nbscore-wine}"
export WINEDEBUG="${WINEDEBUG:--all}"
# No dialogue, no menu entry, no debugger when a program fails.
export WINEDLLOVERRIDES='mscoree,mshtml=;winedbg.exe,winemenubuilder.exe=d'
export LC_ALL=C.UTF-8
# Tests stand in folders of their own and lean on the libraries beside the command.
export WINEPATH="$build/bin"
unset DISPLAY

# Now and then, on a busy machine, a start fails because Wine's server does not answer, or ends without a word: then
# nothing has run, and it is tried again. Any other end is the program's own.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
has_not_run() {
    [ ! -s "$work/output" ] && { [ ! -s "$work/messages" ] ||
        head -n 1 "$work/messages" | grep -qE '^wine( client error:.*recvmsg|: a wine server seems)'; }
}
for attempt in 1 2 3; do
    status=0
    wine "$@" >"$work/output" 2>"$work/messages" || status=$?
    if [ "$status" -eq 0 ] || [ "$attempt" -eq 3 ] || ! has_not_run; then break; fi
    sleep 1
done
cat "$work/output"
cat "$work/messages" >&2
exit "$status"
