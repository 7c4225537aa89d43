#!/usr/bin/env bash
# Builds Tarno and opens it on a copy of the sample log. On a machine without a display it drives the
# program on a virtual one instead and leaves pictures and a report under build/tour/.
#   scripts/run.sh            go on with the copy of the last run
#   scripts/run.sh --fresh    start from the sample log again
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

need "${build_packages[@]}" "${run_packages[@]}"
say "building"
cmake --preset release >/dev/null || fail "the build could not be configured"
cmake --build --preset release || fail "the program does not build"

if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    say "there is no display: taking the tour on a virtual one"
    exec scripts/tour.sh build/release/src/app/tarno
fi

log=build/run
[ "${1:-}" = --fresh ] && rm -rf "$log"
if [ ! -d "$log" ]; then
    say "copying the sample log to $log"
    scripts/lay-out.sh --sample "$log"
fi
say "opening Tarno on $log"
exec build/release/src/app/tarno --folder "$log"
