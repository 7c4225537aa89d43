#!/usr/bin/env bash
# Reads exported events with an independent iCalendar parser and compares them with the reference forecasts.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

need "${build_packages[@]}" python3-icalendar
cmake --preset dev >/dev/null || fail "the build could not be configured"
cmake --build --preset dev --target write_events || fail "the program that writes the events does not build"
events=$(mktemp --suffix .ics)
trap 'rm -f "$events"' EXIT
build/dev/tests/exchange/write_events tests/astro/data/forecast.tsv "$events"
/usr/bin/python3 scripts/check-calendar.py tests/astro/data/forecast.tsv "$events"
