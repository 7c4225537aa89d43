#!/usr/bin/env bash
# Runs clang-tidy over the sources; every finding is an error. The first run takes ten minutes on two cores; later runs
# check only changed sources.
#   scripts/tidy.sh [SOURCE...]    only the sources whose paths end with one of the arguments
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${build_packages[@]}" "${tidy_packages[@]}" "${bench_packages[@]}"
cmake --preset tidy >/dev/null || fail "the build could not be configured"
cmake --build --preset tidy --target autogen >/dev/null || fail "moc or uic failed"
python3 scripts/tidy.py build/tidy "$@"
