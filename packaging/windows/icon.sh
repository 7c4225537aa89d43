#!/usr/bin/env bash
# Creates packaging/windows/tarno.ico, the icon of the Windows program in all sizes that Windows uses, from
# data/icons/tarno.svg. Run it again after changing the drawing.
set -euo pipefail
cd "$(dirname "$0")/../.."
source scripts/packages.sh
need icoutils librsvg2-bin

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
pictures=()
for width in 16 20 24 32 40 48 64 128; do
    rsvg-convert --width=$width --output "$scratch/$width.png" data/icons/tarno.svg
    pictures+=("$scratch/$width.png")
done
rsvg-convert --width=256 --output "$scratch/256.png" data/icons/tarno.svg
icotool --create --output packaging/windows/tarno.ico "${pictures[@]}" --raw="$scratch/256.png"
say "created packaging/windows/tarno.ico"
