#!/usr/bin/env bash
# Writes the test data for the statistics of the log, calculated independently of the program.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

need python3-scipy
/usr/bin/python3 scripts/statistics-oracle.py tests/analysis/data
/usr/bin/python3 scripts/sample-oracle.py data tests/analysis/data
