#!/usr/bin/env bash
# Runs each command of the real program without a display: exit status, output, and what it leaves in the folder.
#   tests/app/command-line.sh PROGRAM OUT
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh

program=$(realpath "${1:?usage: tests/app/command-line.sh PROGRAM OUT}")
out=$(realpath --canonicalize-missing --relative-to=. "${2:?}")
need "${run_packages[@]}" poppler-utils

rm -rf "$out"
mkdir -p "$out/home"
scripts/make-data-folder.sh --sample "$out/log"
scripts/make-data-folder.sh "$out/other"
cp -r "$out/log/pictures" "$out/other/" # a table has only the names of pictures
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
export LC_ALL=C.UTF-8 HOME=$PWD/$out/home XDG_CONFIG_HOME=$PWD/$out/home XDG_DATA_HOME=$PWD/$out/home

# tarno <expected status> <argument>...: runs the program; its output is then in $out/stdout and $out/stderr
tarno() {
    local wanted=$1 status=0
    shift
    "$program" "$@" >"$out/stdout" 2>"$out/stderr" || status=$?
    [ "$status" -eq "$wanted" ] || fail "tarno $*: exit status $status instead of $wanted: $(cat "$out/stderr")"
    if [ "$wanted" -eq 0 ]; then
        [ ! -s "$out/stderr" ] || fail "tarno $*: unexpected message: $(cat "$out/stderr")"
    else
        [ -s "$out/stderr" ] || fail "tarno $*: no message"
    fi
}

# says <file> <text>: checks that the last output contains a line
says() {
    grep -qxF -- "$2" "$out/$1" || fail "no line \"$2\" in: $(cat "$out/$1")"
}

# contains <PDF> <text>
contains() {
    local text
    text=$(pdftotext -layout "$1" -)
    [[ "$text" == *"$2"* ]] || fail "$1 does not contain \"$2\""
}

# state <folder>: prints names, times and checksums of everything in it
state() {
    (cd "$1" && find . -printf '%p %m %T@ %s\n' | sort && find . -type f -exec sha256sum {} + | sort)
}

tarno 0 --help
says stdout "Usage: tarno [--folder DIR] [COMMAND]"
tarno 0 --version
for option in --help --version; do
    status=0
    "$program" "$option" >/dev/full 2>"$out/stderr" || status=$?
    [ "$status" -eq 1 ] || fail "tarno $option on a full device: exit status $status instead of 1"
    says stderr "The output could not be written completely."
done
tarno 2 trips.csv
says stderr 'The argument "trips.csv" does not belong to an option.'
tarno 2 --lst
says stderr "The option --lst does not exist."
tarno 1 --folder "$out/missing"
says stderr "The folder does not exist: $out/missing"
tarno 1 --folder "$out/missing" --list
tarno 1 --folder "$out/missing" --check

before=$(state "$out/log")
tarno 0 --folder "$out/log" --list
[ "$(wc -l <"$out/stdout")" -eq 72 ] || fail "--list does not print 72 trips"
cp "$out/stdout" "$out/list"
tarno 0 --folder "$out/log" --list "place:eucumbene"
[ "$(cut -f 2 "$out/stdout" | sort -u)" = "Lake Eucumbene, Old Adaminaby" ] || fail "--list ignores the query"
tarno 2 --folder "$out/log" --list "fish:bream"
tarno 0 --folder "$out/log" --forecast pittwater --from 2026-11-14 --days 30
[ "$(wc -l <"$out/stdout")" -eq 30 ] || fail "--forecast does not print 30 days"
tarno 0 --folder "$out/log" --check
tarno 0 --folder "$out/log" --export - --find "date:2025"
tarno 1 --folder "$out/log" --export "$out/none.csv" --find "nosuchfish"
[ ! -e "$out/none.csv" ] || fail "--export has written a table without trips"
tarno 0 --folder "$out/log" --export "$out/trips.csv"
tarno 0 --folder "$out/log" --export "$out/places.gpx"
tarno 2 --folder "$out/log" --export "$out/places.gpx" --find "date:2025"
tarno 0 --folder "$out/log" --report default --output "$out/report.pdf"
contains "$out/report.pdf" "Tarno Fishing Log - Log Reporting"
tarno 0 --folder "$out/log" --report "what bit on what" --location pittwater --output "$out/report.rtf"
tarno 0 --folder "$out/log" --calendar pittwater --month 2026-11 --output "$out/month.pdf"
contains "$out/month.pdf" "November 2026, Pittwater, Barrenjoey"
tarno 0 --folder "$out/log" --calendar pittwater --month 2026-11 --output "$out/month.ics"
[ "$(state "$out/log")" = "$before" ] || fail "a command that only reads has changed the log"

# the exported trips, imported into an empty log, are the same trips
empty=$(state "$out/other")
tarno 0 --folder "$out/other" --import "$out/trips.csv" --dry-run
[ "$(state "$out/other")" = "$empty" ] || fail "--dry-run has changed the log"
tarno 0 --folder "$out/other" --import "$out/trips.csv"
says stdout "Imported 72 trips and 6 locations."
for input in - /dev/stdin; do
    tarno 0 --folder "$out/other" --import "$input" < <(cat "$out/trips.csv") # a pipe
    says stdout "0 new trips, 72 already there, 0 refused"
done
cmp "$out/log/tarno.xml" "$out/other/tarno.xml" || fail "the imported trips differ"
tarno 0 --folder "$out/other" --import "$out/places.gpx"
says stdout "0 new locations, 6 already there"
tarno 0 --folder "$out/other" --list
cmp "$out/stdout" "$out/list" || fail "the lists differ"
[ -z "$(find "$out/other" -iname '*.log' -o -name '*tarno-tmp' -o -name '*kept*')" ] || fail "files were left"

# a back-up, restored into a folder that does not exist yet, is the same log
cp -r "$out/log" "$out/original"
tarno 0 --folder "$out/log" --backup "$out/log.zip"
says stdout "Backed up the log with 3 pictures to $out/log.zip"
[ "$(state "$out/log")" = "$before" ] || fail "--backup has changed the log"
tarno 0 --folder "$out/new/log" --restore "$out/log.zip"
says stdout "Restored 72 trips, 6 locations and 3 pictures to $PWD/$out/new/log"
diff -r "$out/original" "$out/new/log" || fail "the restored log differs"
tarno 1 --folder "$out/new/log" --restore "$out/list"
says stderr "This is not a zip archive."
tarno 2 --folder "$out/log" --backup "$out/log.xml"
rm -r "$out/original"

# a damaged file
sed -i 's/<TarnoNo>2</<TarnoNo>two</' "$out/other/tarno.xml"
damaged=$(state "$out/other")
tarno 1 --folder "$out/other" --check
says stdout "Checked 72 trips and 6 locations: 1 problem"
[ "$(state "$out/other")" = "$damaged" ] || fail "--check has changed the log"
[ -z "$(find "$out/home" -type f)" ] || fail "files were left in the home folder"
printf 'every command works without a display\n'
