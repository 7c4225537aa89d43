#!/usr/bin/env bash
# Compares the time of a year of forecasts with that of other libraries, in one run: sunrise, sunset, moonrise, moonset
# and the moon's phase of each day at one place. Tarno's forecasts also have the major and minor times and the rating.
# Installs the libraries for this comparison only, two of them in build/peers; nothing else needs them.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

need "${build_packages[@]}" "${bench_packages[@]}" python3-ephem
command -v npm >/dev/null || need nodejs npm
folder=build/peers
mkdir -p "$folder"
npm install --silent --no-fund --no-audit --prefix "$folder" suncalc@1 astronomy-engine@2 >/dev/null ||
    fail "the JavaScript libraries could not be installed"
cmake --preset release -DTARNO_BENCHMARKS=ON >/dev/null || fail "the build could not be configured"
cmake --build --preset release --target bench_forecast >/dev/null || fail "the benchmark does not build"

{
    build/release/bench/bench_forecast --benchmark_filter='forecast of a year' --benchmark_repetitions=5 \
        --benchmark_format=csv 2>/dev/null |
        awk -F, '$1 == "\"forecast of a year\"" && (!best || $3 < best) { best = $3 } END { printf "Tarno\t\t%.1f\n", best }'
    node bench/peers/year.mjs "$folder"
    /usr/bin/python3 bench/peers/year.py
} | awk -F '\t' 'BEGIN { print "| Program | Version | ms |\n|---|---|--:|" } { printf "| %s | %s | %s |\n", $1, $2, $3 }'
