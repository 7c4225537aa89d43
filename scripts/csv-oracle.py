"""Reads the CSV files of the tests with Python's own reader and writes what it reads beside them, as JSON.

Run this after adding a file, or after a change of what the program writes:
    /usr/bin/python3 scripts/csv-oracle.py tests/exchange/data/csv
"""

import csv
import json
import os
import sys

SEPARATORS = {"semicolons.csv": ";", "tabs.csv": "\t"}

folder = sys.argv[1]
for name in sorted(os.listdir(folder)):
    if name.endswith(".csv"):
        path = os.path.join(folder, name)
        with open(path, newline="", encoding="utf-8-sig") as file:
            rows = list(csv.reader(file, delimiter=SEPARATORS.get(name, ","), strict=True))
        with open(path[:-4] + ".json", "w", encoding="ascii", newline="\n") as file:
            file.write("[\n" + ",\n".join(json.dumps(row) for row in rows) + "\n]\n")
        print(f"{name}: {len(rows)} rows")
