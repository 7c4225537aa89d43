#!/usr/bin/env bash
# Uses the real program through the accessibility bus only, like a screen reader or a switch: adds a trip to the
# sample log, saves it, reads it in the list, and reads a day of the calendar.
#   tests/app/assistive.sh PROGRAM OUT
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh

program=$(realpath "${1:?usage: tests/app/assistive.sh PROGRAM OUT}")
out=$(realpath --canonicalize-missing --relative-to=. "${2:?}")
source scripts/gui-driver.sh
need "${run_packages[@]}" "${display_packages[@]}" "${assistive_packages[@]}" libxml2-utils
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
on_virtual_display dbus-run-session -- tests/app/assistive.sh "$program" "$out"

rm -rf "$out"
mkdir -p "$out"
scripts/make-data-folder.sh --sample "$out/log"
date=2026-11-14
comment="Terns over the reef, read & written without a keyboard."

start "$out/log"
before=$(records tarno.xml tarno)
/usr/bin/python3 -W ignore::DeprecationWarning tests/app/assistive.py "$date" "$comment" | tee -a "$report" ||
    stop "see the last line of $report"
wait "$tarno" || stop "the program exited with an error"
[ ! -e "$log/Tarno.log" ] || stop "errors were logged: $(cat "$log/Tarno.log")"

await_value "trips" $((before + 1)) records tarno.xml tarno
await_value "start date" "$date" value tarno.xml tarno 1
await_value "observations" "$comment" value tarno.xml tarno 31
