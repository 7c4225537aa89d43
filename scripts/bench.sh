#!/usr/bin/env bash
# Builds the benchmarks in release mode, runs them, and prints a table: each figure beside its limit, which is the
# least that the same work can take, measured in the same run. Takes some minutes.
#   scripts/bench.sh [arguments of Google Benchmark, as --benchmark_filter=load]
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

need "${build_packages[@]}" "${run_packages[@]}" "${bench_packages[@]}" "${display_packages[@]}"
cmake --preset release -DTARNO_BENCHMARKS=ON >/dev/null || fail "the build could not be configured"
cmake --build --preset release || fail "the benchmarks do not build"
for source in bench/bench_*.cpp; do
    bench=build/release/${source%.cpp}
    say "${bench##*/}" >&2
    case ${bench##*/} in
    # its windows go to a real display server
    bench_start) QT_QPA_PLATFORM=xcb xvfb-run --auto-servernum "$bench" "$@" 2>/dev/null ;;
    *) QT_QPA_PLATFORM=offscreen "$bench" "$@" 2>/dev/null ;;
    esac || fail "${bench##*/} failed"
done | awk -f bench/table.awk
