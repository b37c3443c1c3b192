# SPDX-License-Identifier: MIT
"""What window managers do differently, tested with each of them, with a compositor or without, at several scales.

Usage: window_managers_test.py BUILD-FOLDER openbox|metacity|xfwm4|kwin_x11 plain|composited SCALE [TEST...]

Exits with 77 if the window manager is not installed.
"""

import contextlib
import os
import re
import shutil
import subprocess
import sys
import unittest
from collections.abc import Callable
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
from session import Build, becomes, demo_player, running, session, settled, window_manager  # noqa: E402
from window_test import (  # noqa: E402
    CONTENT, DISPLAY, DRAWER, FORWARD, METAL, SCREEN, VOLUME, DesktopTest, StartupMessages, server_time)
from x11window import TunedeckWindow, output, shown_window, shown_windows, window_of  # noqa: E402

SKIPPED = 77
BACK, PROGRESS = (42, 21), (250, 42)
PROGRESS_ROW = (174, 34), (208, 16)  # its place and size
LEFT_OF_DISPLAY = (128, 64)
BUTTON = 26  # the width and the height of back and forward
# The grey at METAL. Scales and compositors change it a little.
LOOKS = {199: "active", 203: "kept above while another window is active", 240: "inactive"}
ACTIVE, KEPT, INACTIVE = LOOKS.values()
OTHER_WINDOWS = (("ctrl+comma", "^General$"), ("F1", "Help"))
# Opens the first window of the menu's first submenu, where the pointer is on the metal.
ABOUT = ("click", "3", "sleep", "0.1", "key", "--delay", "40", "Down", "Right", "Return")
PLAYER = ("--dest", "org.mpris.MediaPlayer2.tunedeckdemo", "--object-path", "/org/mpris/MediaPlayer2")


def look(window: TunedeckWindow) -> str:
    _, green, _ = seen = window.color(METAL)
    nearest = min(LOOKS, key=lambda grey: abs(grey - green))
    return LOOKS[nearest] if abs(nearest - green) < 3 else str(seen)


def is_shown(name: str) -> bool:
    return bool(shown_windows("--name", name))


class WindowManagerTest(DesktopTest):
    """The desktop and the player are the same ones for all tests of a class, and the program starts for each."""

    window_manager = "openbox"
    composited = False
    scale = 1.0

    @classmethod
    def setUpClass(cls) -> None:
        cls.home = cls.enterClassContext(session(size=cls.scaled(SCREEN)))
        cls.enterClassContext(window_manager(cls.window_manager, cls.composited))
        cls.enterClassContext(demo_player(cls.build, "--play", "--track", "0"))

    @classmethod
    def scaled(cls, points: tuple[int, int]) -> tuple[int, int]:
        return round(points[0] * cls.scale), round(points[1] * cls.scale)

    def setUp(self) -> None:
        self.stack = self.enterContext(contextlib.ExitStack())
        (self.home / ".config/tunedeck/tunedeck.conf").unlink(missing_ok=True)
        output("xdotool", "mousemove", "5", "5")

    def is_same_point(self, first: tuple[int, ...], second: tuple[int, ...]) -> bool:
        """Window managers move by pixels, and the program by points."""
        return all(abs(one - other) < self.scale for one, other in zip(first, second, strict=True))

    def tell_player(self, *lines: str) -> None:
        for line in lines:
            subprocess.run([self.build.demo_player, "--tell", line], check=True)

    def player_value(self, name: str) -> str:
        return output("gdbus", "call", "--session", *PLAYER, "--method", "org.freedesktop.DBus.Properties.Get",
                      "org.mpris.MediaPlayer2.Player", name)

    def position(self) -> int:
        """The player's, in microseconds."""
        return int(re.search(r"\bint64 (\d+)", self.player_value("Position"))[1])

    def title(self) -> str:
        return re.search(r"'xesam:title': <[\"'](.*?)[\"']>", self.player_value("Metadata"))[1]

    def assert_stays(self, expected: object, read: Callable[[], object]) -> None:
        """Also while the window manager or the player may still do something."""
        self.assert_becomes(expected, read)
        self.assertEqual(settled(read), expected)


class MetalTest(WindowManagerTest):
    """Window managers grab the keyboard while they move a window and while they switch windows."""

    def test_the_metal_keeps_its_colors_while_the_window_is_moved_or_resized(self) -> None:
        window = self.open_window()
        self.assert_becomes(ACTIVE, lambda: look(window))
        for place, by in ((METAL, (60, 40)), ((448, 30), (-40, 0))):
            window.begin_drag(place, by)
            # Qt waits a while before it believes that the keyboard is gone.
            self.assertEqual(settled(lambda: look(window)), ACTIVE)
            window.end_drag()
            self.assertEqual(settled(lambda: look(window)), ACTIVE)

    def test_the_metal_becomes_pale_where_the_user_turns_to_another_window(self) -> None:
        window = self.open_window()
        self.use_other_window()
        self.assert_becomes(INACTIVE, lambda: look(window))
        if self.window_manager == "kwin_x11" and output("kwin_x11", "--version").startswith("kwin 6"):
            self.skipTest("KWin 6 has no keys of its own for another window.")
        for expected in (ACTIVE, INACTIVE):
            window.settle()
            self.switch_windows()
            self.assert_becomes(expected, lambda: look(window))

    def switch_windows(self) -> None:
        """Presses the keys again if nothing happens: xfwm4 takes none while it is still about the ones before."""
        before = self.active_window()
        for _ in range(3):
            output("xdotool", "keydown", "alt", "key", "Tab", "keyup", "alt")
            if becomes(lambda: self.active_window() not in (0, before), seconds=10):
                return
        self.fail("The window manager does not switch to another window.")

    def test_the_metal_is_dark_as_soon_as_the_window_is_kept_above(self) -> None:
        window = self.open_window()
        self.use_other_window()
        self.assert_becomes(INACTIVE, lambda: look(window))
        self.keep_above()
        self.assert_becomes(KEPT, lambda: look(window))
        subprocess.run([self.build.tunedeck, "--action", "keep-above"], timeout=20, check=True)
        self.assert_becomes(INACTIVE, lambda: look(window))


class ControlsTest(WindowManagerTest):
    def setUp(self) -> None:
        super().setUp()
        self.tell_player("cannot CanSeek off", "right all", "track 1", "pause", "seek 0")
        self.window = self.open_window()
        self.assert_becomes(ACTIVE, lambda: look(self.window))

    def test_a_button_that_was_clicked_looks_as_before(self) -> None:
        for place in (BACK, FORWARD):
            # Its upper half, which its tooltip does not cover.
            upper_half = (place[0] - BUTTON // 2, place[1] - BUTTON // 2), (BUTTON, BUTTON // 2)

            def picture(part: tuple[tuple[int, int], tuple[int, int]] = upper_half) -> str:
                return self.window.picture(*part)

            before = settled(picture)
            self.window.press(place)
            self.assertTrue(becomes(lambda: picture() != before))
            output("xdotool", "mouseup", "1")
            self.assert_stays(before, picture)

    def test_a_seek_ends_though_a_menu_gets_the_release(self) -> None:
        ways = (("mousedown", "3", "mouseup", "1", "mouseup", "3", "key", "Escape"),
                ("mousedown", "3", "mouseup", "3", "key", "Escape", "mouseup", "1"))
        for way in ways:
            before = settled(self.position)
            self.window.press(FORWARD)
            self.assertTrue(becomes(lambda: self.position() > before))
            output("xdotool", *way)
            # A seek that nothing ends goes on to the end of the track, which is minutes away.
            self.assertLess(settled(self.position), before + 60_000_000)

    def test_a_progress_bar_that_is_disabled_does_not_drag_the_window(self) -> None:
        self.tell_player("cannot CanSeek on")
        before = self.window.content()
        settled(lambda: self.window.picture(*PROGRESS_ROW))
        self.window.drag(PROGRESS, (60, 40))
        self.assertEqual(settled(self.window.content), before)


class LowerEdgeTest(WindowManagerTest):
    """Most window managers push a window up that would grow beyond the screen. KWin does not."""

    def setUp(self) -> None:
        super().setUp()
        self.window = self.open_window()
        x, y = self.scaled((300, SCREEN[1] - CONTENT[1] - 10))
        self.before = self.window.move_to(x, y)

    def open_drawer(self) -> None:
        self.toggle_drawer()
        _, height = self.scaled((0, CONTENT[1] + DRAWER))
        # The height is a whole number of points.
        self.assertTrue(becomes(lambda: abs(self.window.content()[3] - height) <= 1))

    def test_a_window_that_was_pushed_up_for_the_drawer_goes_back(self) -> None:
        self.open_drawer()
        self.assertLess(settled(self.window.content)[1], self.before[1])
        self.toggle_drawer()
        self.assertTrue(becomes(lambda: self.is_same_point(self.before, self.window.content())))
        back = settled(self.window.content)
        self.assertTrue(self.is_same_point(self.before, back), (self.before, back))
        self.open_drawer()
        settled(self.window.content)
        self.toggle_drawer()
        self.assert_stays(back, self.window.content)

    def test_a_window_that_was_moved_while_the_drawer_was_open_stays(self) -> None:
        self.open_drawer()
        place = settled(self.window.content)[:2]
        self.window.drag(METAL, (-100, -40))
        moved = self.window.content()[:2]
        self.assertNotEqual(moved, place)
        self.toggle_drawer()
        expected = *moved, *self.before[2:]
        self.assertTrue(becomes(lambda: self.is_same_point(expected, self.window.content())))
        self.assertTrue(self.is_same_point(expected, settled(self.window.content)))

    def toggle_drawer(self) -> None:
        output("xdotool", "key", "--window", self.window.id, "ctrl+l")


class KeyboardTest(WindowManagerTest):
    """Window managers decide in their own ways who gets the keyboard."""

    def setUp(self) -> None:
        super().setUp()
        self.window = self.open_window()
        self.messages = StartupMessages()
        self.addCleanup(self.messages.close)

    def call(self, startup_id: str) -> None:
        """Asks for the window as any program on the bus can, and returns when the window manager has been asked."""
        output("gdbus", "call", "--session", "--dest", "org.tunedeck.Tunedeck", "--object-path",
               "/org/tunedeck/Tunedeck", "--method", "org.freedesktop.Application.Activate",
               f"{{'desktop-startup-id': <'{startup_id}'>}}")
        self.assert_becomes([f'remove: ID="{startup_id}"'], self.messages.take)
        self.window.settle()

    def test_a_program_on_the_bus_that_names_no_time_of_the_users_does_not_take_it(self) -> None:
        other = self.use_other_window()
        in_a_minute = (server_time() + 60_000) % 2**32
        # The first call changes the window's state. Qt then knows a time that is later than what the user did.
        for startup_id in ("program-1", "program-2", f"program_TIME{in_a_minute}", "program_TIME4294967295",
                           "program-3"):
            self.call(startup_id)
            self.assertEqual(self.active_window(), int(other), startup_id)
        if self.window_manager == "openbox":  # others tell it only of windows that are covered
            self.assertIn("_NET_WM_STATE_DEMANDS_ATTENTION", self.window.states())

    def test_a_program_that_the_user_has_just_clicked_can_hand_it_on(self) -> None:
        self.use_other_window()
        self.call(f"dock_TIME{server_time()}")
        self.assert_active_window_becomes(self.window.id)

    def test_a_user_who_starts_it_again_gets_it(self) -> None:
        self.use_other_window()
        self.start_again()
        self.assert_active_window_becomes(self.window.id)

    def test_tab_is_seen_in_a_window_that_became_active_under_its_menu(self) -> None:
        def picture() -> str:
            return self.window.picture((0, 0), LEFT_OF_DISPLAY)

        self.use_other_window()
        self.assert_becomes(INACTIVE, lambda: look(self.window))
        # Its menu opens though another program has the keyboard, as when a screen reader asks for it.
        output("xdotool", "key", "--window", self.window.id, "Menu")
        self.assert_becomes(2, self.windows_on_screen)
        output("xdotool", "windowactivate", self.window.id)
        self.assert_active_window_becomes(self.window.id)
        output("xdotool", "key", "Escape")
        self.assert_becomes(1, self.windows_on_screen)
        before = settled(picture)
        output("xdotool", "key", "Tab")
        self.assertTrue(becomes(lambda: picture() != before))

    def windows_on_screen(self) -> int:
        process = re.search(r"= (\d+)", output("xprop", "-notype", "-id", self.window.id, "_NET_WM_PID"))[1]
        return len(shown_windows("--pid", process))


class OtherWindowsTest(WindowManagerTest):
    def open_other(self, window: TunedeckWindow, key: str = "ctrl+comma", name: str = "^General$") -> TunedeckWindow:
        self.assert_active_window_becomes(window.id)
        output("xdotool", "key", key)
        return self.awaited(name)

    def awaited(self, name: str) -> TunedeckWindow:
        """A window that has been asked for. The window manager would make it active after what the test does next."""
        other = TunedeckWindow(shown_window("--name", name))
        self.assert_active_window_becomes(other.id)
        other.settle()
        return other

    def test_the_preferences_open_where_they_were_at_every_start(self) -> None:
        places = []
        for _ in range(3):
            with running(self.build.tunedeck) as process:
                window = TunedeckWindow(window_of(process))
                preferences = self.open_other(window)
                places.append(preferences.frame())
                output("xdotool", "key", "Escape")
                self.assert_active_window_becomes(window.id)
                output("xdotool", "key", "ctrl+q")
                process.wait(10)
        first, second, third = places
        self.assertTrue(self.is_same_point(first, second), places)
        self.assertEqual(second, third)

    def test_a_click_on_the_player_turns_to_it(self) -> None:
        with running(self.build.tunedeck) as process:
            window = TunedeckWindow(window_of(process))
            window.move_to(*self.scaled((300, 20)))
            for opening, name in ((("key", "ctrl+comma"), "^General$"), (("key", "F1"), "Help"), (ABOUT, "^About$")):
                window.point(METAL)
                output("xdotool", *opening)
                other = self.awaited(name).id
                for place in (METAL, DISPLAY, VOLUME, PROGRESS):
                    with self.subTest(name, place=place):
                        output("xdotool", "windowactivate", other)
                        self.assert_active_window_becomes(other)
                        window.press(place)
                        output("xdotool", "mouseup", "1")
                        self.assert_active_window_becomes(window.id)
                output("xdotool", "windowactivate", "--sync", other, "key", "ctrl+w")
                self.assert_active_window_becomes(window.id)

    def test_they_open_above_the_player_and_beside_it_with_their_title_bars(self) -> None:
        for is_kept_above in (False, True):
            if is_kept_above:
                self.keep_above()
            with running(self.build.tunedeck) as process:
                window = TunedeckWindow(window_of(process))
                # There is room below it for the highest window.
                _, y, _, height = window.move_to(*self.scaled((300, 20)))
                for key, name in OTHER_WINDOWS:
                    with self.subTest(name, is_kept_above=is_kept_above):
                        other = self.open_other(window, key, name)
                        self.assertGreaterEqual(other.frame()[1], y + height + round(DRAWER * self.scale))
                        # A click on the player raises it among the windows of its level.
                        window.press(METAL)
                        output("xdotool", "mouseup", "1")
                        self.assert_active_window_becomes(window.id)
                        self.assertGreater(self.stacking().index(int(other.id)), self.stacking().index(int(window.id)))
                        output("xdotool", "windowactivate", "--sync", other.id, "key", "ctrl+w")
                        self.assert_active_window_becomes(window.id)

    def stacking(self) -> list[int]:
        told = output("xprop", "-root", "-notype", "_NET_CLIENT_LIST_STACKING")
        return [int(number, 16) for number in re.findall(r"0x[0-9a-f]+", told)]

    def test_the_programs_keys_work_in_them(self) -> None:
        self.tell_player("track 0")
        with running(self.build.tunedeck) as process:
            window = TunedeckWindow(window_of(process))
            self.open_other(window)
            for key in ("ctrl+Right", "XF86AudioNext"):
                before = self.title()
                output("xdotool", "key", key)
                self.assertTrue(becomes(lambda: self.title() != before), key)
            output("xdotool", "key", "F1")
            opened = {name: shown_window("--name", name) for _, name in OTHER_WINDOWS}
            self.assert_active_window_becomes(opened["Help"])
            # Each closes its window alone, and the window manager chooses which one is active then.
            for name, other in opened.items():
                output("xdotool", "windowactivate", "--sync", other, "key", "ctrl+w")
                self.assertTrue(becomes(lambda name=name: not is_shown(name)), name)
            self.open_other(window)
            output("xdotool", "key", "ctrl+q")
            self.assertEqual(process.wait(10), 0)


if __name__ == "__main__":
    DesktopTest.build = Build(Path(sys.argv.pop(1)))
    WindowManagerTest.window_manager = sys.argv.pop(1)
    WindowManagerTest.composited = sys.argv.pop(1) == "composited"
    WindowManagerTest.scale = TunedeckWindow.scale = float(sys.argv.pop(1))
    os.environ["QT_SCALE_FACTOR"] = str(WindowManagerTest.scale)
    if not shutil.which(WindowManagerTest.window_manager):
        print(f"{WindowManagerTest.window_manager} is not installed.")
        sys.exit(SKIPPED)
    unittest.main()
