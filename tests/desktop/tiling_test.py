# SPDX-License-Identifier: MIT
"""The window with a window manager that tiles windows, cannot minimise them and ignores their maximum size.

Usage: tiling_test.py BUILD-FOLDER
"""

import contextlib
import re
import subprocess
import sys
import unittest
from collections.abc import Callable
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
from session import (  # noqa: E402
    Build, becomes, demo_player, running, seen_when, session, settled, tiling_window_manager)
from window_test import CONTENT  # noqa: E402
from x11window import TunedeckWindow, output, window_of  # noqa: E402

MINIMISE = (15, 32)  # in the content


class TilingTest(unittest.TestCase):
    build: Build

    def setUp(self) -> None:
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        stack.enter_context(session())
        stack.enter_context(tiling_window_manager())
        stack.enter_context(demo_player(self.build, "--play", "--track", "0"))
        self.window = TunedeckWindow(window_of(stack.enter_context(running(self.build.tunedeck))))

    def assert_becomes(self, expected: object, read: Callable[[], object]) -> None:
        self.assertEqual(seen_when(read, lambda seen: seen == expected), expected)

    def picture(self) -> bytes:
        x, y, width, height = self.window.geometry()
        command = ("import", "-window", "root", "-crop", f"{width}x{height}+{x}+{y}", "-depth", "8", "rgb:-")
        return subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout

    def shape(self) -> list[str]:
        return re.findall(r"Window shape extents: +(\S+)", output("xwininfo", "-shape", "-id", self.window.id))

    def test_it_floats_at_its_own_size_and_place(self) -> None:
        self.assertEqual(self.window.geometry()[2:], CONTENT)
        x, y, width, height = self.window.geometry()
        self.window.drag((width - 2, 30), (300, 0))
        self.assertEqual(self.window.geometry(), (x, y, 550, height))

    def test_it_does_not_fill_the_screen(self) -> None:
        before = self.window.geometry()
        output("i3-msg", "fullscreen enable")
        self.assert_becomes(before, self.window.geometry)
        self.assertNotIn("_NET_WM_STATE_FULLSCREEN", self.window.states())

    def test_the_metal_is_not_stretched_where_the_user_tiles_it_all_the_same(self) -> None:
        output("i3-msg", "floating disable")
        self.assert_becomes(["550x64+0+0"], self.shape)
        self.assertGreater(self.window.geometry()[2], 550)

    def minimise(self) -> None:
        x, y, *_ = self.window.geometry()
        output("xdotool", "mousemove", str(x + MINIMISE[0]), str(y + MINIMISE[1]), "click", "1")
        output("xdotool", "mousemove", "0", "0")
        self.window.settle()

    def test_it_goes_on_where_it_cannot_be_minimised(self) -> None:
        self.minimise()
        before = self.picture()
        self.assertTrue(becomes(lambda: self.picture() != before))

    def test_it_goes_on_where_the_user_left_its_desktop_meanwhile(self) -> None:
        self.minimise()
        for desktop in ("2", "1"):
            output("i3-msg", "workspace", desktop)
            self.window.settle()
        before = self.picture()
        self.assertTrue(becomes(lambda: self.picture() != before))

    def test_it_rests_where_minimised_windows_are_only_said_to_be_hidden(self) -> None:
        self.minimise()
        # Window managers that keep minimised windows mapped, to show previews of them, do this.
        output("xprop", "-id", self.window.id, "-format", "_NET_WM_STATE", "32a",
               "-set", "_NET_WM_STATE", "_NET_WM_STATE_HIDDEN")
        # The clock of a window that does not rest changes every second.
        settled(self.picture, 2)


if __name__ == "__main__":
    TilingTest.build = Build(Path(sys.argv.pop(1)))
    unittest.main()
