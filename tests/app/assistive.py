#!/usr/bin/python3
"""Drives Tarno through the accessibility bus only, like a screen reader or a switch, without keyboard and mouse.

    assistive.py DATE COMMENT

Expects the program to be just started with the sample log. Adds a trip with that date and comment, reads it in
the list, then reads today in the calendar. Exits with an error if a control is missing or does not work.
"""

import re
import sys
import time
from datetime import date

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 180  # seconds
WITH_MANY_CELLS = (Atspi.Role.TREE, Atspi.Role.TREE_TABLE, Atspi.Role.TABLE, Atspi.Role.LIST)


def tell(text):
    print(text, flush=True)


def until(what, look):
    """Calls `look` until it returns something, and returns that. Ignores errors while windows open and close."""
    end = time.monotonic() + PATIENCE
    while True:
        while GLib.MainContext.default().iteration(False):
            pass  # process pending events of the program
        try:
            found = look()
        except GLib.Error:
            found = None
        if found:
            return found
        if time.monotonic() > end:
            sys.exit(f"FAILED: timed out waiting for {what}")
        time.sleep(0.1)


def parts(node):
    """Yields the node and its descendants, except the cells of lists."""
    yield node
    if node.get_role() not in WITH_MANY_CELLS:
        for position in range(node.get_child_count()):
            part = node.get_child_at_index(position)
            if part is not None:
                yield from parts(part)


def shows(node):
    return node.get_state_set().contains(Atspi.StateType.SHOWING)


def program():
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()
    for position in range(desktop.get_child_count()):
        application = desktop.get_child_at_index(position)
        if application is not None and application.get_name().lower() == "tarno":
            application.clear_cache()
            return application
    return None


def windows():
    application = program()
    if application is None:
        return []
    return [application.get_child_at_index(position) for position in range(application.get_child_count())]


def open_window(title):
    return next((w for w in windows() if w is not None and w.get_name() == title and shows(w)), None)


def window(title):
    found = until(f"the window '{title}'", lambda: open_window(title))
    tell(f"window '{title}'")
    return found


def gone(title):
    until(f"the end of the window '{title}'", lambda: program() is not None and open_window(title) is None)


def control(title, role, name):
    """Returns the visible control with that role and name in the window with that title."""

    def look():
        return next((part for part in parts(open_window(title))
                     if part.get_role() == role and part.get_name() == name and shows(part)), None)

    return until(f"'{name}' ({Atspi.role_get_name(role)}) in '{title}'", look)


def act(node, *wanted):
    """Performs the first available of the wanted actions. Ignores a missing reply, because an action that opens a
    window replies only after the window is closed."""
    names = [Atspi.Action.get_action_name(node, number) for number in range(node.get_n_actions())]
    number = next((names.index(name) for name in wanted if name in names), None)
    if number is None:
        sys.exit(f"FAILED: '{node.get_name()}' offers {names} instead of one of {list(wanted)}")
    tell(f"{names[number]} '{node.get_name()}'")
    try:
        node.do_action(number)
    except GLib.Error as error:
        if "Did not receive a reply" not in error.message:
            raise


def press(title, name, role=Atspi.Role.PUSH_BUTTON):
    button = control(title, role, name)
    if not button.get_state_set().contains(Atspi.StateType.ENABLED):
        sys.exit(f"FAILED: '{name}' in '{title}' is not enabled")
    act(button, "Press")


def save(title):
    """Presses "Save" and waits for the end of saving, when the button is disabled."""
    press(title, "Save")
    button = control(title, Atspi.Role.PUSH_BUTTON, "Save")
    until("the end of saving", lambda: not button.get_state_set().contains(Atspi.StateType.ENABLED))


def text_of(node):
    return node.get_text(0, node.get_character_count())


def write(title, name, text):
    """Focuses a box and sets its text. The program checks the text of the focused box."""
    box = control(title, Atspi.Role.TEXT, name)
    act(box, "SetFocus")
    until(f"the focus in '{name}'", lambda: box.get_state_set().contains(Atspi.StateType.FOCUSED))
    if not box.set_text_contents(text):
        sys.exit(f"FAILED: '{name}' cannot be written to")
    until(f"'{text}' in '{name}'", lambda: text_of(box) == text)
    tell(f"'{name}' is now '{text}'")


def labelled(title, role, label):
    """Returns the control without a name that has the given label."""

    def labels(part):
        for relation in part.get_relation_set():
            if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY:
                for target in range(relation.get_n_targets()):
                    yield relation.get_target(target).get_name()

    def look():
        return next((part for part in parts(open_window(title))
                     if part.get_role() == role and shows(part) and label in labels(part)), None)

    return until(f"the control labelled '{label}' in '{title}'", look)


def row_of(title, name, text):
    """Returns the cells of the row whose first cell is `text`, by column heading."""

    def look():
        table = next(part for part in parts(open_window(title)) if part.get_name() == name)
        columns = range(table.get_n_columns())
        for row in reversed(range(table.get_n_rows())):
            if table.get_accessible_at(row, 0).get_name() == text:
                return {table.get_column_header(column).get_name(): table.get_accessible_at(row, column).get_name()
                        for column in columns}
        return None

    return until(f"'{text}' in '{name}'", look)


def await_splash():
    """Waits until the splash screen was shown and closed itself. On a busy machine the splash screen may be missed;
    then waits until the log was active for a while."""
    splash = "About Tarno Fishing Log"
    looks = 0

    def look():
        nonlocal looks
        log = open_window("Tarno Fishing Log")
        looks += log is not None and log.get_state_set().contains(Atspi.StateType.ACTIVE)
        return open_window(splash) or looks > 50

    until("the splash screen", look)
    gone(splash)


def add_trip(day, comment):
    """Adds a trip and returns its location. "Save" also stores the date from the focused box."""
    log, entry = "Tarno Fishing Log", "Tarno Log Entry"
    window(log)
    press(log, "Add")
    window(entry)
    write(entry, "Start date", day)
    save(entry)
    place = labelled(entry, Atspi.Role.COMBO_BOX, "Location:").get_name()
    tell(f"the location is '{place}'")
    press(entry, "Weather", Atspi.Role.PAGE_TAB)
    write(entry, "Other observations", comment)
    save(entry)
    press(entry, "Close")
    gone(entry)
    return place


def read_trip(day, place):
    row = row_of("Tarno Fishing Log", "Log entries", day)
    for heading, text in row.items():
        tell(f"{heading}: {text}")
    wanted = {"From": day, "Location": place}
    wrong = {heading: row.get(heading) for heading, text in wanted.items() if row.get(heading) != text}
    if wrong:
        sys.exit(f"FAILED: the list shows {wrong} instead of {wanted}")


def open_from_menu(menu, item):
    """Chooses an item of the log's menu bar."""
    log = "Tarno Fishing Log"
    act(control(log, Atspi.Role.MENU_ITEM, menu), "ShowMenu", "Press")
    act(control(log, Atspi.Role.MENU_ITEM, item), "Press")


def read_calendar():
    """Opens the calendar and reads the selected day, which is today."""
    calendar = "Fishing Calendar"
    days_before = {date.today()}
    open_from_menu("View", "Calendar")
    window(calendar)
    days = until("the days", lambda: next(part for part in parts(open_window(calendar))
                                          if part.get_role() == Atspi.Role.TABLE and shows(part)))
    cells = (days.get_accessible_at(week, day) for week in range(days.get_n_rows())
             for day in range(days.get_n_columns()))
    text = next(cell.get_name() for cell in cells if cell.get_state_set().contains(Atspi.StateType.SELECTED))
    tell(text)
    possible = [re.escape(f"{day:%A} {day.day} {day:%B %Y}") for day in days_before | {date.today()}]
    if not re.fullmatch(f"({'|'.join(possible)}), rating (Poor|Fair|Good|Best), "
                        r"moon \d+ % (waxing|waning)(, majors? \d\d:\d\d( and \d\d:\d\d)?)?(, \d+ trips?)?", text):
        sys.exit(f"FAILED: the selected day is read as '{text}'")
    press(calendar, "Close")
    gone(calendar)


def leave():
    press("Tarno Fishing Log", "Exit")
    window("Going Fishing Again?")
    press("Going Fishing Again?", "Yes")
    until("the end of the program", lambda: program() is None)


def main(trip_date, comment):
    Atspi.init()
    Atspi.set_timeout(2000, 15000)  # reply timeouts in ms: usual, and while a program starts
    until("the program on the bus", program)
    await_splash()
    place = add_trip(trip_date, comment)
    read_trip(trip_date, place)
    read_calendar()
    leave()


if __name__ == "__main__":
    main(*sys.argv[1:])
