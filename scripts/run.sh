#!/usr/bin/env bash
# Builds Tarno and opens it on a copy of the sample log. On a machine without a display it drives the
# program on a virtual one instead and leaves pictures and a report in build/tour/.
#   scripts/run.sh            continues with the copy of the last run
#   scripts/run.sh --fresh    starts from the sample log again
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

has_display=yes
[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] || has_display=
packages=("${build_packages[@]}" "${run_packages[@]}")
[ -n "$has_display" ] || packages+=("${tour_packages[@]}") # everything in one go
need "${packages[@]}"
say "building Tarno: about two minutes on two cores, a few seconds if nothing has changed"
cmake --preset release >/dev/null || fail "the build could not be configured"
cmake --build --preset release --target tarno || fail "the program does not build"

if [ -z "$has_display" ]; then
    say "there is no display: taking the tour on a virtual one, half a minute"
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
