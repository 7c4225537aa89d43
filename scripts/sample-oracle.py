"""Writes the figures of the sample log that the statistics show; see statistics-oracle.sh.

Reads the sample log and the pick lists by itself and knows nothing of the program.
"""

import collections
import csv
import datetime
import os
import re
import sys
import unicodedata
import xml.etree.ElementTree as ElementTree

DATA = sys.argv[1]
TESTS = sys.argv[2]

RATINGS = ["Poor", "Fair", "Good", "Best"]
TIDES = ["Top", "Run Out", "Bottom", "Run In"]
ACTIONS = ["Slow", "Fair", "Good", "Hot!"]
MONTHS = ["January", "February", "March", "April", "May", "June", "July", "August", "September", "October",
          "November", "December"]
SEASONS = ["December to February", "March to May", "June to August", "September to November"]
CODES = {
    "Rating": ("Prediction", RATINGS),
    "Tide at the start": ("TideStart", TIDES),
    "Tide at the end": ("TideEnd", TIDES),
    "Weather": ("Weather", ["Stormy", "Rainy", "Showery", "Overcast", "Cloudy", "Few Clouds", "Clear"]),
    "Wind direction": ("WindDir", ["N", "NE", "E", "SE", "S", "SW", "W", "NW"]),
    "Wind strength": ("WindStrength", ["Calm", "Light", "Moderate", "Strong"]),
    "Water clarity": ("WaterClarity", ["Clear", "Cloudy", "Muddy"]),
    "Pressure trend": ("AirPressure", ["Rising", "Falling"]),
}


def folded(text):
    decomposed = unicodedata.normalize("NFKD", text)
    return "".join(c for c in decomposed if not unicodedata.category(c).startswith("M")).casefold()


def records(name):
    root = ElementTree.parse(os.path.join(DATA, "sample", name)).getroot()
    return [{child.tag: child.text or "" for child in record} for record in root]


def pick_list(name):
    with open(os.path.join(DATA, name), encoding="utf-8") as file:
        return [line.strip() for line in file if line.strip()]


def named(line, items):
    """Returns what a line names: the longest item in it, or its part before numbers, commas and brackets."""
    text = folded(line)
    found = []
    for item in items:
        match = re.search(r"(?<!\w)" + re.escape(folded(item)) + r"(?:s|es)?(?!\w)", text)
        if match:
            found.append((-len(folded(item)), match.start(), item))
    if found:
        return min(found)[2]
    subject = re.split(r"[0-9,;(]", line)[0].strip()
    if len(subject) < len(line.strip()):
        subject = re.sub(r"\s+x$", "", subject, flags=re.IGNORECASE).strip()
    return subject or line.strip()


def code(text, words):
    return words.index(words[int(text)]) if text.isdigit() and int(text) < len(words) else None


def date(text):
    try:
        return datetime.date.fromisoformat(text)
    except ValueError:
        return None


def minutes(trip):
    """Returns the duration, or None."""
    times = [re.fullmatch(r"(\d\d?):(\d\d)", trip[field]) for field in ("StartTime", "EndTime")]
    first = date(trip["StartDate"])
    if not first or not all(times):
        return None
    last = date(trip["EndDate"]) or first
    begin, end = (int(match[1]) * 60 + int(match[2]) for match in times)
    total = (last - first).days * 1440 + end - begin
    return total if total >= 0 else None


def figures(trips):
    durations = [minutes(trip) for trip in trips]
    actions = [code(trip["FishAction"], ACTIONS) for trip in trips]
    dates = [trip["StartDate"] for trip in trips if date(trip["StartDate"])]
    return [len(trips),
            sum(d for d in durations if d is not None and d <= 2880),
            sum(d is not None and d > 2880 for d in durations),
            durations.count(None),
            sum(not trip["FishCaught"].replace("~CL~", "").strip() for trip in trips),
            *(actions.count(action) for action in range(4)),
            actions.count(None),
            max(dates, default="")]


def by_rank(trips, rank, name, rest):
    groups = collections.defaultdict(list)
    for trip in trips:
        groups[rank(trip)].append(trip)
    ordered = sorted(key for key in groups if key is not None)
    return [(name(key), groups[key]) for key in ordered] + ([(rest, groups[None])] if None in groups else [])


def by_names(trips, names, rest):
    groups, shown = collections.defaultdict(list), {}
    for trip in trips:
        found = names(trip)
        for name in {folded(name): name for name in reversed(found)}.values():
            groups[folded(name)].append(trip)
        for name in found:
            shown.setdefault(folded(name), name)
        if not found:
            groups[None].append(trip)
    ordered = sorted((key for key in groups if key is not None), key=lambda key: (-len(groups[key]), key.encode()))
    return [(shown[key], groups[key]) for key in ordered] + ([(rest, groups[None])] if None in groups else [])


def lines(trip, field):
    return [line for line in trip[field].split("~CL~") if line.strip()]


def moon(trip):
    if not trip["MoonPhase"]:
        return None
    lit, waning = abs(int(trip["MoonPhase"])), trip["MoonPhase"].startswith("-")
    if lit <= 3:
        return 0
    if lit >= 97:
        return 4
    step = 1 if lit <= 30 else 2 if lit <= 69 else 3
    return 8 - step if waning else step


def groupings(trips, places):
    def month(trip):
        day = date(trip["StartDate"])
        return day and day.month

    def hour(trip):
        return int(trip["StartTime"].split(":")[0]) if ":" in trip["StartTime"] else None

    phases = ["New moon", "Waxing crescent", "First quarter", "Waxing gibbous", "Full moon", "Waning gibbous",
              "Last quarter", "Waning crescent"]
    yield "Month", by_rank(trips, month, lambda m: MONTHS[m - 1], "No date")
    yield "Year", by_rank(trips, lambda t: date(t["StartDate"]) and date(t["StartDate"]).year, str, "No date")
    yield "Season", by_rank(trips, lambda t: month(t) and month(t) % 12 // 3, lambda s: SEASONS[s], "No date")
    yield "Start hour", by_rank(trips, hour, lambda h: f"{h:02}:00 to {h:02}:59", "No time")
    yield "Place", by_names(trips, lambda t: [places[t["LocNo"]]] if t["LocNo"] in places else [], "Unknown place")
    yield "Moon", by_rank(trips, moon, lambda p: phases[p], "Not set")
    for title, (field, words) in CODES.items():
        yield title, by_rank(trips, lambda t: code(t[field], words), lambda c: words[c], "Not set")
    species, baits, methods = pick_list("Species.txt"), pick_list("Bait.txt"), pick_list("Methods.txt")
    for title, field, items in (("Target species", "TargetSpecies", species), ("Species caught", "FishCaught", species),
                                ("Bait", "BaitUsed", baits), ("Method", "Method", methods)):
        yield title, by_names(trips, lambda t: [named(line, items) for line in lines(t, field)], "None recorded")


def checks(trips):
    """Returns the tables of the action by rating, moon, tide and pressure, row by row."""
    def quarter(trip):
        return min(abs(int(trip["MoonPhase"])) // 25, 3) if trip["MoonPhase"] else None

    rows = (("Rating and action", 4, lambda t: code(t["Prediction"], RATINGS)),
            ("Moon and action", 4, quarter),
            ("Tide at the start and action", 4, lambda t: code(t["TideStart"], TIDES)),
            ("Air pressure and action", 2, lambda t: {"1": 0, "0": 1}.get(t["AirPressure"])))
    for title, count, row_of in rows:
        for row in range(count):
            actions = [code(t["FishAction"], ACTIONS) for t in trips if row_of(t) == row]
            yield [title, row, *(actions.count(action) for action in range(4))]


def years(trips, places):
    species = pick_list("Species.txt")
    for year in sorted({date(t["StartDate"]).year for t in trips}, reverse=True):
        started = [t for t in trips if date(t["StartDate"]).year == year]
        days = set()
        for trip in trips:
            day, last = date(trip["StartDate"]), max(date(trip["EndDate"]) or date(trip["StartDate"]),
                                                     date(trip["StartDate"]))
            while day <= last:
                days.add(day)
                day += datetime.timedelta(days=1)
        months = [[0] * 5 for _ in range(12)]
        for trip in started:
            action = code(trip["FishAction"], ACTIONS)
            months[date(trip["StartDate"]).month - 1][4 if action is None else action] += 1
        best = sorted((t for t in started if t["FishAction"] in ("2", "3")),
                      key=lambda t: (t["FishAction"], t["StartDate"]), reverse=True)[:5]
        caught = by_names(started, lambda t: [named(line, species) for line in lines(t, "FishCaught")], "")
        yield [year, *figures(started), sum(day.year == year for day in days),
               len({folded(places[t["LocNo"]]) for t in started}),
               ";".join(" ".join(map(str, month)) for month in months),
               " ".join(t["TarnoNo"] for t in best),
               ";".join(f"{name}={len(found)}" for name, found in caught if name)]


def write(name, heading, rows):
    with open(os.path.join(TESTS, name), "w", newline="", encoding="utf-8") as file:
        table = csv.writer(file, delimiter="\t", lineterminator="\n", quoting=csv.QUOTE_NONE, quotechar=None)
        table.writerow(heading)
        table.writerows(rows)


def main():
    trips = records("tarno.xml")
    places = {place["LocNo"]: place["LocName"].replace("~CL~", " ") for place in records("location.xml")}
    heading = ["trips", "minutes", "long", "untimed", "without_catch", "slow", "fair", "good", "hot",
               "without_action", "last"]
    write("sample-groups.tsv", ["grouping", "name", *heading],
          ([title, name, *figures(found)] for title, groups in groupings(trips, places) for name, found in groups))
    write("sample-checks.tsv", ["title", "row", "slow", "fair", "good", "hot"], checks(trips))
    write("sample-years.tsv", ["year", *heading, "days", "places", "months", "best", "species"], years(trips, places))


main()
