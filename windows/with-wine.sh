#!/bin/sh
# Runs a command with a Windows of our own below a build folder, which has its own settings and nothing of the user's:
#   with-wine.sh PREFIX COMMAND [ARGUMENT ...]
# The exit status is the command's.
set -e
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
if [ ! -f "$WINEPREFIX/system.reg" ]; then
    wineboot --init >/dev/null 2>&1 </dev/null
    # A crash ends the program at once instead of asking; no program looks for a screen, which takes 20 s to miss.
    wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f >/dev/null 2>&1 </dev/null
    wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f >/dev/null 2>&1 </dev/null
else
    wineboot >/dev/null 2>&1 </dev/null
fi
status=0
"$@" || status=$?
exit $status
