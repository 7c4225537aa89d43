#!/usr/bin/env bash
# Tarno.exe as a program that the scripts with a hand for keyboard and mouse can drive.
#   packaging/windows/tarno-under-wine.sh [ARGUMENT...]
# TARNO_EXE names the program, that of build/windows/Tarno/ unless said otherwise.
set -euo pipefail
here=$(dirname "$0")
export QT_QPA_PLATFORM=windows
if [ "${1:-}" = --version ]; then # the program would show a window
    echo "Tarno for Windows"
    exit
fi
exec "$here/wine.sh" "${TARNO_EXE:-$here/../../build/windows/Tarno/Tarno.exe}" "$@"
