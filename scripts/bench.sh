#!/usr/bin/env bash
# Builds the benchmarks in release mode and runs them.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

need "${build_packages[@]}" "${run_packages[@]}" "${bench_packages[@]}"
cmake --preset release >/dev/null || fail "the build could not be configured"
cmake --build --preset release || fail "the benchmarks do not build"
for bench in build/release/bench/bench_*; do
    say "${bench##*/}"
    QT_QPA_PLATFORM=offscreen "$bench" "$@"
done
