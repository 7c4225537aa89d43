#!/usr/bin/env bash
# Runs a Windows program under Wine with a registry and a drive C: of its own, which nobody else uses.
#   packaging/windows/wine.sh PROGRAM [ARGUMENT...]
# WINEPREFIX names where they lie, build/windows/wine unless said otherwise.
set -euo pipefail
root=$(realpath "$(dirname "$0")/../..")
export WINEPREFIX=${WINEPREFIX:-$root/build/windows/wine} WINEDEBUG=${WINEDEBUG:--all}
# no installers of further parts, no files in the user's menus
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe=d"
# the fonts of the offscreen platform; the Windows platform has Wine's
export QT_QPA_FONTDIR=${QT_QPA_FONTDIR:-/usr/share/fonts/truetype/dejavu}
exec /usr/lib/wine/wine64 "$@"
