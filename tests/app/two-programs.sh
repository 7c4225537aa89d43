#!/usr/bin/env bash
# Two programs on one log, driven from outside: each adds a trip, and both are there; both change the same trip, and
# the second to save says where the other's version is kept.
#   tests/app/two-programs.sh PROGRAM OUT
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh

program=$(realpath "${1:?usage: tests/app/two-programs.sh PROGRAM OUT}")
out=$(realpath --canonicalize-missing --relative-to=. "${2:?}")
source scripts/hand.sh
need "${run_packages[@]}" "${display_packages[@]}" libxml2-utils
on_virtual_display tests/app/two-programs.sh "$program" "$out"

rm -rf "$out"
mkdir -p "$out"
scripts/lay-out.sh --sample "$out/log"

# turn_to <window>: the program whose main window that is
turn_to() {
    xdotool windowactivate --sync "$1"
    window "Tarno Fishing Log"
}

is_not_active() {
    [ "$(xdotool getactivewindow 2>/dev/null)" != "$1" ]
}

# save_date <date> <position>: in the entry editor, whose first box has the focus; the trip is then at that position
# of the log
save_date() {
    window "Tarno Log Entry"
    keys ctrl+a
    type_text "$1"
    keys Tab
    keys ctrl+a
    keys alt+s
    await_value "the date" "$1" log_date "$out/log/tarno.xml" "$2"
}

# log_date <file> <position>
log_date() {
    xmllint --xpath "string(/data/tarno[$2]/*[2])" "$1"
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

for number in 1 2; do
    [ "$number" = 1 ] && turn_to "$first" || turn_to "$second"
    keys ctrl+n
    save_date "2026-07-0$number" $((before + number))
    keys Escape
    window "Tarno Fishing Log"
done
await_value "trips after each program has added one" $((before + 2)) records tarno.xml tarno
picture 01-both "the list of the second program holds both"

for number in 3 4; do
    [ "$number" = 3 ] && turn_to "$first" || turn_to "$second"
    keys Home
    keys Return
    save_date "1999-01-0$number" 1
    [ "$number" = 4 ] || { keys Escape && window "Tarno Fishing Log"; }
done
window "Tarno Error"
picture 02-kept "both have changed the first trip"
keys Return
window "Tarno Log Entry"
keys Escape
window "Tarno Fishing Log"
await_value "trips in the log" $((before + 2)) records tarno.xml tarno
await_value "the first trip in the version that was kept" 1999-01-03 log_date "$out/log/tarno-kept-1.xml" 1
picture 03-log "the log of the second program"
tell "both programs know what happened"
