#!/usr/bin/env bash
# Runs a Windows program under Wine with a registry and a drive C: of its own.
#   packaging/windows/wine.sh PROGRAM [ARGUMENT...]
# WINEPREFIX is their folder, by default build/windows/wine.
set -euo pipefail
root=$(realpath "$(dirname "$0")/../..")
export WINEPREFIX=${WINEPREFIX:-$root/build/windows/wine} WINEDEBUG=${WINEDEBUG:--all}
# no dialogs that offer to install Mono or Gecko, no entries in the user's menus
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe=d"
# otherwise test output goes to the debugger
export QT_FORCE_STDERR_LOGGING=1
# the fonts of Qt's offscreen platform; its Windows platform uses Wine's fonts
export QT_QPA_FONTDIR=${QT_QPA_FONTDIR:-$WINEPREFIX/fonts}
# Wine does not pass QT_* variables to Windows programs; it sets them from WINEQT_* variables
for name in "${!QT_@}"; do
    export "WINE$name=${!name}"
done
exec /usr/lib/wine/wine64 "$@"
