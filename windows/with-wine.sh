#!/bin/sh
# Runs a command with a Windows of our own below a build folder, which has its own settings and nothing of the user's:
#   with-wine.sh PREFIX COMMAND [ARGUMENT ...]
# The exit status is the command's. Its windows come up on a screen in memory.
set -e
if [ -z "$VLM_SCREEN" ]; then
    VLM_SCREEN=1 exec xvfb-run -a -s "-screen 0 1280x1024x24" "$0" "$@"
fi
WINEPREFIX=$(realpath -m "$1")
shift
export WINEPREFIX
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="mscoree,mshtml=" # nothing here needs them, and asking to install them takes long
# Accented file names need the locale. It stands in the prefix, so that the machine need not have it.
export LOCPATH="$WINEPREFIX/locale"
export LANG=it_IT.UTF-8
unset LC_ALL
# ODBC drivers are those of this machine, which call the first drive by another name.
export VLM_DRIVE_C="$WINEPREFIX/drive_c"

mkdir -p "$LOCPATH"
[ -d "$LOCPATH/it_IT.UTF-8" ] || localedef -i it_IT -f UTF-8 "$LOCPATH/it_IT.UTF-8"
# A server that outlives its first program spares every other one a cold start. It must not hold our output open.
trap 'wineserver -k >/dev/null 2>&1 || true' EXIT
wineserver -p >/dev/null 2>&1 </dev/null || true
wineboot >/dev/null 2>&1 </dev/null
if [ ! -f "$WINEPREFIX/set-up" ]; then
    # A crash ends the program at once instead of asking. Nobody but us places windows, which would take 2 s for each.
    wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null 2>&1 </dev/null
    wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d x11 /f >/dev/null 2>&1 </dev/null
    wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null 2>&1 </dev/null
    touch "$WINEPREFIX/set-up"
fi
status=0
"$@" || status=$?
exit $status
