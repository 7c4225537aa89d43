#!/usr/bin/env bash
# Updates the pictures in the documents, which come from the tour, and in the manual, which come from the gallery.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

need "${build_packages[@]}" "${run_packages[@]}" "${display_packages[@]}"
cmake --preset release >/dev/null
cmake --build --preset release --target tarno
scripts/tour.sh build/release/src/app/tarno
for name in log details general log-report; do
    cp build/tour/??-"$name".png "docs/pictures/$name.png"
done

scripts/gallery.sh
while IFS=: read -r name state; do
    convert "build/gallery/100/$state (light).png" -resize '640x>' -colors 128 "data/manual/pictures/$name.png"
done <<STATES
log:log
find:log, found
general:trip, general
weather:trip, weather
comments:trip, comments
picture:trip, picture
locations:locations
calendar:calendar
statistics:statistics
location:location, data
builder:log report
customise:report fields
log-report:preview of the log
STATES
