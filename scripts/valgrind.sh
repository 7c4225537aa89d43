#!/usr/bin/env bash
# Runs the tests of core and store and the corpora of their fuzzers under valgrind, at most two programs at a time.
# Unlike the sanitizers, valgrind also checks the libraries. Every report and every leak is an error. Takes a while;
# writes the reports to build/valgrind/.
#   scripts/valgrind.sh [TEST...]    only those test classes and fuzzers
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
source scripts/tests.sh

need "${build_packages[@]}" "${safety_packages[@]}"
say "building"
cmake --preset dev >/dev/null || fail "the build could not be configured"
tests=()
for source in tests/core/tst_*.cpp tests/store/tst_*.cpp tests/safety/fuzz/fuzz_{DataFile,Settings,Xml}.cpp; do
    name=$(basename "$source" .cpp)
    if [ $# -eq 0 ] || [[ " $* " == *" $name "* ]]; then
        tests+=("$name")
    fi
done
[ "${#tests[@]}" -gt 0 ] || fail "no test of core or store and no fuzzer matches: $*"
cmake --build --preset dev --target tests_core tests_store fuzz_DataFile fuzz_Settings fuzz_Xml ||
    fail "the tests do not build"

out=build/valgrind
rm -rf "$out"
mkdir -p "$out"
export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
# programs are many times slower under valgrind than the usual timeout allows
export QTEST_FUNCTION_TIMEOUT=3600000

# check <test>: runs one test and prints one line; fails if valgrind or the test reports an error
check() {
    local name=$1 seconds=$SECONDS command=()
    if [[ $name == fuzz_* ]]; then
        command=("build/dev/tests/safety/fuzz/$name" "tests/safety/fuzz/corpus/$name")
    else
        command=("build/dev/$(test_program "$name")" "$name")
    fi
    if valgrind --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite \
        --log-file="$out/$name.valgrind" "${command[@]}" >"$out/$name.out" 2>&1; then
        printf '%-22s %5d s  no error\n' "$name" $((SECONDS - seconds))
    else
        printf '%-22s %5d s  FAILED, see %s\n' "$name" $((SECONDS - seconds)) "$out/$name.{valgrind,out}"
        return 1
    fi
}

failed=0
running=0
for name in "${tests[@]}"; do
    if [ "$running" -eq 2 ]; then
        wait -n || failed=1
        running=$((running - 1))
    fi
    check "$name" &
    running=$((running + 1))
done
while [ "$running" -gt 0 ]; do
    wait -n || failed=1
    running=$((running - 1))
done
[ "$failed" -eq 0 ] || fail "valgrind or a test reported errors"
