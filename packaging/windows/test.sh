#!/usr/bin/env bash
# Runs all tests as Windows programs under Wine, with a temporary registry and drive C:. They include the tour and the
# other scripts that drive the real program. Lists the differences from the results on Linux.
#   packaging/windows/test.sh            all tests
#   packaging/windows/test.sh --quick    the tests of core, store and astro, and those of the main window
set -euo pipefail
cd "$(dirname "$0")/../.."
source packaging/windows/libraries.sh

need "${wine_packages[@]}" "${run_packages[@]}" "${display_packages[@]}" libxml2-utils poppler-utils

source packaging/windows/temporary-wine.sh

if [ "${1:-}" = --quick ]; then
    packaging/windows/build.sh --target tarno tests_{core,store,astro,ui_main}
    names=$(basename --multiple --suffix=.cpp tests/{core,store,astro,ui/main}/tst_*.cpp |
        paste --serial --delimiters='|')
    ctest --preset windows --tests-regex "^($names)\$"
    exit
fi

packaging/windows/build.sh
failed=
ctest --preset windows || failed=yes

# counts <log>: prints the name and the numbers of passed and skipped functions of each test in a log of ctest; a
# program that does not use Qt Test counts as one function
counts() {
    awk '/^[0-9]+\/[0-9]+ Testing: / { name = $3; passed[name] = skipped[name] = 0 }
        /^Totals: / { passed[name] += $2; skipped[name] += $6 }
        /^Test Passed\./ { if (!passed[name]) passed[name] = 1 }
        END { for (name in passed) print name, passed[name], skipped[name] }' "$1" | sort
}

ran=build/windows/Testing/Temporary/LastTest.log
ranOnLinux=build/dev/AllTests.log
if [ ! -e $ranOnLinux ]; then
    say "running the tests on Linux for comparison"
    env --unset=TARNO_VIRTUAL_DISPLAY scripts/test.sh || fail "the tests fail on Linux"
fi
say "differences from Linux"
join -a 1 -a 2 -e - -o 0,1.2,1.3,2.2,2.3 <(counts $ranOnLinux) <(counts $ran) | awk '
    BEGIN {
        needed["assistive"] = "the accessibility bus"
        needed["tst_FaultyDisk"] = "a preloaded library that intercepts system calls"
        needed["tst_FullDisk"] = "rights to mount a file system"
        needed["tst_PosixFileOperations"] = "Linux"
    }
    { linux += $2; linuxSkipped += $3; windows += $4; windowsSkipped += $5 }
    $4 == "-" { print "    " $1 ": not on Windows, needs " needed[$1] " (" $2 " passed on Linux)"; next }
    $2 == "-" { print "    " $1 ": only on Windows (" $4 " passed)"; next }
    $2 != $4 || $3 != $5 { printf "    %s: %d passed and %d skipped on Linux, %d and %d on Windows\n", $1, $2, $3, $4, $5 }
    END {
        printf "    in total %d passed and %d skipped on Linux, %d and %d on Windows\n",
            linux, linuxSkipped, windows, windowsSkipped
    }'
say "reasons for skipped functions"
sed -n 's/^SKIP *: */    /p' $ran | tr -d '\r'
[ -z "$failed" ] || fail "tests failed on Windows"
say "all tests passed on Windows"
