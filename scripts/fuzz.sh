#!/usr/bin/env bash
# Runs the fuzzers of tests/safety/fuzz, at most two at a time, under the address and undefined-behaviour sanitizers.
# New inputs are written to build/fuzz/. After a crash, the script prints the path of the input and fails.
#   scripts/fuzz.sh [RUNS [FUZZER...]]    RUNS is the number of inputs for each fuzzer, by default 1,000,000
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

runs=${1:-1000000}
[[ $runs =~ ^[0-9]+$ ]] || fail "usage: scripts/fuzz.sh [RUNS [FUZZER...]]"
shift $(($# > 0))
sources=tests/safety/fuzz
build=build/fuzz/$sources
found=build/fuzz/found

need "${build_packages[@]}" "${safety_packages[@]}"
say "building"
cmake --preset fuzz >/dev/null || fail "the build could not be configured"
cmake --build --preset fuzz || fail "the fuzzers do not build"

fuzzers=("$@")
[ $# -gt 0 ] || mapfile -t fuzzers < <(cd "$sources" && ls fuzz_*.cpp | sed 's/\.cpp$//')

# the fuzzers write their files in memory
TMPDIR=$(mktemp -d -p "$([ -w /dev/shm ] && echo /dev/shm || echo "${TMPDIR:-/tmp}")" tarno-fuzz.XXXXXX)
trap 'rm -rf "$TMPDIR"' EXIT
export TMPDIR QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
# limits what the sanitizer remembers of freed blocks, which would grow with the number of runs
export ASAN_OPTIONS=malloc_context_size=4:quarantine_size_mb=16

# max_input_size <fuzzer>: prints the maximum size of an input; longer inputs take more time and find nothing new
max_input_size() {
    case $1 in
    fuzz_DateTime) echo 32 ;;
    fuzz_PickList | fuzz_Query | fuzz_Rtf) echo 128 ;;
    *) echo 1024 ;;
    esac
}

# fuzz <fuzzer>: runs the fuzzer and prints one line of statistics; fails after a crash
fuzz() {
    local name=$1 out=$found/$1 words=$sources/dictionaries/$1.txt seconds=$SECONDS options=()
    rm -rf "$out"
    mkdir -p "$out/corpus"
    [ ! -e "$words" ] || options+=(-dict="$words")
    if ! "$build/$name" -runs="$runs" -seed=1 -max_len="$(max_input_size "$name")" -timeout=20 -rss_limit_mb=2048 \
        -print_final_stats=1 -artifact_prefix="$out/" "${options[@]}" \
        "$out/corpus" "$sources/corpus/$name" >"$out/log.txt" 2>&1; then
        grep -m 1 -E '^broken:|ERROR:|runtime error:' "$out/log.txt" >&2 || tail -n 5 "$out/log.txt" >&2
        printf 'error: %s crashes on %s\n' "$name" \
            "$(find "$out" -maxdepth 1 -type f ! -name log.txt -print -quit)" >&2
        return 1
    fi
    printf '%-14s %9d runs %6d s %8d a second %6d new inputs %6d edges covered\n' "$name" \
        "$(print_statistic number_of_executed_units)" $((SECONDS - seconds)) "$(print_statistic average_exec_per_sec)" \
        "$(print_statistic new_units_added)" "$(grep -o 'cov: [0-9]*' "$out/log.txt" | tail -n 1 | cut -d ' ' -f 2)"
}

# print_statistic <name>: prints a statistic from the log of the current fuzzer
print_statistic() {
    sed -n "s/^stat::$1: *//p" "$out/log.txt"
}

say "$runs runs of ${fuzzers[*]}"
crashed=0
running=0
for name in "${fuzzers[@]}"; do
    [ -x "$build/$name" ] || fail "unknown fuzzer: $name"
    if [ "$running" -eq 2 ]; then
        wait -n || crashed=1
        running=$((running - 1))
    fi
    fuzz "$name" &
    running=$((running + 1))
done
while [ "$running" -gt 0 ]; do
    wait -n || crashed=1
    running=$((running - 1))
done
[ "$crashed" -eq 0 ] || fail "a fuzzer crashed"
