# SPDX-License-Identifier: MIT
"""Where the window opens, tested with each window manager.

Usage: place_test.py BUILD-FOLDER openbox|metacity|xfwm4|kwin_x11
"""

import contextlib
import os
import shutil
import subprocess
import sys
import unittest
from collections.abc import Iterator
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
from session import Build, becomes, compositor, running, settled  # noqa: E402
from window_test import CONTENT, SCREEN, DesktopTest  # noqa: E402
from xserver import SUBSTRUCTURE_NOTIFY, SUBSTRUCTURE_REDIRECT, XServer  # noqa: E402
from x11window import TunedeckWindow, output, window_of  # noqa: E402

SKIPPED = 77
DRAWER = 60  # its height
PANEL = 50  # its height
STARTS = 3  # with each scale
BY_USER = 2  # rather than by a program
SCREEN_TEXT = f"0 0 {SCREEN[0]} {SCREEN[1]} screen"

Frame = tuple[int, int, int, int]  # x, y, width, height


class PlaceTest(DesktopTest):
    @property
    def settings(self) -> Path:
        return self.home / ".config/tunedeck/tunedeck.conf"

    def saved(self, key: str) -> str:
        lines = self.settings.read_text().splitlines() if self.settings.exists() else []
        values = dict(line.split("=", 1) for line in lines if "=" in line)
        return values.get(key, "")

    def set_place(self, place: str) -> None:
        self.settings.parent.mkdir(parents=True, exist_ok=True)
        self.settings.write_text(f"[General]\nPlayerWindowPlace={place}\n")

    @contextlib.contextmanager
    def window(self, **variables: str) -> Iterator[tuple[TunedeckWindow, subprocess.Popen]]:
        with running(self.build.tunedeck, env=os.environ | variables) as process:
            window = TunedeckWindow(window_of(process))
            settled(window.content)
            yield window, process

    def place_at_start(self, **variables: str) -> Frame:
        with self.window(**variables) as (window, _):
            return window.content()

    def quit(self, window: TunedeckWindow, process: subprocess.Popen) -> None:
        self.assert_active_window_becomes(window.id)
        output("xdotool", "key", "ctrl+q")
        self.assertEqual(process.wait(10), 0)

    def test_it_opens_where_it_was_and_as_wide(self) -> None:
        for surroundings in (contextlib.nullcontext(), compositor()):
            with surroundings:
                with self.window() as (window, process):
                    window.move_to(333, 217)
                    window.drag((window.content()[2] - 2, 30), (-40, 0))
                    before = window.content()
                    self.assertNotEqual(before[2], CONTENT[0])
                    self.quit(window, process)
                self.assertEqual(self.place_at_start(), before)

    def test_it_opens_in_the_corner_of_the_screen_too(self) -> None:
        for surroundings in (contextlib.nullcontext(), compositor()):
            with surroundings:
                with self.window() as (window, process):
                    before = window.move_to(0, 0)
                    self.quit(window, process)
                self.assertEqual(self.place_at_start(), before)

    def test_it_does_so_after_a_crash(self) -> None:
        with self.window() as (window, process):
            before = window.move_to(333, 217)
            self.assertTrue(becomes(lambda: self.saved("PlayerWindowPlace").startswith("333 217 ")))
            process.kill()
            process.wait()
        self.assertEqual(self.place_at_start(), before)

    def test_a_crash_right_after_a_move_loses_no_more_than_the_move(self) -> None:
        self.set_place(f"100 90 {SCREEN_TEXT}")
        with self.window() as (window, process):
            window.move_to(333, 217)
            process.kill()
            process.wait()
        self.assertIn(self.place_at_start()[:2], ((100, 90), (333, 217)))

    def test_a_user_who_closes_it_right_after_a_move_finds_it_there(self) -> None:
        with self.window() as (window, process):
            before = window.move_to(333, 217)
            with XServer() as server:
                server.send(server.root, int(window.id), "_NET_CLOSE_WINDOW", 0, BY_USER,
                            events=SUBSTRUCTURE_NOTIFY | SUBSTRUCTURE_REDIRECT)
            self.assertEqual(process.wait(10), 0)
        self.assertEqual(self.place_at_start(), before)

    def test_a_session_that_ends_right_after_a_move_leaves_it_there(self) -> None:
        with self.window() as (window, process):
            before = window.move_to(333, 217)
            process.terminate()
            self.assertEqual(process.wait(10), 0)
        self.assertEqual(self.place_at_start(), before)

    def test_no_start_moves_it(self) -> None:
        for scale in (1, 1.5, 2):
            for surroundings in (contextlib.nullcontext(), compositor()):
                with self.subTest(scale=scale), surroundings:
                    self.set_place(f"121 83 {SCREEN_TEXT}")
                    first = self.place_at_start(QT_SCALE_FACTOR=str(scale))
                    for place, expected in zip(first, (121 * scale, 83 * scale)):
                        self.assertAlmostEqual(place, expected, delta=1)
                    for _ in range(STARTS):
                        with self.window(QT_SCALE_FACTOR=str(scale)) as (window, process):
                            self.assertEqual(window.content(), first)
                            # A place that the window manager has changed is saved.
                            self.quit(window, process)

    def test_after_a_push_for_the_drawer_it_opens_where_it_was_before(self) -> None:
        with self.window() as (window, process):
            before = window.move_to(300, SCREEN[1] - CONTENT[1] - 10)
            output("xdotool", "key", "--window", window.id, "ctrl+l")
            self.assert_becomes(CONTENT[1] + DRAWER, lambda: window.content()[3])
            self.assertLess(settled(window.content)[1], before[1])
            self.quit(window, process)
        self.assertEqual(self.place_at_start(), before)

    def test_where_its_screen_is_gone_it_opens_on_this_one(self) -> None:
        self.set_place("2000 300 1280 0 1280 720 other")
        self.assertEqual(self.place_at_start(), (SCREEN[0] - CONTENT[0], 300, *CONTENT))

    def test_it_opens_on_the_second_screen_as_long_as_there_is_one(self) -> None:
        if self.window_manager == "xfwm4":
            self.skipTest("Xfwm4 ignores screens without an output, and Xvfb has one output.")
        half = SCREEN[0] // 2
        for name, left, of in (("left", 0, "screen"), ("right", half, "none")):
            output("xrandr", "--setmonitor", name, f"{half}/200x{SCREEN[1]}/200+{left}+0", of)
        with self.window() as (window, process):
            before = window.move_to(half + 30, 301)
            self.assertTrue(becomes(lambda: self.saved("PlayerWindowPlace").startswith(f"{half + 30} 301 {half} 0 ")))
            process.kill()
            process.wait()
        self.assertEqual(self.place_at_start(), before)
        output("xrandr", "--delmonitor", "right")
        self.assertEqual(self.place_at_start(), (half - CONTENT[0], 301, *CONTENT))

    def test_it_opens_beside_a_panel_that_would_hide_it(self) -> None:
        panel = window_of(self.stack.enter_context(running(self.build.bare_window)))
        strut = f"0,0,{PANEL},0,0,0,0,0,0,{SCREEN[0] - 1},0,0"
        for name, value in (("_NET_WM_STRUT_PARTIAL", strut), ("_NET_WM_STRUT", f"0,0,{PANEL},0")):
            output("xprop", "-id", panel, "-format", name, "32c", "-set", name, value)
        self.assert_becomes(f"0, {PANEL}, {SCREEN[0]}, {SCREEN[1] - PANEL}", lambda: ", ".join(
            output("xprop", "-root", "-notype", "_NET_WORKAREA").partition("=")[2].split(", ")[:4]).strip())
        self.set_place(f"300 0 {SCREEN_TEXT}")
        self.assertEqual(self.place_at_start(), (300, PANEL, *CONTENT))


if __name__ == "__main__":
    DesktopTest.build = Build(Path(sys.argv.pop(1)))
    DesktopTest.window_manager = sys.argv.pop(1)
    if not shutil.which(DesktopTest.window_manager):
        print(f"{DesktopTest.window_manager} is not installed.")
        sys.exit(SKIPPED)
    unittest.main()
