#!/usr/bin/env bash
# Types five trips from a paper diary into two copies of the sample log: once with everything typed and each trip added
# by itself, and once with Ctrl+Enter and proposals. Counts the keys. Fails if the two logs differ, or if the second
# way needs more than 65 keys for a trip.
#   tests/app/five-trips.sh PROGRAM OUT
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh

program=$(realpath "${1:?usage: tests/app/five-trips.sh PROGRAM OUT}")
out=$(realpath --canonicalize-missing --relative-to=. "${2:?}")
source scripts/gui-driver.sh
need "${run_packages[@]}" "${display_packages[@]}" libxml2-utils
on_virtual_display tests/app/five-trips.sh "$program" "$out"

rm -rf "$out"
mkdir -p "$out"
limit=65
pressed=0

# press <key>...: presses and counts the keys; a key with Ctrl, Alt or Shift counts as one
press() {
    pressed=$((pressed + $#))
    keys "$@"
}

# write <text>: types the text and counts its letters
write() {
    pressed=$((pressed + ${#1}))
    type_text "$1"
}

# fill <text>: replaces the text of the box, which Tab has selected, and goes on
fill() {
    write "$1"
    press Tab
}

# options <letters>...: chooses an option in each group by its letters, "-" for none, and goes on to the next group
options() {
    local letters
    for letters in "$@"; do
        [ "$letters" = - ] || write "$letters"
        press Tab
    done
}

# proposed <letters>: types the letters, takes the first proposal and goes on
proposed() {
    write "$1"
    press Down Tab Tab
}

# tide <start> <end> <action>: chooses tide and action, from the tide at the start on
tide() {
    options "$1" "$2"
    press Tab Tab Tab Tab # times and heights, which the diary lacks
    write "$3"
}

# weather <weather> <direction> <strength>: chooses them on the next page, and goes to the page Comments
weather() {
    press ctrl+Tab
    options "$1" "$2"
    write "$3"
    press ctrl+Tab
}

# begin <way>: starts the program with a copy of the sample log
begin() {
    scripts/make-data-folder.sh --sample "$out/$1"
    start "$out/$1"
    splash
    before=$(records tarno.xml tarno)
    pressed=0
}

await_trips() {
    await_value "trips" $((before + $1)) records tarno.xml tarno
}

# end <way>: exits the program and stores the new trips
end() {
    local first=$((before + 1))
    leave
    xmllint --xpath "/data/tarno[position() >= $first]" "$log/tarno.xml" >"$out/$1.xml"
}

# page_general <date> <start> <end> <place>: types a date and a place in a new trip, whose place is the first one
page_general() {
    press ctrl+n
    window "Tarno Log Entry"
    press ctrl+a
    fill "$1"
    fill "$2"
    fill "$1"
    fill "$3"
    options "$4"
}

# page_comments <target> <caught> <bait> <method>: types the four boxes
page_comments() {
    fill "$1"
    fill "$2"
    fill "$3"
    write "$4"
}

# store <trips>: saves and closes the trip
store() {
    press alt+s
    await_trips "$1"
    press Escape
    window "Tarno Fishing Log"
}

begin typed
page_general 2026-10-03 0530 1000 -
tide rr r g
weather cc n l
page_comments "Bream" "Bream 31, 33 cm" "Mullet strips" "Drifting"
store 1
page_general 2026-10-04 0530 1000 -
tide rr t f
weather o n m
page_comments "Bream" "Tailor 34, 36 cm" "Mullet strips" "Drifting"
picture typed "the second trip, typed"
store 2
page_general 2026-10-05 0530 0900 -
tide b rr s
weather r s s
page_comments "Flathead" "Flathead 41 cm" "Soft plastic - paddle tail" "Drifting"
store 3
page_general 2026-10-10 0630 1200 l
tide - - f
weather c w l
page_comments "Brown trout" "Brown trout 45, 48 cm" "Black Woolly Bugger, size 8" "Fly rod, sinking line"
store 4
page_general 2026-10-11 0600 1030 -
tide r b g
weather cc n l
page_comments "Bream" "Bream 29, 30, 34 cm" "Mullet strips" "Live baiting under a float"
store 5
end typed
typed=$pressed

begin quick
page_general 2026-10-03 0530 1000 -
tide rr r g
weather cc n l
proposed b
fill "Bream 31, 33 cm"
proposed m
write d
press Down Tab
press ctrl+Return
await_trips 1
press Tab Tab Tab Tab Tab
tide rr t f
weather o n m
proposed b
fill "Tailor 34, 36 cm"
proposed m
write d
press Down Tab
picture quick "the second trip, with proposals"
press ctrl+Return
await_trips 2
press Tab Tab Tab
fill 0900
press Tab
tide b rr s
weather r s s
proposed f
fill "Flathead 41 cm"
write pad # finds "Soft plastic - paddle tail"
press Down Tab Tab
write d
press Down Tab
press ctrl+Return
await_trips 3
press Up Up Up Up Tab # four days later than proposed
fill 0630
press Tab
fill 1200
options l
tide - - f
weather c w l
write bro
press Down Tab Tab
fill "Brown trout 45, 48 cm"
write bl
press Down Tab Tab
write sink # finds "Fly rod, sinking line"
press Down Tab
press ctrl+Return
await_trips 4
press Tab
fill 0600
press Tab
fill 1030
options p
tide r b g
weather cc n l
proposed b
fill "Bream 29, 30, 34 cm"
proposed m
write li
press Down Tab
store 5
end quick
quick=$pressed

# for_each <keys>: prints the number of keys for one trip, with one decimal
for_each() {
    printf '%d.%d' $(($1 / 5)) $(($1 % 5 * 2))
}

tell "keys for five trips with everything typed: $typed, $(for_each "$typed") for each"
tell "keys for five trips with Ctrl+Enter and proposals: $quick, $(for_each "$quick") for each"
diff "$out/typed.xml" "$out/quick.xml" || stop "the logs differ"
tell "both logs have the same five trips"
[ "$quick" -le $((5 * limit)) ] || stop "the quick way needs more than $limit keys for a trip"
