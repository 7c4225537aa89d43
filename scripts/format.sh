#!/usr/bin/env bash
# Formats all C++ sources in place.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
need clang-format-14
git ls-files --cached --others --exclude-standard '*.cpp' '*.h' | xargs -r clang-format-14 -i
