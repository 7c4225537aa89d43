#!/usr/bin/env bash
# Takes the tour and puts its pictures into the documents and the manual.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

need "${build_packages[@]}" "${run_packages[@]}" "${display_packages[@]}"
cmake --preset release >/dev/null
cmake --build --preset release
scripts/tour.sh build/release/src/app/tarno
for name in log general log-report; do
    cp build/tour/??-"$name".png "docs/pictures/$name.png"
done
for name in log general weather comments picture locations location builder customise log-report; do
    convert build/tour/??-"$name".png -resize 640x -colors 128 "data/manual/pictures/$name.png"
done
