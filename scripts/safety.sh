#!/usr/bin/env bash
# Tests that no data is lost: killed processes, disk faults, damaged files, several programs on one log, any text that
# can be typed. The long form writes its output to build/safety/.
#   scripts/safety.sh           the short form, as in scripts/test.sh --all; takes a few minutes
#   scripts/safety.sh --long    many more rounds, fuzzing and valgrind; takes an hour or more
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

long=
[ "${1:-}" = --long ] && long=yes

need "${build_packages[@]}" "${run_packages[@]}" "${test_packages[@]}" "${safety_packages[@]}"

say "building"
cmake --preset dev >/dev/null || fail "the build could not be configured"
cmake --build --preset dev || fail "the build failed"

if [ -z "$long" ]; then
    export TARNO_SAFETY=short
    exec ctest --preset dev --label-regex safety
fi

out=build/safety
rm -rf "$out"
mkdir -p "$out"

# part <name> <command>...: runs one part of the long form and prints its result
part() {
    local name=$1 started=$SECONDS result=passed
    shift
    "$@" >"$out/$name.log" 2>&1 || result=FAILED
    {
        printf '%-24s %s, %d s\n' "$name" "$result" $((SECONDS - started))
        awk '/^(Totals|QINFO)/ { print "    " $0 }' "$out/$name.log"
    } | tee -a "$out/summary.txt"
}

say "running the long form, two parts at a time; the output of each part is in $out"
export TARNO_SAFETY=long QTEST_FUNCTION_TIMEOUT=14400000 QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
{
    for source in tests/safety/*/tst_*.cpp; do
        name=$(basename "$source" .cpp)
        # these tests save thousands of times and do not depend on fsync, so they run in memory; tst_Kills chooses its
        # folders itself
        place=/dev/shm
        [[ $name != tst_Kills && -w $place ]] || place=${TMPDIR:-/tmp}
        TMPDIR=$place part "$name" build/dev/tests/safety/tests_safety "$name"
    done
} &
{
    part valgrind scripts/valgrind.sh
    part fuzz scripts/fuzz.sh 1000000
} &
wait

if grep -q ' FAILED, ' "$out/summary.txt"; then
    fail "a part of the long form failed; see $out/summary.txt"
fi
say "all parts of the long form passed; see $out/summary.txt"
