#!/usr/bin/env bash
# Makes a custom report with the real program: chooses and orders fields, saves and reloads the selection, changes a
# heading and a width, previews the report for one location and exports it. Compares the exported rows with the log.
#   tests/app/log-report.sh PROGRAM OUT
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh

program=$(realpath "${1:?usage: tests/app/log-report.sh PROGRAM OUT}")
out=$(realpath --canonicalize-missing --relative-to=. "${2:?}")
source scripts/gui-driver.sh
need "${run_packages[@]}" "${display_packages[@]}" libxml2-utils poppler-utils unrtf
on_virtual_display tests/app/log-report.sh "$program" "$out"

rm -rf "$out"
mkdir -p "$out"
scripts/make-data-folder.sh --sample "$out/log"

start "$out/log"
splash
keys ctrl+r
window "Log Reporting"

# date and location only, then the location first
keys alt+o End space ctrl+Left ctrl+Left ctrl+Left ctrl+Left ctrl+Left ctrl+Left ctrl+Left
keys Home space Down space ctrl+Left ctrl+Left ctrl+Up
picture 01-chosen "two fields, ordered from the keyboard"
before=$(records Rpt.xml report)
keys alt+l Tab Tab Tab space # "Save"; its mnemonic would act after the next keys
type_text "Where I was"
picture 02-save "the frame for saving"
keys Return
await_value "saved reports" $((before + 1)) records Rpt.xml report
await_value "name" "Where I was" value Rpt.xml report 1
await_value "fields" "LocNo,StartDate" value Rpt.xml report 2
await_value "their numbers" "5,1" value Rpt.xml report 3
picture 03-default "the default report after saving"

# load the saved report; customise heading and width of the location
keys alt+l Tab space Tab End
picture 04-recalled "the saved report"
keys alt+t
window "Customise Report Components"
keys alt+s Home Down Down Down Down alt+h
keys ctrl+a
type_text "Spot & bay"
keys alt+w ctrl+a
type_text "80"
picture 05-customised "another heading and width"
keys Return
window "Log Reporting"
await_value "heading of the location" "Spot & bay" xmllint --xpath 'string(/data/field[5]/*[4])' "$log/field.xml"
await_value "its width" 80 xmllint --xpath 'string(/data/field[5]/*[5])' "$log/field.xml"

# for the second location, in descending order
keys alt+l Home Down Down
keys alt+o Tab Tab Tab space
picture 06-filtered "one location, descending"
keys alt+p
window "Tarno Fish Log Entry Listing"
picture 07-preview "the report"
export_report PDF where
export_report RTF where
keys Escape
window "Log Reporting"

place=$(xmllint --xpath 'string(/data/location[2]/*[2])' "$log/location.xml" | sed 's/~CL~/ /')
trips=$(records tarno.xml "tarno[*[6]='2']")
text=$(pdftotext -layout "$out/where.pdf" - | tr -s ' ')
expect "heading in the PDF" "$(grep -c '^ *Spot & bay From *$' <<<"$text")" \
    "$(pdfinfo "$out/where.pdf" | awk '/^Pages/ { print $2 }')"
expect "trips to that location in the PDF" "$(grep -cF "$place 20" <<<"$text")" "$trips"
expect "trips to that location in the RTF" \
    "$(unrtf --text "$out/where.rtf.pdf" 2>/dev/null | grep -cF "$place")" "$trips"

# delete the report
keys alt+d
window "Remove Custom Report"
keys alt+y
window "Log Reporting"
await_value "saved reports after the deletion" "$before" records Rpt.xml report
keys Escape
window "Tarno Fishing Log"
leave
