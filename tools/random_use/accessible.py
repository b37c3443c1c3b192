# SPDX-License-Identifier: MIT
"""Reads a program's windows over the accessibility bus, or works one of their controls, as a screen reader does.

Usage: accessible.py PID read             prints the windows as JSON
       accessible.py PID work ROLE NUMBER  works the control of that role with that number, counted in their order

It is a program of its own because the library that reads the bus stays with the first bus it meets.
"""

import json
import sys
from collections.abc import Iterator

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

# The others change with the time that has passed, or with what has been asked before.
STATES = ("ACTIVE", "CHECKED", "ENABLED", "EXPANDED", "FOCUSABLE", "FOCUSED", "PRESSED", "SELECTED", "SENSITIVE",
          "SHOWING", "VISIBLE")


def children(element: Atspi.Accessible) -> Iterator[Atspi.Accessible]:
    element.clear_cache()
    for index in range(element.get_child_count()):
        if child := element.get_child_at_index(index):
            child.clear_cache()
            yield child


def windows(process: int) -> list[Atspi.Accessible]:
    return [window for application in children(Atspi.get_desktop(0)) if application.get_process_id() == process
            for window in children(application)]


def role_of(element: Atspi.Accessible) -> str:
    """The role's name in Debian 12. Debian 13 calls a push button a button."""
    return "push button" if element.get_role() == Atspi.Role.PUSH_BUTTON else element.get_role_name()


def described(element: Atspi.Accessible) -> dict:
    states = element.get_state_set()
    place = element.get_extents(Atspi.CoordType.SCREEN)
    told = {
        "role": role_of(element), "name": element.get_name(), "description": element.get_description(),
        "states": [name.lower() for name in STATES if states.contains(getattr(Atspi.StateType, name))],
        "place": [place.x, place.y, place.width, place.height],
    }
    if role_of(element) == "slider":
        told["value"] = round(element.get_current_value(), 1)
    return told | {"children": [described(child) for child in children(element)]}


def shown(element: Atspi.Accessible) -> Iterator[Atspi.Accessible]:
    for child in children(element):
        if child.get_state_set().contains(Atspi.StateType.SHOWING):
            yield child
            yield from shown(child)


def work(process: int, role: str, number: int) -> None:
    # Closing the window ends the program.
    found = [element for window in windows(process) for element in shown(window)
             if role_of(element) == role and element.get_name() != "Close"]
    if found:
        control = found[number % len(found)]
        if role == "slider":
            control.set_current_value(number * 7 % 101)
        elif control.get_n_actions():
            control.do_action(0)


def main() -> int:
    Atspi.init()
    process, task, *words = sys.argv[1:]
    if task == "read":
        print(json.dumps([described(window) for window in windows(int(process))]))
        return 0
    try:
        work(int(process), words[0], int(words[1]))
    except GLib.Error as error:
        # The control may go while it is worked: it can close its own window.
        print(error.message)
    return 0


if __name__ == "__main__":
    sys.exit(main())
