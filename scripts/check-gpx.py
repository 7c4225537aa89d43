"""Exchanges way points with gpsbabel and compares what each of the two reads; see check-gpx.sh."""

import csv
import os
import subprocess
import sys
import xml.etree.ElementTree as xml

PROGRAM, FOLDER = sys.argv[1:]

AWKWARD = ["Pier", "R\u00edo & Co <b>", '"quoted" \'twice\'', "a,b;c", "007", "=1+1", "]]>", "&amp; &#65;", "100 %s\\n",
           "\U0001F41F", "\u5f01\u5929\u5cf6", "e\u0301 and \u00e9", "inner  blanks", "~CL", "x" * 500]
LINES = ["one\ntwo", "one\n\nthree", "~=x"]  # for descriptions
POSITIONS = [(0.0, 0.0), (-33.59, 151.32), (90.0, 179.999999), (-90.0, -179.999999), (0.000001, -0.000001),
             (67.2333, 14.6167)]

GPX = "{http://www.topografix.com/GPX/1/%d}"


def run(*command):
    done = subprocess.run(command, capture_output=True, check=False, text=True)
    if done.returncode != 0 or done.stderr:
        sys.exit(f"{' '.join(command)}: {done.stderr or done.stdout}")


def path_of(name):
    return os.path.join(FOLDER, name)


def new_log(name, *options):
    run("scripts/make-data-folder.sh", *options, path_of(name))
    return path_of(name)


def imported(name, file):
    """Returns an empty log into which the way points of a file were imported."""
    folder = new_log(name)
    run(PROGRAM, "--folder", folder, "--import", file)
    return folder


def babel(source, target, source_format, target_format):
    """Lets gpsbabel convert a file. Returns the path of the new one."""
    run("gpsbabel", "-i", source_format, "-f", source, "-o", target_format, "-F", path_of(target))
    return path_of(target)


def locations(folder):
    """Returns name, position, directions and description of each location of a log."""
    def text(record, name):
        return (record.findtext(name) or "").replace("~CL~", "\n")

    records = xml.parse(os.path.join(folder, "location.xml")).getroot()
    return [(text(record, "LocName").replace("\n", " "), float(record.findtext("LocLatt")),
             float(record.findtext("LocLong")), text(record, "LocDirections"), text(record, "LocDescription"))
            for record in records]


def way_points(file, version):
    """Returns name, position, comment and description of each way point of a GPX file."""
    space = GPX % version
    return [tuple([point.findtext(space + "name") or "", float(point.get("lat")), float(point.get("lon"))] +
                  [point.findtext(space + name) or "" for name in ("cmt", "desc")])
            for point in xml.parse(file).getroot().iter(space + "wpt")]


def table(file):
    """Returns the same of a table of gpsbabel. It has a comma in place of a line break."""
    with open(file, newline="", encoding="utf-8") as lines:
        return [(row["Name"], float(row["Latitude"]), float(row["Longitude"]), row.get("Description") or "",
                 row.get("Notes") or "") for row in csv.DictReader(lines)]


def check(title, expected, found):
    """Ends the program if the way points differ. Positions may differ by a millionth of a degree."""
    wrong = [] if len(expected) == len(found) else [f"{len(expected)} way points became {len(found)}"]
    for old, new in zip(expected, found):
        texts = [0, 3, 4]
        moves = max(abs(old[at] - new[at]) for at in (1, 2))
        if [old[at] for at in texts] != [new[at] for at in texts] or moves > 1e-6:
            wrong.append(f"{old} became {new}")
    if wrong:
        sys.exit("\n".join([f"{title}:", *wrong]))
    print(f"{title}: {len(found)} way points agree")


def awkward_points():
    """Returns way points with each text as name, comment and description."""
    texts = AWKWARD + LINES
    return [(AWKWARD[number % len(AWKWARD)], *POSITIONS[number % len(POSITIONS)], text, texts[-number - 1])
            for number, text in enumerate(texts)]


def write_gpx(points):
    root = xml.Element("gpx", version="1.1", xmlns=(GPX % 1).strip("{}"))
    for name, lat, lon, comment, description in points:
        point = xml.SubElement(root, "wpt", lat=f"{lat:.6f}", lon=f"{lon:.6f}")
        for tag, text in (("name", name), ("cmt", comment), ("desc", description)):
            xml.SubElement(point, tag).text = text
    xml.ElementTree(root).write(path_of("source.gpx"), encoding="utf-8")
    return path_of("source.gpx")


def check_log(folder, expected):
    """Lets gpsbabel read the way points of a log, and the program those that gpsbabel writes."""
    name = os.path.basename(folder)
    exported = path_of(name + ".gpx")
    run(PROGRAM, "--folder", folder, "--export", exported)
    check(f"{name}, table", [(*point[:3], *[text.replace("\n", ",") for text in point[3:]]) for point in expected],
          table(babel(exported, name + ".csv", "gpx", "unicsv,utc=0")))
    for version in (0, 1):
        file = babel(exported, f"{name}-1.{version}.gpx", "gpx", f"gpx,gpxver=1.{version}")
        check(f"{name}, GPX 1.{version}", expected, way_points(file, version))
        check(f"{name}, GPX 1.{version}, imported", expected, locations(imported(f"{name}-{version}", file)))


def check_table(points):
    """Lets the program read what gpsbabel makes of a table."""
    with open(path_of("table.csv"), "w", newline="", encoding="utf-8") as file:
        writer = csv.writer(file)
        writer.writerow(["Name", "Latitude", "Longitude", "Description", "Notes"])
        writer.writerows([[name, f"{lat:.6f}", f"{lon:.6f}", *texts] for name, lat, lon, *texts in points])
    for version in (0, 1):
        file = babel(path_of("table.csv"), f"table-1.{version}.gpx", "unicsv", f"gpx,gpxver=1.{version}")
        check(f"table, GPX 1.{version}, imported", points, locations(imported(f"table-{version}", file)))


def main():
    points = awkward_points()
    awkward = imported("awkward", write_gpx(points))
    check("awkward, imported", points, locations(awkward))
    check_log(awkward, points)
    sample = new_log("sample", "--sample")
    check_log(sample, locations(sample))
    check_table([point for point in points if "\n" not in point[3] + point[4]])
    print("gpsbabel and the program read the same way points")


main()
