#!/usr/bin/env bash
# Passes exported trips through LibreOffice and compares every cell and every imported value with the log.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

need "${build_packages[@]}" "${run_packages[@]}" libreoffice-calc python3
cmake --preset dev >/dev/null || fail "the build could not be configured"
cmake --build --preset dev --target tarno || fail "the program does not build"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
/usr/bin/python3 scripts/check-spreadsheet.py build/dev/src/app/tarno "$folder"
