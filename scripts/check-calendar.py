"""Compares the events of an iCalendar file with a table of forecasts; see check-calendar.sh.

The rule for daylight saving time is written here independently: from the last Sunday of March to that of October
in the north, the rest of the year in the south, on the whole of both changeover days but for the hours before the
change to it and after the change back.
"""

import calendar
import csv
import datetime
import sys

from icalendar import Calendar


def last_sunday(year, month):
    last = calendar.monthrange(year, month)[1]
    date = datetime.date(year, month, last)
    return date - datetime.timedelta(days=(date.weekday() + 1) % 7)


def hours_ahead(row, date, time):
    """Returns how far the clocks of the place are ahead of GMT at a time of its forecast."""
    ahead = float(row["gmt"])
    if row["dst"] != "1":
        return ahead
    march, october = last_sunday(date.year, 3), last_sunday(date.year, 10)
    if float(row["lat"]) >= 0:
        start, end, applies = march, october, march <= date <= october
    else:
        start, end, applies = october, march, date <= march or date >= october
    if (date == start and time < "01:00") or (date == end and time >= "03:00"):
        return ahead
    return ahead + 1 if applies else ahead


def expected(table):
    """Returns the expected start of each event by its UID."""
    starts = {}
    with open(table, newline="", encoding="utf-8") as lines:
        for number, row in enumerate(csv.DictReader(lines, delimiter="\t"), 1):
            date = datetime.date.fromisoformat(row["date"])
            for box, name in (("txtMajor1", "major-1"), ("txtMajor2", "major-2"),
                              ("txtMinor1", "minor-1"), ("txtMinor2", "minor-2")):
                time = row[box]
                if time == ":":
                    continue
                local = datetime.datetime.combine(date, datetime.time()) + datetime.timedelta(
                    hours=int(time[:2]), minutes=int(time[3:]))
                start = local - datetime.timedelta(hours=hours_ahead(row, date, time))
                starts[f"{date:%Y%m%d}-{name}-place-{number}@tarno"] = start
    return starts


def main():
    starts = expected(sys.argv[1])
    with open(sys.argv[2], "rb") as file:
        events = Calendar.from_ical(file.read()).walk("VEVENT")
    found = {}
    for event in events:
        number = str(event["UID"]).split("-place-")[1].split("@")[0]
        assert str(event["LOCATION"]) == f'Place; no. {number}, "R\u00edo"', event["LOCATION"]
        assert event["DTSTART"].dt.utcoffset() == datetime.timedelta(0), event["UID"]
        assert "DTEND" not in event and "DURATION" not in event, event["UID"]
        found[str(event["UID"])] = event["DTSTART"].dt.replace(tzinfo=None)
    assert len(found) == len(events), "a UID is repeated"
    wrong = {uid for uid in starts.keys() | found.keys() if starts.get(uid) != found.get(uid)}
    for uid in sorted(wrong):
        print(uid, "expected", starts.get(uid), "found", found.get(uid))
    if wrong:
        sys.exit(f"{len(wrong)} of {len(starts)} events differ")
    print(f"{len(found)} events agree with the forecasts")


main()
