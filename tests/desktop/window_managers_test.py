# SPDX-License-Identifier: MIT
"""What window managers do differently, tested with each of them.

Usage: window_managers_test.py BUILD-FOLDER openbox|metacity|xfwm4|kwin_x11
"""

import contextlib
import shutil
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
from session import Build, compositor, running, settled  # noqa: E402
from window_test import (  # noqa: E402
    CONTENT, FORWARD, METAL, SCREEN, DesktopTest, TunedeckWindow, output, shown_window, window_of)

SKIPPED = 77
DRAWER = 60  # its height
# At METAL; the last one while another window is active and this one is kept above.
ACTIVE_METAL, INACTIVE_METAL, KEPT_METAL = (199, 199, 199), (240, 240, 240), (203, 203, 203)


class MetalTest(DesktopTest):
    """Window managers grab the keyboard while they move a window and while they switch windows."""

    def test_the_metal_keeps_its_colors_while_the_window_is_moved_or_resized(self) -> None:
        window = self.open_window()
        self.assert_becomes(ACTIVE_METAL, lambda: window.color(METAL))
        for place, by in ((METAL, (60, 40)), ((448, 30), (-40, 0))):
            window.begin_drag(place, by)
            # Qt waits a while before it believes that the keyboard is gone.
            self.assertEqual(settled(lambda: window.color(METAL)), ACTIVE_METAL)
            window.end_drag()
            self.assertEqual(settled(lambda: window.color(METAL)), ACTIVE_METAL)

    def test_the_metal_becomes_pale_where_the_user_turns_to_another_window(self) -> None:
        window = self.open_window()
        self.use_other_window()
        self.assert_becomes(INACTIVE_METAL, lambda: window.color(METAL))
        for expected in (ACTIVE_METAL, INACTIVE_METAL):
            output("xdotool", "keydown", "alt", "key", "Tab", "keyup", "alt")
            self.assert_becomes(expected, lambda: window.color(METAL))

    def test_the_metal_is_dark_as_soon_as_the_window_is_kept_above(self) -> None:
        window = self.open_window()
        self.use_other_window()
        self.assert_becomes(INACTIVE_METAL, lambda: window.color(METAL))
        self.keep_above()
        self.assert_becomes(KEPT_METAL, lambda: window.color(METAL))

    def test_a_button_that_was_clicked_looks_as_before(self) -> None:
        window = self.open_window()
        self.assert_becomes(ACTIVE_METAL, lambda: window.color(METAL))
        before = settled(lambda: window.color(FORWARD))
        x, y, _, _ = window.content()
        output("xdotool", "mousemove", str(x + FORWARD[0]), str(y + FORWARD[1]), "mousedown", "1")
        window.settle()
        self.assertNotEqual(window.color(FORWARD), before)
        output("xdotool", "mouseup", "1")
        self.assert_becomes(before, lambda: window.color(FORWARD))


class LowerEdgeTest(DesktopTest):
    """Window managers push a window up that would grow beyond the screen."""

    def test_a_window_that_was_pushed_up_for_the_drawer_goes_back(self) -> None:
        for surroundings in (contextlib.nullcontext(), compositor()):
            with surroundings, running(self.build.tunedeck) as process:
                window = TunedeckWindow(window_of(process))
                before = window.move_to(300, SCREEN[1] - CONTENT[1] - 10)
                self.toggle_drawer(window)
                self.assert_becomes(CONTENT[1] + DRAWER, lambda: window.content()[3])
                self.assertLess(settled(window.content)[1], before[1])
                self.toggle_drawer(window)
                self.assert_becomes(before, window.content)
                self.assertEqual(settled(window.content), before)

    def test_a_window_that_was_moved_while_the_drawer_was_open_stays(self) -> None:
        window = self.open_window()
        window.move_to(300, SCREEN[1] - CONTENT[1] - 10)
        self.toggle_drawer(window)
        self.assert_becomes(CONTENT[1] + DRAWER, lambda: window.content()[3])
        x, y, _, _ = settled(window.content)
        window.drag(METAL, (-100, -40))
        moved = window.content()
        self.assertNotEqual(moved[:2], (x, y))
        self.toggle_drawer(window)
        self.assert_becomes((*moved[:2], *CONTENT), window.content)
        self.assertEqual(settled(window.content), (*moved[:2], *CONTENT))

    def toggle_drawer(self, window: TunedeckWindow) -> None:
        output("xdotool", "key", "--window", window.id, "ctrl+l")


class PreferencesTest(DesktopTest):
    def open_preferences(self, window: TunedeckWindow) -> TunedeckWindow:
        self.assert_active_window_becomes(window.id)
        output("xdotool", "key", "ctrl+comma")
        return TunedeckWindow(shown_window("--name", "^General$"))

    def test_the_preferences_open_where_they_were_at_every_start(self) -> None:
        places = set()
        for _ in range(3):
            with running(self.build.tunedeck) as process:
                window = TunedeckWindow(window_of(process))
                preferences = self.open_preferences(window)
                preferences.settle()
                places.add(preferences.frame())
                self.assert_active_window_becomes(preferences.id)
                output("xdotool", "key", "Escape")
                self.assert_active_window_becomes(window.id)
                output("xdotool", "key", "ctrl+q")
                process.wait(10)
        self.assertEqual(len(places), 1, places)

    def test_the_preferences_open_below_the_player_with_their_title_bar(self) -> None:
        window = self.open_window()
        _, y, _, height = window.content()
        _, top, _, _ = self.open_preferences(window).frame()
        self.assertGreaterEqual(top, y + height + DRAWER)

    def test_the_programs_keys_work_in_the_preferences(self) -> None:
        with running(self.build.tunedeck) as process:
            preferences = self.open_preferences(TunedeckWindow(window_of(process)))
            self.assert_active_window_becomes(preferences.id)
            output("xdotool", "key", "ctrl+q")
            self.assertEqual(process.wait(10), 0)


if __name__ == "__main__":
    DesktopTest.build = Build(Path(sys.argv.pop(1)))
    DesktopTest.window_manager = sys.argv.pop(1)
    if not shutil.which(DesktopTest.window_manager):
        print(f"{DesktopTest.window_manager} is not installed.")
        sys.exit(SKIPPED)
    unittest.main()
