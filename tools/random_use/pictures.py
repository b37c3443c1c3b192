# SPDX-License-Identifier: MIT
"""Compares pictures of a screen, and names the controls in which they differ."""

import subprocess
from collections import Counter
from collections.abc import Iterator
from pathlib import Path

from random_use.desktop import SCREEN

WIDTH, HEIGHT = SCREEN
# Text that is drawn again in part is rounded otherwise than text that is drawn at once, and a knob may be some
# hundredths of a pixel off: the program does not correct a position where nobody sees it.
ROUNDING = 6
MOST_NAMED = 20_000  # pixels; of more, only some are looked up


def differing(one: bytes, other: bytes) -> Iterator[tuple[int, int]]:
    """The places of the pixels that differ."""
    row = 3 * WIDTH
    for y in range(HEIGHT):
        first, second = one[y * row:(y + 1) * row], other[y * row:(y + 1) * row]
        if first != second:
            yield from ((x, y) for x in range(WIDTH)
                        if any(abs(first[3 * x + part] - second[3 * x + part]) > ROUNDING for part in range(3)))


def look_alike(one: bytes, other: bytes) -> bool:
    return one == other or next(differing(one, other), None) is None


def shown(element: dict) -> Iterator[dict]:
    yield element
    for child in element["children"]:
        if "showing" in child["states"]:
            yield from shown(child)


def control_at(place: tuple[int, int], windows: list[dict]) -> str:
    """The smallest element there that has a name."""
    found = []
    for window in windows:
        for element in shown(window):
            x, y, width, height = element["place"]
            if element["name"] and x <= place[0] < x + width and y <= place[1] < y + height:
                found.append((width * height, f"{element['role']} {element['name']}"))
    return min(found)[1] if found else "the desktop"


def named_differences(one: bytes, other: bytes, windows: list[dict]) -> list[str]:
    places = list(differing(one, other))
    step = len(places) // MOST_NAMED + 1
    counted = Counter(control_at(place, windows) for place in places[::step])
    return [f"{name} ({count * step} pixels)" for name, count in counted.most_common()]


def write_picture(picture: bytes, path: Path) -> None:
    command = ("convert", "-size", f"{WIDTH}x{HEIGHT}", "-depth", "8", "rgb:-", str(path))
    subprocess.run(command, input=picture, check=True)
