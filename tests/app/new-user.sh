#!/usr/bin/env bash
# The first steps of a new user with the real program: "Add" is disabled without a location; after a location is
# added, "Add" works, and the sun and moon data of the first trip match the reference data.
#   tests/app/new-user.sh PROGRAM OUT
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh

program=$(realpath "${1:?usage: tests/app/new-user.sh PROGRAM OUT}")
out=$(realpath --canonicalize-missing --relative-to=. "${2:?}")
source scripts/gui-driver.sh
need "${run_packages[@]}" "${display_packages[@]}" libxml2-utils
on_virtual_display tests/app/new-user.sh "$program" "$out"

rm -rf "$out"
mkdir -p "$out"
scripts/make-data-folder.sh "$out/log"

# a location in the southern hemisphere with daylight saving time
IFS=$'\t' read -r latitude longitude gmt dst date sunRise sunSet moonRise moonSet percent waxing _ prediction \
    major1 major2 minor1 minor2 _ phase < <(sed 's/\t\t/\t \t/g' tests/astro/data/forecast.tsv |
        awk -F'\t' '$1 < -20 && $4 == 1 && $5 > "2000" && $5 < "2030"')
tell "the reference day: $date at $latitude, $longitude"

start "$out/log"
splash
keys ctrl+n
picture 01-empty "an empty log"

keys ctrl+l
window "Location Listing" # not the editor: Ctrl+N does nothing without a location
keys alt+a
window "Location Maintenance"
type_text "Granny's Beach"
keys Return
type_text "north end"
keys Tab
type_text "Sand & weed"
keys Tab
type_text "Over the hill"
keys Tab space Tab
type_text "x$latitude"
keys Tab
type_text "${longitude}y"
keys Tab
type_text "$gmt"
keys Tab
[ "$dst" = 0 ] || keys space
picture 02-location "the first location"
keys alt+s
await_value "locations" 1 records location.xml location
await_value "name" "Granny's Beach~CL~north end" value location.xml location 1
await_value "latitude, without the letter typed" "$latitude" value location.xml location 5
await_value "longitude, without the letter typed" "$longitude" value location.xml location 6
await_value "hours from GMT" "$gmt" value location.xml location 7
await_value "daylight saving" "$dst" value location.xml location 8
keys Escape
window "Location Listing"
picture 03-locations "the list of locations"
keys Escape
window "Tarno Fishing Log"

keys ctrl+n
window "Tarno Log Entry"
keys ctrl+a
type_text "$date"
keys Tab
picture 04-trip "the first trip"
keys alt+s
await_value "trips" 1 records tarno.xml tarno
await_value "start date" "$date" value tarno.xml tarno 1
await_value "location" 1 value tarno.xml tarno 5
for pair in "12=$sunRise" "13=$sunSet" "14=$moonRise" "15=$moonSet" "16=$phase" "17=$prediction" \
    "32=$major1" "33=$major2" "34=$minor1" "35=$minor2"; do
    await_value "calculated value ${pair%%=*}" "$(xargs <<<"${pair#*=}")" value tarno.xml tarno "${pair%%=*}"
done
keys Escape
window "Tarno Fishing Log"
picture 05-log "the log with its first trip"
leave
