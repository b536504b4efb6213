#!/bin/sh
# A Windows of our own below a build folder, with its own settings and nothing of the user's.
#   wine.sh PREFIX start          makes it when it is not there and keeps its server running
#   wine.sh PREFIX run COMMAND    runs a command in it
#   wine.sh PREFIX stop
set -e
WINEPREFIX=$(realpath -m "$1")
action=$2
shift 2
export WINEPREFIX
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES="mscoree,mshtml="  # nothing here needs them, and asking to install them takes long
# Accented file names need the locale; it stands beside the prefix so that the machine need not have it.
export LOCPATH="$WINEPREFIX/locale"
export LANG=it_IT.UTF-8
unset LC_ALL

start() {
    mkdir -p "$LOCPATH"
    [ -d "$LOCPATH/it_IT.UTF-8" ] || localedef -i it_IT -f UTF-8 "$LOCPATH/it_IT.UTF-8"
    # A server that outlives its first program spares every other one a cold start.
    wineserver -p >/dev/null 2>&1 </dev/null || true
    if [ ! -f "$WINEPREFIX/system.reg" ]; then
        wineboot --init >/dev/null 2>&1 </dev/null
        # A crash ends the program at once instead of asking.
        wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null 2>&1 </dev/null
    else
        wineboot >/dev/null 2>&1 </dev/null
    fi
}

case $action in
    start) start ;;
    run) exec wine "$@" ;;
    stop) wineserver -k || true ;;
    *) echo "wine.sh: unknown action $action" >&2; exit 2 ;;
esac
