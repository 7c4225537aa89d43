#!/usr/bin/env bash
# Drives the real program by keyboard and mouse on a virtual display: adds trips to a copy of the sample log, finds,
# repeats, deletes and restores some, uses the calendar and the statistics, and exports reports to PDF and RTF,
# times to an iCalendar file, and trips and locations, which it imports again. Backs up the log, collects its pictures
# and restores it. Fails if the data files or what is exported lack something.
# Writes screenshots, the reports and report.txt to build/tour/ or to the folder TARNO_TOUR.
#   scripts/tour.sh PROGRAM
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/packages.sh

program=$(realpath "${1:?usage: scripts/tour.sh PROGRAM}")
out=$(realpath --canonicalize-missing --relative-to=. "${TARNO_TOUR:-build/tour}")
source scripts/gui-driver.sh
need "${run_packages[@]}" "${tour_packages[@]}"
on_virtual_display scripts/tour.sh "$program"

# export_file <name>: exports from the active window to $out and returns to the log
export_file() {
    pop_up keys alt+e
    keys ctrl+a
    type_text "$(typed_path "$PWD/$out/${1%.*}")"
    keys Return
    told "Tarno Fishing Log"
}

# import_file <key> <title> <name>: opens the window that imports the file in $out; the file dialog has the same title
import_file() {
    local dialog
    keys "$1"
    window "$2"
    dialog=$(xdotool getactivewindow)
    type_text "$(typed_path "$PWD/$out/$3")"
    keys Return
    await "the window '$2'" is_another "$2" "$dialog"
}

is_another() {
    is_active "$1" && [ "$(xdotool getactivewindow)" != "$2" ]
}

# told <title>: confirms a message, after which the window with the title is active again
told() {
    window "Tarno"
    keys Return
    await "the window '$1'" activate "$1" # two windows may close at once, and the manager may focus neither
}

rm -rf "$out"
mkdir -p "$out"
scripts/make-data-folder.sh --sample "$out/log"
tell "Tarno's tour, $("$program" --version)"
start "$out/log"
before=$(records tarno.xml tarno)
tell "trips in the sample log: $before"

splash 01-splash "the splash screen over the log"
picture 02-log "the log"
click 60 100
picture 03-sorted "a click on a heading sorts"
pop_up click 300 220 3
picture 04-menu "the pop-up menu"
keys Down Return

window "Tarno Log Entry"
keys ctrl+a
type_text "2026-11-14"
keys Tab
picture 05-new "a new trip, calculated for its date"
keys ctrl+a
type_text "0545"
keys Tab ctrl+a
type_text "2026-11-14"
keys Tab ctrl+a
type_text "10:15"
keys Tab Tab Down space Tab Down space Tab
type_text "04:10"
keys Tab
type_text "10:25"
keys Tab
type_text "0.4 m"
keys Tab
type_text "1.6 m"
keys Tab Down Down space
picture 06-general "page General, filled by keyboard"

keys ctrl+Tab
keys Down Down space
keys Tab Down space Tab Down space Tab space Tab
type_text "18.5"
keys Tab
type_text "17"
keys Tab
type_text "1016"
keys Tab Down space Tab
type_text "Birds working off the point."
picture 07-weather "page Weather"

keys ctrl+Tab
type_text "Snapper"
keys Return
type_text "Bream"
keys Tab alt+Down
keys Down space Down Down space
picture 08-pick-list "page Comments with the list of species open"
keys Escape
picture 09-comments "page Comments"

keys alt+s
await_value "trips after Save" $((before + 1)) records tarno.xml tarno
await_value "start date" 2026-11-14 value tarno.xml tarno 1
await_value "start time, typed as 0545" 05:45 value tarno.xml tarno 3
await_value "low tide" 04:10 value tarno.xml tarno 10
await_value "target species" "Snapper~CL~Bream" value tarno.xml tarno 24
await_value "caught, picked from the list" "Australian salmon~CL~Barramundi" value tarno.xml tarno 28
keys Escape
window "Tarno Fishing Log"
keys End
picture 10-saved "the new trip in the list"

keys Return
window "Tarno Log Entry"
keys ctrl+a
type_text "2026-13-45"
keys alt+s
picture 11-refused "an invalid date is refused"
await_value "start date after an invalid one" 2026-11-14 value tarno.xml tarno 1
keys ctrl+a
type_text "2026-11-14"
keys Tab Escape
window "Tarno Fishing Log"

keys Home
for row in $(seq 21); do keys Down; done
keys Return
window "Tarno Log Entry"
keys ctrl+Tab ctrl+Tab ctrl+Tab
picture 12-picture "page Picture with the picture of a catch"
keys Tab Tab Tab Page_Down Page_Down Page_Down Tab Page_Down Page_Down Tab Page_Down
picture 13-zoomed "the picture zoomed and scrolled"
keys Escape
window "Tarno Fishing Log"

click 172 50
window "Location Listing"
picture 14-locations "the list of locations"
keys Return
window "Location Maintenance"
picture 15-location "one location"
keys Escape
window "Location Listing"

keys alt+p
window "Tarno Locations Listing"
picture 16-preview "the preview of the location report"
export_report PDF locations 17-export
export_report RTF locations
keys Escape
window "Location Listing"
keys Escape
window "Tarno Fishing Log"

click 243 50
window "Log Reporting"
picture 18-builder "the report builder with the default report"
keys alt+p
window "Tarno Fish Log Entry Listing"
picture 19-log-report "the preview of the log report"
export_report PDF log-report
export_report RTF log-report
expect "trips in the PDF" \
    "$(pdftotext -layout "$out/log-report.pdf" - | grep -cE '^ *20[0-9]{2}-[0-9]{2}-[0-9]{2} ')" $((before + 1))
keys Escape
window "Log Reporting"
keys alt+t
window "Customise Report Components"
picture 20-customise "the window that changes headings and widths of fields"
keys Escape
window "Log Reporting"
keys alt+c
window "Tarno Fishing Log"

pop_up keys alt+t
picture 21-trip-menu "the menu Trip with the keys of its commands"
keys Escape Escape

# search <query> <picture> <what it shows>: types the query in the find bar and goes to what is found
search() {
    keys ctrl+f
    type_text "$1"
    keys Return
    picture "$2" "$3"
}
search "-caught:" 22-no-catch "trips without a catch"
search "target:bream caught:tailor" 23-tailor "trips for bream on which tailor were caught"
search "weather:rainy|showery wind:ne" 24-rain "trips with rain and a north-easter"
search "moon:full place:pittwater" 25-full-moon "trips at full moon to one place"
search "caught:kingfish date:2024" 26-kingfish "the big kingfish two years ago"
keys ctrl+shift+r
window "Log Reporting"
keys alt+p
window "Tarno Fish Log Entry Listing"
picture 27-found-report "the preview of the trips that were found"
export_report PDF found
expect "the query in the PDF" "Trips found by: caught:kingfish date:2024" \
    "$(pdftotext "$out/found.pdf" - | grep "Trips found by")"
expect "found trips in the PDF" \
    "$(pdftotext -layout "$out/found.pdf" - | grep -cE '^ *20[0-9]{2}-[0-9]{2}-[0-9]{2} ')" 1
keys Escape
window "Log Reporting"
keys Escape
window "Tarno Fishing Log"

search "caught:snapper picture:" 28-snapper "trips with a snapper and a picture"
keys ctrl+i
picture 29-details "the details of a trip with its picture"
keys ctrl+shift+p
window "Tarno Trip Sheet"
picture 30-trip-sheet "the preview of the trip sheet"
export_report PDF trip-sheet
keys Escape
window "Tarno Fishing Log"
keys ctrl+i Escape

keys End ctrl+d
window "Tarno Log Entry"
picture 31-repeat "a trip like the last one, for today"
keys alt+s
await_value "trips after Repeat" $((before + 2)) records tarno.xml tarno
await_value "target species, repeated" "Snapper~CL~Bream" value tarno.xml tarno 24
keys Escape
window "Tarno Fishing Log"
keys Delete
window "Delete Record?"
keys alt+y
await_value "trips after Delete" $((before + 1)) records tarno.xml tarno
window "Tarno Fishing Log"
picture 32-deleted "the bar that offers to undo the deletion"
keys alt+u
await_value "trips after Undo" $((before + 2)) records tarno.xml tarno
picture 33-undone "the trip is back"

keys ctrl+n
window "Tarno Log Entry"
keys ctrl+a
type_text "2026-11-20"
keys Tab
type_text "0600"
keys Tab ctrl+a
type_text "2026-11-20"
keys ctrl+Return
await_value "trips after Ctrl+Enter" $((before + 3)) records tarno.xml tarno
picture 34-next-day "the next day at the same place and time"
keys Tab
type_text "0615"
keys ctrl+Return
await_value "trips after Ctrl+Enter" $((before + 4)) records tarno.xml tarno
await_value "start date, one day later" 2026-11-21 value tarno.xml tarno 1
await_value "start time" 06:15 value tarno.xml tarno 3
keys Escape
window "Tarno Fishing Log"
picture 35-series "the new trips in the list"

keys ctrl+k
window "Fishing Calendar"
picture 36-calendar "the calendar"
keys Page_Up Right Down
picture 37-day "another day of the month before"
keys Home Tab Right
picture 38-days-like-this "the trips on days like today"
keys alt+m
window "Tarno Fishing Calendar"
picture 39-month-sheet "the preview of the month sheet"
export_report PDF month-sheet
expect "weekdays on the month sheet" 7 \
    "$(pdftotext -layout "$out/month-sheet.pdf" - | grep -oE '\b(Mon|Tues|Wednes|Thurs|Fri|Satur|Sun)day\b' | wc -l)"
keys Escape
window "Fishing Calendar"
keys alt+e
window "Export Major and Minor Times"
picture 40-export-times "the export of major and minor times"
pop_up keys alt+e
keys ctrl+a
type_text "$(typed_path "$PWD/$out/peaks")"
keys Return
window "Tarno"
keys Return
await "the calendar" activate "Fishing Calendar" # two windows close at once, and the manager may focus neither
await_value "first line of the events" BEGIN:VCALENDAR sed -n '1s/\r//p' "$out/peaks.ics"
expect "events, each with a start" "$(grep -c '^BEGIN:VEVENT' "$out/peaks.ics")" "$(grep -c '^DTSTART:' "$out/peaks.ics")"
keys Escape
window "Tarno Fishing Log"

keys ctrl+t
window "Fishing Statistics"
picture 41-statistics "the trips by month"
keys alt+g Down Down Down Down
picture 42-places "the trips by place"
keys alt+r
picture 43-forecast "whether the forecast held"
keys alt+e
picture 44-year "the figures of the year"
keys alt+h
window "Tarno Year Sheet"
picture 45-year-sheet "the preview of the year sheet"
export_report PDF year-sheet
expect "months on the year sheet" 12 \
    "$(pdftotext -layout "$out/year-sheet.pdf" - | grep -cE '^ *(January|February|March|April|May|June|July|August|September|October|November|December) ')"
keys Escape
window "Fishing Statistics"
keys alt+u alt+s
window "Tarno Fishing Log"
picture 46-group "the trips of a group in the log"
keys Escape

keys ctrl+e
window "Export Trips"
picture 47-export-trips "the export of trips"
export_file trips.csv
expect "headings of the exported trips" "$(head -n 1 "$out/trips.csv" | grep -o '"[[:alnum:]]*"' | wc -l)" 42
keys ctrl+g
window "Export Locations"
picture 48-export-locations "the export of locations"
export_file locations.gpx
expect "way points" "$(grep -c '<wpt ' "$out/locations.gpx")" "$(records location.xml location)"
import_file ctrl+shift+e "Import Trips" trips.csv
keys Down
picture 49-import-trips "the import of the same trips, which are already there"
keys alt+m
picture 50-columns "what the columns of the table become"
keys Escape
window "Tarno Fishing Log"
before=$(records location.xml location)
sed -i 's/lat="-33.59"/lat="-33.2"/; s/<name>Pittwater/<name>New Pittwater/' "$out/locations.gpx"
import_file ctrl+shift+g "Import Locations" locations.gpx
picture 51-import-locations "the import of way points, one of which is new"
keys alt+i
told "Tarno Fishing Log"
await_value "locations after the import" $((before + 1)) records location.xml location
keys ctrl+z
await_value "locations after Ctrl+Z" "$before" records location.xml location

leave
expect "automatic back-ups" 1 "$(find "$out/log/backups" -name '*-automatic.zip' | wc -l)"
mv "$out/log/pictures/snapper.png" "$out/outside.png"
sed -i "s|pictures/snapper.png|$PWD/$out/outside.png|" "$out/log/tarno.xml"
start "$out/log"
splash
keys alt+f c
window "Collect Pictures"
picture 52-collect "the collection of a picture outside the log"
keys alt+o
told "Tarno Fishing Log"
await_value "trips with the collected picture" 1 grep -c "<Picture>pictures/outside.png<" "$out/log/tarno.xml"
keys ctrl+b
window "Back Up"
picture 53-back-up "the back-ups"
keys alt+b
told "Back Up"
back_up=$(basename "$(find "$out/log/backups" -name '*[0-9].zip')")
keys Escape
window "Tarno Fishing Log"
before=$(records tarno.xml tarno)
keys Delete
window "Delete Record?"
keys alt+y
await_value "trips after a deletion" $((before - 1)) records tarno.xml tarno
rm "$out/log/pictures/outside.png"
import_file ctrl+shift+b Restore "log/backups/$back_up"
picture 54-restore "the contents of a back-up beside the log"
keys alt+r
window "Replace Log"
keys alt+y
told "Tarno Fishing Log"
await_value "trips after the restore" "$before" records tarno.xml tarno
expect "the restored picture" "$(cksum <"$out/outside.png")" "$(cksum <"$out/log/pictures/outside.png")"

leave
tell "The tour succeeded; the pictures are in $out."
