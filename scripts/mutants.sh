#!/usr/bin/env bash
# Takes one check after the other out of the code that writes the log, and looks which test turns red. Works on
# a copy of the tree; prints a table and ends with 1 when a check can go unnoticed.
#   scripts/mutants.sh [PATTERN]    only those lines of tests/safety/faults/mutants.txt that match PATTERN
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/tests.sh

list=tests/safety/faults/mutants.txt
scratch=$PWD/build/mutants
tree=$scratch/tree
tests=(tst_SafeWriter tst_FileOperations tst_PosixFileOperations tst_Paths tst_DataFile tst_FailedSaves tst_cSQL
    tst_ErrorLog tst_SettingsFile tst_OtherPrograms tst_RecordFamilies tst_DamagedFiles tst_ScriptedFaults tst_FaultyDisk
    tst_FullDisk)

rm -rf "$tree"
mkdir -p "$tree"
git ls-files -z --cached --others --exclude-standard | tar --null --files-from - -c | tar -x -C "$tree"
(cd "$tree/src" && grep -v "^#" "../$list" | cut -f1 | sort -u | xargs touch) # built anew after a run cut short
cmake -S "$tree" -B "$scratch/build" -G Ninja -DCMAKE_BUILD_TYPE=None -DCMAKE_CXX_FLAGS="-O0 -w" >"$scratch/log" 2>&1

export QTEST_FUNCTION_TIMEOUT=60000 # for the mutant that waits for ever

# builds and runs one test
passes() {
    cmake --build "$scratch/build" --target "$(basename "$(test_program "$1")")" -j1 >"$scratch/log" 2>&1 || return 2
    (cd "$scratch/build" && ctest -R "^$1\$" >"$scratch/log" 2>&1)
}

for test in "${tests[@]}"; do
    passes "$test" || {
        echo "$test fails without a mutation; see $scratch/log" >&2
        exit 2
    }
done

caught=0
missed=0
while IFS=$'\t' read -r file expression what; do
    [[ $file != "#"* ]] || continue
    # the tests of the mutated file first: they are the most likely ones
    own=tst_$(basename "${file%.*}")
    sed -E -i "$expression" "$tree/src/$file"
    red="NOT CAUGHT"
    if cmp -s "src/$file" "$tree/src/$file"; then
        red="NOT APPLIED"
    else
        for test in $(printf '%s\n' "$own" "${tests[@]}" | awk '!seen[$0]++'); do
            [[ " ${tests[*]} " == *" $test "* ]] || continue
            status=0
            passes "$test" || status=$?
            case $status in
            0) continue ;;
            2) red="NOT COMPILED" ;;
            *) red="$test $(grep -oEm1 '^FAIL! +: [^ ]+' "$scratch/build/Testing/Temporary/LastTest.log" |
                grep -oE '::.*' || echo '(ended by force)')" ;;
            esac
            break
        done
    fi
    cp "src/$file" "$tree/src/$file" # with a new time: it has to be built again
    case $red in NOT*) missed=$((missed + 1)) ;; *) caught=$((caught + 1)) ;; esac
    printf '%-28s %-62s %s\n' "$file" "$what" "$red"
done < <(grep -E "${1:-.}" "$list")
echo "$caught caught, $missed not"
[ "$missed" = 0 ]
