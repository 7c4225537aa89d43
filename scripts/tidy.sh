#!/usr/bin/env bash
# Runs clang-tidy over the sources; every finding is an error. Ten minutes the first time on two cores; later only
# sources that have changed are checked.
#   scripts/tidy.sh [SOURCE...]    only those, by the ends of their paths
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${build_packages[@]}" "${tidy_packages[@]}" "${bench_packages[@]}"
cmake --preset tidy >/dev/null || fail "the build could not be configured"
cmake --build --preset tidy --target autogen >/dev/null || fail "the sources of the windows could not be generated"
python3 scripts/tidy.py build/tidy "$@"
