#!/usr/bin/env bash
# Takes a screenshot of every window in every state, light and dark, with the default font and one twice as large, at
# four scales. Writes them to build/gallery/<percent>/.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

need "${build_packages[@]}"
cmake --preset dev >/dev/null
cmake --build --preset dev --target gallery
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
rm -rf build/gallery
for percent in 100 125 150 200; do
    echo "$percent percent"
    QT_SCALE_FACTOR=$((percent / 100)).$((percent % 100)) build/dev/tests/looks/gallery "build/gallery/$percent" \
        2> >(grep -v 'This plugin does not support' >&2)
done
