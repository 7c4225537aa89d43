#!/usr/bin/env bash
# Creates a data folder from the shipped files.
#   scripts/make-data-folder.sh DIR             an empty log
#   scripts/make-data-folder.sh --sample DIR    the sample log
set -euo pipefail
cd "$(dirname "$0")/.."

sample=
if [ "${1:-}" = --sample ]; then
    sample=yes
    shift
fi
folder=${1:?usage: scripts/make-data-folder.sh [--sample] DIR}
mkdir -p "$folder"
cp data/*.xml data/*.txt "$folder/"
if [ -n "$sample" ]; then
    cp data/sample/*.xml "$folder/"
    mkdir -p "$folder/pictures"
    cp data/sample/pictures/*.png "$folder/pictures/"
fi
