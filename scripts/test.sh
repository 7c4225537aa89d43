#!/usr/bin/env bash
# Builds Tarno with its tests and runs them all: once as usual, once under the address and
# undefined-behaviour sanitizers, after checking the format of the sources; the last lines are ctest's. Where the
# libraries of the Windows program have been built, some of its tests are run too.
#   scripts/test.sh           everything
#   scripts/test.sh --quick   neither the sanitizers nor Windows
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

quick=
[ "${1:-}" = --quick ] && quick=yes

need "${build_packages[@]}" "${run_packages[@]}" "${test_packages[@]}" "${display_packages[@]}" \
    "${assistive_packages[@]}"

say "checking the format of the sources"
git ls-files '*.cpp' '*.h' | xargs -r clang-format-14 --dry-run --Werror ||
    fail "the sources are not formatted; run scripts/format.sh"

if [ -z "$quick" ]; then
    say "building with sanitizers"
    cmake --preset sanitize >/dev/null || fail "the build could not be configured"
    cmake --build --preset sanitize || fail "the sanitizer build failed"
    ctest --preset sanitize || fail "a test failed under the sanitizers"

    source packaging/windows/libraries.sh
    if have_libraries; then
        say "testing the Windows program"
        packaging/windows/test.sh --quick || fail "a test of the Windows program failed"
    else
        say "not testing the Windows program: packaging/windows/build.sh has not built its static Qt here"
    fi
fi

say "building"
cmake --preset dev >/dev/null || fail "the build could not be configured"
cmake --build --preset dev || fail "the build failed"
ctest --preset dev
# to be compared with on other platforms; a later run of a few tests leaves it alone
cp build/dev/Testing/Temporary/LastTest.log build/dev/AllTests.log
