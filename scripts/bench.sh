#!/usr/bin/env bash
# Builds the benchmarks in release mode, runs them, and prints a table of the results. Each result has a limit, the
# least time that the same work can take, measured in the same run. Takes a few minutes.
#   scripts/bench.sh [ARGUMENT...]    arguments of Google Benchmark, for example --benchmark_filter=load
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
    # shows its windows on a real display server, with the sizes of a first start
    bench_start) XDG_CONFIG_HOME=/nonexistent QT_QPA_PLATFORM=xcb xvfb-run --auto-servernum "$bench" "$@" 2>/dev/null ;;
    *) QT_QPA_PLATFORM=offscreen "$bench" "$@" 2>/dev/null ;;
    esac || fail "${bench##*/} failed"
done | awk -f bench/table.awk
