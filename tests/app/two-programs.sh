#!/usr/bin/env bash
# Two running programs with one log: each adds a trip and changes a different trip, and the log contains all changes.
# Then both change the same trip, and the second to save shows where the version of the first is stored.
#   tests/app/two-programs.sh PROGRAM OUT
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh

program=$(realpath "${1:?usage: tests/app/two-programs.sh PROGRAM OUT}")
out=$(realpath --canonicalize-missing --relative-to=. "${2:?}")
source scripts/gui-driver.sh
need "${run_packages[@]}" "${display_packages[@]}" libxml2-utils
on_virtual_display tests/app/two-programs.sh "$program" "$out"

rm -rf "$out"
mkdir -p "$out"
scripts/make-data-folder.sh --sample "$out/log"

is_not_active() {
    [ "$(xdotool getactivewindow 2>/dev/null)" != "$1" ]
}

# date_of <position> [<file>]: prints the start date of that trip
date_of() {
    xmllint --xpath "string(/data/tarno[$1]/*[2])" "$log/${2:-tarno.xml}"
}

# save <main window> <date> <position> <keys>...: opens the entry editor with the keys, saves the trip with that start
# date, and waits until the trip at that position of the log has the date
save() {
    xdotool windowactivate --sync "$1"
    window "Tarno Fishing Log"
    keys "${@:4}"
    window "Tarno Log Entry"
    keys ctrl+a
    type_text "$2"
    keys Tab
    keys ctrl+a
    keys alt+s
    await_value "the date of trip $3" "$2" date_of "$3"
}

close_editor() {
    keys Escape
    window "Tarno Fishing Log"
}

# prints the error log and the files with kept versions of trips
other_files() {
    (cd "$log" && find . -iname '*.log' -o -name '*kept*')
}

start "$out/log"
before=$(records tarno.xml tarno)
splash
first=$(xdotool getactivewindow)
"$program" --folder "$out/log" >"$out/second.log" 2>&1 &
second_program=$!
trap 'kill $tarno $second_program 2>/dev/null || true' EXIT
await "the second program" is_not_active "$first"
splash
second=$(xdotool getactivewindow)

save "$first" 2026-07-01 $((before + 1)) ctrl+n
close_editor
save "$second" 2026-07-02 $((before + 2)) ctrl+n
close_editor
save "$first" 1999-01-01 1 Home Return
close_editor
save "$second" 2026-07-31 $((before + 2)) End Return
close_editor
expect "trips after each program has added one" "$(records tarno.xml tarno)" $((before + 2))
expect "the trip that the first program changed" "$(date_of 1)" 1999-01-01
expect "other files" "$(other_files)" ""
picture 01-both "the list of the second program with all changes"

save "$first" 1999-01-03 1 Home Return
close_editor
save "$second" 1999-01-04 1 Home Return
window "Tarno"
picture 02-conflict "both have changed the first trip"
keys Return
window "Tarno Log Entry"
close_editor
expect "trips in the log" "$(records tarno.xml tarno)" $((before + 2))
expect "other files" "$(other_files)" ./tarno-kept-1.xml
expect "trips in that file" "$(records tarno-kept-1.xml tarno)" 1
expect "the version of the first program" "$(date_of 1 tarno-kept-1.xml)" 1999-01-03
