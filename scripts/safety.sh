#!/usr/bin/env bash
# Proves that nothing an angler writes is lost: kills, faults, damaged files, two programs on one log, whatever can
# be typed. Leaves the whole output in build/safety/.
#   scripts/safety.sh           the short form, as scripts/test.sh --all runs it; a few minutes
#   scripts/safety.sh --long    the long form: many more rounds of the same, fuzzing and valgrind; an hour or more
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

# part <name> <command>...: runs one part of the long form and tells how it went
part() {
    local name=$1 started=$SECONDS result=passed
    shift
    "$@" >"$out/$name.log" 2>&1 || result=FAILED
    {
        printf '%-24s %s, %d s\n' "$name" "$result" $((SECONDS - started))
        awk '/^(Totals|QINFO)/ { print "    " $0 }' "$out/$name.log"
    } | tee -a "$out/summary.txt"
}

say "the long form, in two lanes; each part's output lies in $out"
export TARNO_SAFETY=long QTEST_FUNCTION_TIMEOUT=14400000 QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8
{
    for source in tests/safety/*/tst_*.cpp; do
        name=$(basename "$source" .cpp)
        # thousands of saves whose synchronising proves nothing: in memory they take minutes; the kills choose themselves
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
    fail "not every part has passed; see $out/summary.txt"
fi
say "all parts of the long form have passed; see $out/summary.txt"
