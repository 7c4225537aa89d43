#!/usr/bin/env bash
# Uses the installed program as a new user does. Run by test.sh as an ordinary user in the clean root.
set -euo pipefail
cd "$HOME"
export XDG_RUNTIME_DIR=$HOME/trial

program=/usr/bin/tarno
out=trial
source "$(dirname "$0")/gui-driver.sh"
mkdir -p "$out"
chmod 700 "$out"
on_virtual_display bash "$0"
[ ! -w "$program" ] || stop "this user can overwrite the program"

tell "first day, $("$program" --version)"
start
window "Where Your Log Is Stored"
picture 01-where "the notice that names the folder of the log"
keys Return
splash
picture 02-empty "an empty log"
for file in /usr/share/tarno/*.*; do
    cmp "$file" "$log/$(basename "$file")" || stop "$file was not copied to the user's folder"
done
tell "the user's folder contains all shipped files"

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
