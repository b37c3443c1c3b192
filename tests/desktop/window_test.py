# SPDX-License-Identifier: MIT
"""The window as a window manager, a compositor and a user's mouse know it.

Usage: window_test.py BUILD-FOLDER
"""

import contextlib
import re
import subprocess
import sys
import time
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
from session import Build, compositor, demo_player, running, session, window_manager  # noqa: E402

CONTENT = (450, 64)
SHADOW = (14, 14, 9, 19)  # left, right, top, bottom
METAL, DISPLAY, FORWARD = (128, 4), (300, 20), (106, 21)  # in the content


def output(*command: str) -> str:
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout


class TunedeckWindow:
    def __init__(self, process: subprocess.Popen) -> None:
        found = output("xdotool", "search", "--sync", "--onlyvisible", "--pid", str(process.pid))
        self.id = found.split()[0]

    def geometry(self) -> tuple[int, int, int, int]:
        told = dict(line.split("=") for line in output("xdotool", "getwindowgeometry", "--shell", self.id).splitlines())
        return tuple(int(told[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))

    def numbers(self, property_name: str) -> list[int]:
        return [int(number) for number in re.findall(r"\d+", output("xprop", "-notype", "-id", self.id, property_name)
                                                     .partition("=")[2])]

    def limits(self) -> list[str]:
        return re.findall(r"(?:minimum|maximum) size: (\d+ by \d+)", output("xprop", "-id", self.id, "WM_NORMAL_HINTS"))

    def content(self) -> tuple[int, int, int, int]:
        x, y, width, height = self.geometry()
        left, right, top, bottom = self.numbers("_GTK_FRAME_EXTENTS")
        return x + left, y + top, width - left - right, height - top - bottom

    def minimise_and_restore(self) -> None:
        output("xdotool", "windowminimize", self.id)
        time.sleep(0.3)
        output("xdotool", "windowmap", "--sync", self.id)
        time.sleep(0.5)

    def states(self) -> list[str]:
        return re.findall(r"_NET_WM_STATE_\w+", output("xprop", "-notype", "-id", self.id, "_NET_WM_STATE"))

    def drag(self, place: tuple[int, int], by: tuple[int, int]) -> None:
        x, y, _, _ = self.content()
        output("xdotool", "mousemove", str(x + place[0]), str(y + place[1]))
        output("xdotool", "mousedown", "1")
        # In steps: a drag begins only beyond a few pixels.
        for step in range(1, 5):
            output("xdotool", "mousemove", str(x + place[0] + by[0] * step // 4), str(y + place[1] + by[1] * step // 4))
            time.sleep(0.05)
        output("xdotool", "mouseup", "1")
        time.sleep(0.2)


class WindowTest(unittest.TestCase):
    build: Build

    def setUp(self) -> None:
        self.stack = contextlib.ExitStack()
        self.addCleanup(self.stack.close)
        self.home = self.stack.enter_context(session())
        self.stack.enter_context(window_manager())
        self.stack.enter_context(demo_player(self.build, "--play", "--track", "0"))

    def keep_above(self) -> None:
        settings = self.home / ".config/tunedeck"
        settings.mkdir(parents=True, exist_ok=True)
        (settings / "tunedeck.conf").write_text("[General]\nKeepMainWindowAboveAllOtherWindows=true\n")

    def open_window(self) -> TunedeckWindow:
        window = TunedeckWindow(self.stack.enter_context(running(self.build.tunedeck)))
        time.sleep(0.5)
        return window

    def test_with_a_compositor_the_shadow_is_in_margins_that_the_window_manager_knows_of(self) -> None:
        with compositor():
            window = self.open_window()
            self.assertEqual(tuple(window.numbers("_GTK_FRAME_EXTENTS")), SHADOW)
            self.assertEqual(window.content()[2:], CONTENT)
            self.assertEqual(window.limits(), ["378 by 92", "578 by 92"])

    def test_without_a_compositor_there_are_no_margins(self) -> None:
        window = self.open_window()
        self.assertEqual(window.geometry()[2:], CONTENT)
        self.assertEqual(window.numbers("_GTK_FRAME_EXTENTS"), [0, 0, 0, 0])
        self.assertEqual(window.limits(), ["350 by 64", "550 by 64"])

    def test_the_content_stays_where_it_is_when_the_compositor_ends(self) -> None:
        with compositor():
            window = self.open_window()
            before = window.content()
        window.minimise_and_restore()
        self.assertEqual(window.numbers("_GTK_FRAME_EXTENTS"), [0, 0, 0, 0])
        self.assertEqual(window.content(), before)

    def test_the_metal_and_the_display_drag_the_window(self) -> None:
        window = self.open_window()
        for place in (METAL, DISPLAY):
            x, y, width, height = window.content()
            window.drag(place, (60, 40))
            # Less the way until it was known to be a drag.
            self.assertIn(window.content()[0], range(x + 40, x + 61))
            self.assertIn(window.content()[1], range(y + 25, y + 41))
            self.assertEqual(window.content()[2:], (width, height))

    def test_a_button_that_is_held_does_not(self) -> None:
        window = self.open_window()
        window.drag(METAL, (8, 8))
        before = window.content()
        window.drag(FORWARD, (60, 40))
        self.assertEqual(window.content(), before)

    def test_the_sides_resize_it_within_its_limits(self) -> None:
        window = self.open_window()
        x, y, width, height = window.content()
        window.drag((width - 2, 30), (300, 30))
        self.assertEqual(window.content(), (x, y, 550, height))
        window.drag((548, 30), (-400, 0))
        self.assertEqual(window.content(), (x, y, 350, height))

    def test_the_drawer_opens_and_closes_below_the_player(self) -> None:
        for surroundings in (compositor(), contextlib.nullcontext()):
            with surroundings, contextlib.ExitStack() as stack:
                window = TunedeckWindow(stack.enter_context(running(self.build.tunedeck)))
                time.sleep(0.5)
                x, y, width, height = window.content()
                for expected in (height + 60, height):
                    output("xdotool", "key", "--window", window.id, "ctrl+l")
                    time.sleep(0.8)
                    self.assertEqual(window.content(), (x, y, width, expected))

    def test_it_is_kept_above_from_the_start_and_after_being_minimised(self) -> None:
        self.keep_above()
        with compositor():
            window = self.open_window()
            self.assertIn("_NET_WM_STATE_ABOVE", window.states())
            self.assertEqual(tuple(window.numbers("_GTK_FRAME_EXTENTS")), SHADOW)
            window.minimise_and_restore()
            self.assertIn("_NET_WM_STATE_ABOVE", window.states())
            self.assertEqual(tuple(window.numbers("_GTK_FRAME_EXTENTS")), SHADOW)

    def test_a_change_of_the_setting_keeps_it_above_at_once(self) -> None:
        window = self.open_window()
        self.assertNotIn("_NET_WM_STATE_ABOVE", window.states())
        self.keep_above()
        deadline = time.monotonic() + 5
        while "_NET_WM_STATE_ABOVE" not in window.states() and time.monotonic() < deadline:
            time.sleep(0.05)
        self.assertIn("_NET_WM_STATE_ABOVE", window.states())

    def test_a_second_start_brings_back_the_minimised_window_and_ends(self) -> None:
        window = self.open_window()
        output("xdotool", "windowminimize", "--sync", window.id)
        self.assertIn("_NET_WM_STATE_HIDDEN", window.states())
        self.assertEqual(subprocess.run([self.build.tunedeck], timeout=20, check=False).returncode, 0)
        time.sleep(0.5)
        self.assertNotIn("_NET_WM_STATE_HIDDEN", window.states())


if __name__ == "__main__":
    WindowTest.build = Build(Path(sys.argv.pop(1)))
    unittest.main()
