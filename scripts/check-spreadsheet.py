"""Passes the tables of two logs through LibreOffice and compares what comes back; see check-spreadsheet.sh.

The tables are read with Python's csv, the files of LibreOffice and of the logs as XML.
"""

import csv
import os
import subprocess
import sys
import xml.etree.ElementTree as xml

PROGRAM, FOLDER = sys.argv[1:]

# What a spreadsheet could take for something else, or damage.
AWKWARD = ["", " ", "  two blanks  ", "a\tb", 'say "hot"', '"', "'apostrophe", "a,b;c", "a~CL~b", "~CL~", "two\nlines",
           "007", "0", "-0", "-1", "+1", "1.0", "18.50", "18,5", "1,234", "1.234", "-33.590", "0.125", "1e5", "1/2",
           "3-4", "123456789012345678", "=1+1", "=A1", "@x", "#N/A", "$3", "45%", "TRUE", "true", "no", "Oct 5",
           "5 October 2024", "2024-10-05", "2024-02-30", "5/10/2024", "12/31/2024", "31.12.2024", "06:00", "6:00",
           "00:00", "12:30", "24:00", "25:00", "6:00 PM", "06:00:00", ":", "never", "Run In", "2", "9", "-45", "100",
           "~=x", "\U0001F41F R\u00edo", "\u5f01\u5929\u5cf6"]

# How LibreOffice reads a table: separator, quotation mark, UTF-8, first line, columns, language, whether quoted texts
# are texts, whether to detect special numbers.
KEEPS_TEXTS = "44,34,76,1,,1033,true,false"
CHANGES_TEXTS = {
    "defaults, English": "44,34,76,1,,1033,false,false",
    "defaults, German": "44,34,76,1,,1031,false,false",
    "special numbers, English": "44,34,76,1,,1033,false,true",
    "special numbers, German": "44,34,76,1,,1031,false,true",
}
LOCALES = {"1033": "en_US.UTF-8", "1031": "de_DE.UTF-8"}

PLACE = ["LocNo", "Location", "Latitude", "Longitude", "GMT", "DST"]  # in a table
PLACE_VALUES = ["LocNo", "LocName", "LocLatt", "LocLong", "LocGMT", "LocDST"]  # in location.xml


def tarno(folder, *arguments, locale="C.UTF-8"):
    """Runs the program. Returns its messages."""
    done = subprocess.run([PROGRAM, "--folder", folder, *arguments], capture_output=True, check=False, text=True,
                          env={**os.environ, "LC_ALL": locale})
    if done.returncode not in (0, 1):
        sys.exit(f"tarno {arguments}: {done.stderr}")
    return done.stderr


def new_log(name, *options):
    folder = os.path.join(FOLDER, name)
    subprocess.run(["scripts/make-data-folder.sh", *options, folder], check=True)
    return folder


def records(folder, file):
    """Returns the values of the records in a file of a log."""
    root = xml.parse(os.path.join(folder, file)).getroot()
    return [{child.tag: child.text or "" for child in record} for record in root]


def contents(folder):
    """Returns the values of each trip, and those of its location that a table has."""
    places = {place["LocNo"]: [place[name] for name in PLACE_VALUES] for place in records(folder, "location.xml")}
    return [(list(trip.values()), places.get(trip["LocNo"])) for trip in records(folder, "tarno.xml")]


def write_table(name, rows):
    path = os.path.join(FOLDER, name + ".csv")
    with open(path, "w", newline="", encoding="utf-8") as file:
        csv.writer(file, quoting=csv.QUOTE_ALL).writerows(rows)
    return path


def read_table(path, separator=","):
    with open(path, newline="", encoding="utf-8-sig") as file:
        return list(csv.reader(file, delimiter=separator))


def office(source, form, out, tokens):
    """Lets LibreOffice convert a table that it reads with these settings. Returns the path of the new file."""
    folder = os.path.join(FOLDER, out)
    profile = "-env:UserInstallation=file://" + os.path.join(os.path.abspath(FOLDER), "profile")
    done = subprocess.run(["soffice", profile, "--headless", "--norestore", "--infilter=CSV:" + tokens,
                           "--convert-to", form, "--outdir", folder, source],
                          capture_output=True, check=False, text=True)
    stem = os.path.splitext(os.path.basename(source))[0]
    path = os.path.join(folder, stem + "." + form.split(":")[0])
    if not os.path.exists(path):
        sys.exit(f"LibreOffice did not convert {source}: {done.stderr}")
    return path


def text_of(node):
    """Returns the text of a paragraph of a cell."""
    name = node.tag.split("}")[1]
    special = {"s": " " * int(node.get(node.tag[:-1] + "c", 1)), "tab": "\t", "line-break": "\n"}
    text = special.get(name, node.text or "")
    return text + "".join(text_of(child) + (child.tail or "") for child in node)


def read_sheet(path, width):
    """Returns the texts of the cells of a spreadsheet in the form of a single XML file."""
    table = "{urn:oasis:names:tc:opendocument:xmlns:table:1.0}"
    paragraph = "{urn:oasis:names:tc:opendocument:xmlns:text:1.0}p"
    rows = []
    for row in xml.parse(path).getroot().iter(table + "table-row"):
        cells = []
        for cell in row.iter(table + "table-cell"):
            text = "\n".join(text_of(node) for node in cell.findall(paragraph))
            cells += [text] * min(int(cell.get(table + "number-columns-repeated", 1)), width - len(cells))
        if any(cells):
            rows += [cells] * int(row.get(table + "number-rows-repeated", 1))
    return rows


def make_awkward_log():
    """Returns a log with a trip for each awkward text, which is in all fields of the trip and of its location."""
    headings = read_table(exported(new_log("headings")))[0]
    keys = {"TarnoNo", "LocNo"}
    rows = [[str(number) if heading in keys else "~=" + text for heading in headings]
            for number, text in enumerate(AWKWARD, 1)]
    folder = new_log("awkward")
    assert not tarno(folder, "--import", write_table("awkward-source", [headings, *rows]), "--add-places")
    stored = contents(folder)
    assert len(stored) == len(AWKWARD)
    for (trip, _), text in zip(stored, AWKWARD):
        assert trip[1:5] + trip[6:] == [text] * (len(trip) - 2), (trip, text)
    return folder


def exported(folder):
    path = folder + ".csv"
    assert not tarno(folder, "--export", path)
    return path


def differences(before, after):
    """Returns heading, text before and text after of each cell that differs."""
    assert len(before) == len(after), f"{len(before)} rows became {len(after)}"
    return [(heading, old, new) for row, other in zip(before, after)
            for heading, old, new in zip(before[0], row, other) if old != new]


def saved_by_office(table, separator, out, tokens):
    """Returns the path of a table that LibreOffice has saved with texts in quotation marks, as cells are shown."""
    return office(table, f"csv:Text - txt - csv (StarCalc):{ord(separator)},34,76,1,,0,true,true,false", out, tokens)


def check_texts_are_kept(folder):
    """Returns the number of cells that LibreOffice and the program have read like Python."""
    table = exported(folder)
    before = read_table(table)
    name = os.path.basename(folder)
    sheet = office(table, "fods", name + "-kept", KEEPS_TEXTS)
    wrong = differences(before, read_sheet(sheet, len(before[0])))
    for separator in ",;":
        out = f"{name}-kept-{ord(separator)}"
        saved = saved_by_office(table, separator, out, KEEPS_TEXTS)
        wrong += differences(before, read_table(saved, separator))
        copy = new_log(out)
        wrong += [("refused", "", line) for line in tarno(copy, "--import", saved, "--add-places").splitlines()]
        wrong += [("record", old, new) for old, new in zip(contents(folder), contents(copy), strict=True) if old != new]
    for heading, old, new in wrong:
        print(f"  {heading}: {old!r} became {new!r}")
    if wrong:
        sys.exit(f"{name}: {len(wrong)} differences, although texts should be kept")
    return sum(len(row) for row in before)


def stored_cells(name, cells, locale="C.UTF-8"):
    """Returns what the program stores for each pair of heading and cell, or why it refuses the cell."""
    folder = new_log(name)
    headings = list(dict.fromkeys(["TarnoNo", "LocNo", "Location"] + [heading for heading, _ in cells]))
    rows = [[{heading: cell}.get(column, {"Location": f"Place {number}"}.get(column, ""))
             if column not in ("TarnoNo", "LocNo") else str(number) for column in headings]
            for number, (heading, cell) in enumerate(cells, 1)]
    path = write_table(name, [headings, *rows])
    refusals = [line.split(" is refused: ", 1)[1]
                for line in tarno(folder, "--import", path, "--add-places", locale=locale).splitlines()]
    trips = {trip[0]: (trip, place) for trip, place in contents(folder)}
    fields = [child.tag for child in xml.parse(os.path.join(folder, "tarnoblank.xml")).getroot()[0]]
    stored = []
    for number, (heading, _) in enumerate(cells, 1):
        if str(number) not in trips:
            stored.append((None, refusals.pop(0)))
            continue
        trip, place = trips[str(number)]
        values = dict(zip(PLACE, place)) if heading in PLACE else dict(zip(fields, trip))
        stored.append((values[heading], None))
    return stored


def is_same_number(text, other):
    try:
        return float(text) == float(other)
    except ValueError:
        return False


def outcome(change, old, new):
    """Returns what the program does with a cell that LibreOffice has changed."""
    _, refusal = new
    return ("refused" if refusal else "read as before" if old == new else
            "another text for the same number" if is_same_number(*change[1:]) else "another text")


def report_changes(folder, title, tokens):
    """Prints the cells that LibreOffice changes with these settings. Returns what the program does with them."""
    name = f"{os.path.basename(folder)}-{title.replace(', ', '-').replace(' ', '-')}"
    before = read_table(exported(folder))
    all_changes = differences(before, read_table(saved_by_office(exported(folder), ",", name, tokens)))
    changes = sorted(set(all_changes))
    old = stored_cells(name + "-old", [(heading, text) for heading, text, _ in changes])
    new = stored_cells(name + "-new", [(heading, text) for heading, _, text in changes], LOCALES[tokens.split(",")[5]])
    found = {}
    for change, before_it, after_it in zip(changes, old, new):
        heading, text, other = change
        cells = found.setdefault(outcome(change, before_it, after_it), {})
        cells.setdefault((text, other), []).append(heading)
    print(f"{os.path.basename(folder)} log, {title}: {len(all_changes)} of {sum(map(len, before))} cells change")
    for result, cells in found.items():
        shown = list(cells.items())[:3 if result == "read as before" else None]
        print(f"  {result} ({len(cells)}{', for example' if len(shown) < len(cells) else ''}):")
        for (text, other), headings in shown:
            print(f"    {text!r} -> {other!r}: {', '.join(headings[:3])}{' ...' if len(headings) > 3 else ''}")
    return set(found)


def main():
    sample = new_log("sample", "--sample")
    awkward = make_awkward_log()
    cells = sum(check_texts_are_kept(folder) for folder in (sample, awkward))
    for title, tokens in CHANGES_TEXTS.items():
        lost = report_changes(sample, title, tokens) - {"read as before", "another text for the same number"}
        if lost:
            sys.exit(f"{title}: values of the sample log are lost")
        report_changes(awkward, title, tokens)
    print(f"{cells} cells come back unchanged if quoted fields are imported as text. "
          "With other settings, the values of the sample log mean the same")


main()
