#!/usr/bin/env bash
# Adds a location and a trip with an installed Windows program, whose log is in the same folder. Run by package.sh.
#   packaging/windows/first-trip.sh FOLDER OUT    writes screenshots and report.txt to OUT
set -euo pipefail
cd "$(dirname "$0")/../.."
folder=${1:?usage: packaging/windows/first-trip.sh FOLDER OUT}
out=${2:?usage: packaging/windows/first-trip.sh FOLDER OUT}
export TARNO_EXE=$folder/Tarno.exe
program=packaging/windows/tarno-under-wine.sh
source scripts/gui-driver.sh
on_virtual_display packaging/windows/first-trip.sh "$folder" "$out"

mkdir -p "$out"
start
log=$folder
splash
first_trip
leave
