#!/usr/bin/env bash
# Builds Tarno and opens a copy of the sample log. On a machine without a display, drives the program on a virtual
# display instead and writes screenshots and a report to build/tour/.
#   scripts/run.sh            uses the copy of the last run
#   scripts/run.sh --fresh    starts with a new copy
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

has_display=yes
[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] || has_display=
packages=("${build_packages[@]}" "${run_packages[@]}")
[ -n "$has_display" ] || packages+=("${tour_packages[@]}") # installed together with the others
need "${packages[@]}"
say "building Tarno; this takes about two minutes on two cores, or a few seconds if nothing has changed"
cmake --preset release >/dev/null || fail "the build could not be configured"
cmake --build --preset release --target tarno || fail "the program does not build"

if [ -z "$has_display" ]; then
    say "no display found; running the tour on a virtual display, which takes half a minute"
    exec scripts/tour.sh build/release/src/app/tarno
fi

log=build/run
[ "${1:-}" = --fresh ] && rm -rf "$log"
if [ ! -d "$log" ]; then
    say "copying the sample log to $log"
    scripts/make-data-folder.sh --sample "$log"
fi
say "opening $log with Tarno"
exec build/release/src/app/tarno --folder "$log"
