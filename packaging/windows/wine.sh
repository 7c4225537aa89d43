#!/usr/bin/env bash
# Runs a Windows program under Wine with a registry and a drive C: of its own, which nobody else uses.
#   packaging/windows/wine.sh PROGRAM [ARGUMENT...]
# WINEPREFIX names where they lie, build/windows/wine unless said otherwise.
set -euo pipefail
root=$(realpath "$(dirname "$0")/../..")
export WINEPREFIX=${WINEPREFIX:-$root/build/windows/wine} WINEDEBUG=${WINEDEBUG:--all}
# no installers of further parts, no files in the user's menus
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe=d"
# otherwise what a test says goes to the debugger
export QT_FORCE_STDERR_LOGGING=1
# the fonts of the offscreen platform; the Windows platform has Wine's
export QT_QPA_FONTDIR=${QT_QPA_FONTDIR:-$WINEPREFIX/fonts}
# Wine keeps what is meant for Qt on Linux to itself
for name in "${!QT_@}"; do
    export "WINE$name=${!name}"
done
exec /usr/lib/wine/wine64 "$@"
