#!/usr/bin/env bash
# Runs clang-tidy over everything; every finding is an error. Takes several minutes.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need "${build_packages[@]}" clang-tidy-14
cmake --preset tidy >/dev/null || fail "the build could not be configured"
cmake --build --preset tidy
