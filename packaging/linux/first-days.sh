#!/usr/bin/env bash
# What a new user does with the installed program: run by test.sh in the clean root, as that user.
set -euo pipefail
cd "$HOME"
export XDG_RUNTIME_DIR=$HOME/trial

program=/usr/bin/tarno
out=trial
source "$(dirname "$0")/hand.sh"
mkdir -p "$out"
chmod 700 "$out"
on_virtual_display bash "$0"
[ ! -w "$program" ] || stop "the program could be overwritten by this user"

tell "first day, $("$program" --version)"
start
window "Where Your Log Is Stored"
picture 01-where "where the log lies"
keys Return
splash
picture 02-empty "an empty log"
for file in /usr/share/tarno/*.*; do
    cmp "$file" "$log/$(basename "$file")" || stop "$file is not in the user's folder"
done
tell "the user's folder holds all files that ship"

first_trip
leave

tell "second day"
start
splash
picture 05-again "the log with its first trip"
leave

tell "the sample log"
cp -r /usr/share/tarno/sample "$out/sample"
start "$out/sample"
splash
picture 06-sample "the sample log"
for row in $(seq 21); do keys Down; done
keys Return
window "Tarno Log Entry"
keys ctrl+Tab ctrl+Tab ctrl+Tab
picture 07-picture "the picture of a catch"
keys Escape
window "Tarno Fishing Log"
leave
