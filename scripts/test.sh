#!/usr/bin/env bash
# Builds Tarno with its tests and runs them.
#   scripts/test.sh            all tests, the longest ones in a short form
#   scripts/test.sh NAME...    only these tests, for example tst_fEntryEdit or tour
#   scripts/test.sh --all      what CI runs: all tests, also under the sanitizers and, if the Windows libraries exist, as
#                              Windows programs; the format of the sources; clang-tidy
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh
source scripts/tests.sh

all=
names=()
for argument in "$@"; do
    case $argument in
    --all) all=yes ;;
    -*) fail "usage: scripts/test.sh [--all | NAME...]" ;;
    *) names+=("$argument") ;;
    esac
done

# build <preset> [<target>...]: builds the targets, or everything
build() {
    local preset=$1
    shift
    cmake --preset "$preset" >/dev/null || fail "the build could not be configured"
    cmake --build --preset "$preset" ${1:+--target "$@"} || fail "the build failed"
}

# run_tests <preset> [<option>...]: runs ctest; on failure, prints the path of the log
run_tests() {
    local preset=$1
    shift
    ctest --preset "$preset" "$@" 2>&1 | tee "build/$preset/tests.txt" ||
        fail "$(grep -oE '[0-9]+ tests? failed out of [0-9]+|No tests were found' "build/$preset/tests.txt"); see" \
            "build/$preset/Testing/Temporary/LastTest.log"
}

if [ -n "$all" ]; then
    export TARNO_SAFETY=short
    say "building and testing with and without the sanitizers, and checking the sources; this takes about 20 minutes on" \
        "two cores, or half of that if little has changed"
elif [ "${#names[@]}" -gt 0 ]; then
    say "building and running ${names[*]}"
else
    say "building and running all tests; this takes about 6 minutes on two cores, or 2 minutes if little has changed"
fi
need "${build_packages[@]}" "${run_packages[@]}" "${test_packages[@]}" "${display_packages[@]}" \
    "${assistive_packages[@]}"

if [ -n "$all" ]; then
    say "checking the format of the sources"
    git ls-files '*.cpp' '*.h' | xargs -r clang-format-14 --dry-run --Werror ||
        fail "the sources are not formatted; run scripts/format.sh"

    say "building with sanitizers"
    build sanitize
    run_tests sanitize

    say "running clang-tidy"
    scripts/tidy.sh || fail "clang-tidy reported findings; see above"

    source packaging/windows/libraries.sh
    if have_libraries; then
        say "testing the Windows program"
        packaging/windows/test.sh --quick || fail "a test of the Windows program failed"
    else
        say "skipping the Windows program: run packaging/windows/build.sh once to build its libraries"
    fi
fi

say "building"
if [ "${#names[@]}" -gt 0 ]; then
    targets=()
    for name in "${names[@]}"; do
        program=$(test_program "${name%%-*}") # removes the scale from tst_Looks-2
        [[ -n $program || $name == fuzz_* ]] || program=tarno
        targets+=("$(basename "${program:-$name}")")
    done
    build dev "${targets[@]}"
    run_tests dev --tests-regex "^($(IFS='|' && printf '%s' "${names[*]}"))\$"
else
    build dev
    run_tests dev
    # for the comparison with other platforms; a later run of single tests does not overwrite it
    cp build/dev/Testing/Temporary/LastTest.log build/dev/AllTests.log
fi
count=$(sed -n 's/.* failed out of //p' build/dev/tests.txt)
say "$count of $count tests passed in $((SECONDS / 60)) min $((SECONDS % 60)) s"
