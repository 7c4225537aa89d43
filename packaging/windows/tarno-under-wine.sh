#!/usr/bin/env bash
# Runs Tarno.exe under Wine, as the program for the scripts that drive it by keyboard and mouse.
#   packaging/windows/tarno-under-wine.sh [ARGUMENT...]
# TARNO_EXE is the path of the program, by default build/windows/Tarno/Tarno.exe.
set -euo pipefail
here=$(dirname "$0")
export QT_QPA_PLATFORM=windows
if [ "${1:-}" = --version ]; then # on Windows the program would show it in a window
    echo "Tarno for Windows"
    exit
fi
exec "$here/wine.sh" "${TARNO_EXE:-$here/../../build/windows/Tarno/Tarno.exe}" "$@"
