#!/usr/bin/env bash
# Writes the log report as a PDF with Tarno, and lets LibreOffice make a PDF of the same report (RTF) and of the same
# table (CSV). Prints the times and pages of each.
#   bench/compare-pdf.sh [TRIPS]    1000 (default), 10000 or 100000; LibreOffice may take minutes, and gets ten of them
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

trips=${1:-1000}
command -v soffice >/dev/null ||
    fail "LibreOffice was not found, so there is nothing to compare with (packages libreoffice-writer, libreoffice-calc)"
need "${build_packages[@]}" "${bench_packages[@]}" poppler-utils
cmake --preset release -DTARNO_BENCHMARKS=ON >/dev/null || fail "the build could not be configured"
cmake --build --preset release --target bench_reports >/dev/null || fail "the benchmark does not build"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# convert <file>: prints the elapsed and the processor time in seconds, or what went wrong
convert() {
    local TIMEFORMAT='%R %U' out=$folder/${1##*.}
    { time timeout 600 soffice "-env:UserInstallation=file://$folder/profile" --headless --convert-to pdf \
        --outdir "$out" "$folder/$1" >/dev/null 2>&1; } 2>&1 || true
}

# row <what> <times> <file>: prints a row of the table
row() {
    local pages=-
    [ -s "$3" ] && pages=$(pdfinfo "$3" 2>/dev/null | awk '/^Pages:/ { print $2 }')
    printf '| %s | %s | %s | %s |\n' "$1" "${2% *}" "${2#* }" "$pages"
}

TARNO_BENCH_FILES=$folder QT_QPA_PLATFORM=offscreen build/release/bench/bench_reports \
    --benchmark_filter="^log report, (PDF|RTF)/$trips\$" >"$folder/tarno" 2>/dev/null || fail "bench_reports failed"
tarno=$(awk '/^log report, PDF/ { for (i = 4; i < NF; i++) if ($i == "ms") { printf "%.2f %.2f", $(i - 1) / 1000, $(i + 1) / 1000; exit } }' \
    "$folder/tarno")
[ -n "$tarno" ] || fail "no report of $trips trips; use 1000, 10000 or 100000"

: >"$folder/empty.txt"
convert empty.txt >/dev/null # creates the profile
echo "| $trips trips | Elapsed, s | Processor, s | Pages |"
echo "|---|--:|--:|--:|"
row "Tarno: PDF of the laid-out report" "$tarno" "$folder/report.pdf"
row "LibreOffice: start, PDF of an empty page" "$(convert empty.txt)" "$folder/txt/empty.pdf"
row "LibreOffice: PDF of the table, from CSV" "$(convert report.csv)" "$folder/csv/report.pdf"
row "LibreOffice: PDF of the report, from RTF" "$(convert report.rtf)" "$folder/rtf/report.pdf"
