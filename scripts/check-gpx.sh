#!/usr/bin/env bash
# Exchanges way points with gpsbabel in both directions and compares names, positions and descriptions.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

need "${build_packages[@]}" "${run_packages[@]}" gpsbabel python3
cmake --preset dev >/dev/null || fail "the build could not be configured"
cmake --build --preset dev --target tarno || fail "the program does not build"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
/usr/bin/python3 scripts/check-gpx.py build/dev/src/app/tarno "$folder"
