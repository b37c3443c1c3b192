# SPDX-License-Identifier: MIT
"""The program's windows on an X server, and what a user does with them."""

import hashlib
import re
import subprocess

from session import seen_when
from xserver import XServer


def output(*command: str) -> str:
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout


def window_of(process: subprocess.Popen) -> str:
    return shown_window("--pid", str(process.pid))


def shown_windows(*criterion: str) -> list[str]:
    # The search fails where another window vanishes meanwhile.
    command = ("xdotool", "search", "--onlyvisible", *criterion)
    return subprocess.run(command, stdout=subprocess.PIPE, text=True).stdout.split()


def shown_window(*criterion: str) -> str:
    found = seen_when(lambda: shown_windows(*criterion), bool)
    if not found:
        raise TimeoutError(f"No window with {' '.join(criterion)} is shown")
    return found[0]


def geometry_of(window: str) -> tuple[int, int, int, int]:
    told = dict(line.split("=") for line in output("xdotool", "getwindowgeometry", "--shell", window).splitlines())
    return tuple(int(told[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))


class TunedeckWindow:
    scale = 1.0  # pixels of a point

    def __init__(self, window: str) -> None:
        self.id = window
        self.settle()

    def settle(self) -> None:
        """Returns when the program and the window manager have acted upon all that was done before, and upon what each
        asked of the other."""
        with XServer() as server:
            for _ in range(2):
                server.await_program(int(self.id))
                server.await_window_manager()
            server.await_program(int(self.id))

    def geometry(self) -> tuple[int, int, int, int]:
        return geometry_of(self.id)

    def frame(self) -> tuple[int, int, int, int]:
        """The window with the frame that the window manager adds."""
        told = output("xwininfo", "-id", self.id)
        x, y, width, height = (int(re.search(rf"{key}:\s+(-?\d+)", told)[1])
                               for key in ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height"))
        left, right, top, bottom = self.numbers("_NET_FRAME_EXTENTS")
        return x - left, y - top, width + left + right, height + top + bottom

    def numbers(self, property_name: str) -> list[int]:
        return [int(number) for number in re.findall(r"\d+", output("xprop", "-notype", "-id", self.id, property_name)
                                                     .partition("=")[2])]

    def outline(self) -> list[tuple[int, int, int, int]]:
        with XServer() as server:
            return server.outline(int(self.id))

    def limits(self) -> list[str]:
        return re.findall(r"(?:minimum|maximum) size: (\d+ by \d+)", output("xprop", "-id", self.id, "WM_NORMAL_HINTS"))

    def content(self) -> tuple[int, int, int, int]:
        x, y, width, height = self.geometry()
        left, right, top, bottom = self.numbers("_GTK_FRAME_EXTENTS")
        return x + left, y + top, width - left - right, height - top - bottom

    def move_to(self, x: int, y: int) -> tuple[int, int, int, int]:
        """Moves the content, and returns its new place."""
        left, _, top, _ = self.numbers("_GTK_FRAME_EXTENTS")
        output("xdotool", "windowmove", "--sync", self.id, str(x - left), str(y - top))
        self.settle()
        return self.content()

    def minimise(self) -> None:
        output("xdotool", "windowminimize", "--sync", self.id)
        self.settle()

    def restore(self) -> None:
        output("xdotool", "windowmap", "--sync", self.id)
        self.settle()

    def minimise_and_restore(self) -> None:
        self.minimise()
        self.restore()

    def states(self) -> list[str]:
        return re.findall(r"_NET_WM_STATE_\w+", output("xprop", "-notype", "-id", self.id, "_NET_WM_STATE"))

    def on_screen(self, place: tuple[int, int]) -> tuple[int, int]:
        """`place` is one in the content, in points."""
        x, y, _, _ = self.content()
        return x + round(place[0] * self.scale), y + round(place[1] * self.scale)

    def point(self, place: tuple[int, int]) -> None:
        output("xdotool", "mousemove", *map(str, self.on_screen(place)))

    def press(self, place: tuple[int, int]) -> None:
        self.point(place)
        output("xdotool", "mousedown", "1")
        self.settle()

    def drag(self, place: tuple[int, int], by: tuple[int, int]) -> None:
        self.begin_drag(place, by)
        self.end_drag()

    def begin_drag(self, place: tuple[int, int], by: tuple[int, int]) -> None:
        """`place` is in points, `by` in pixels."""
        x, y = self.on_screen(place)
        self.press(place)
        # A drag begins only when the pointer has moved a few pixels, so it moves in steps.
        for step in range(1, 5):
            output("xdotool", "mousemove", str(x + by[0] * step // 4), str(y + by[1] * step // 4))
            self.settle()

    def end_drag(self) -> None:
        output("xdotool", "mouseup", "1")
        self.settle()

    def color(self, place: tuple[int, int]) -> tuple[int, ...]:
        """The color that is seen at a place in the content, in points."""
        with XServer() as server:
            return tuple(reversed(server.picture(*self.on_screen(place), 1, 1)[:3]))

    def picture(self, place: tuple[int, int], size: tuple[int, int]) -> str:
        """A digest of the picture of a part of the content, in points."""
        width, height = (round(points * self.scale) for points in size)
        with XServer() as server:
            return hashlib.sha256(server.picture(*self.on_screen(place), width, height)).hexdigest()
