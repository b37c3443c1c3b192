# SPDX-License-Identifier: MIT
"""The window on a Wayland desktop through XWayland, which the user can choose.

Usage: xwayland_test.py BUILD-FOLDER (sway | weston | mutter)

Exits with 77 if the desktop is not installed.
"""

import contextlib
import os
import re
import shutil
import subprocess
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
from session import (  # noqa: E402
    Build, await_wayland, becomes, demo_player, mutter, running, screen_picture, seen_when, session, settled, sway,
    until, weston)
from wayland_test import (  # noqa: E402
    CORNER, KEYBOARD_COMES, METAL, MINIMISE, SEEN, SKIPPED, Frame, Picture, click, drag, only, point, press)
from xserver import XServer  # noqa: E402

SHADOW = (14, 14, 9, 19)  # left, right, top, bottom
MOST_TRIES = 4
XWAYLAND, KEEP_ABOVE = 1, 2  # counted from the end of the menu's last part but one
NO_DISPLAY = ":77"
POPUP = ".get_popup"  # no window but a menu asks for this on Wayland
MAIN_WINDOW = "set_max_size(550, 64)"  # no other window asks for this on Wayland
DISPLAY, UNCOVERED_METAL = (200, 30), (446, 4)  # in the content


class X11:
    """The windows of XWayland. The mouse and the keyboard are those of the display that the desktop is on."""

    def __init__(self, display: str) -> None:
        self.display = display
        self.environment = os.environ | {"DISPLAY": display}

    def output(self, *command: str) -> str:
        return subprocess.run(command, stdout=subprocess.PIPE, text=True, env=self.environment).stdout

    def windows(self) -> list[str]:
        """The program's windows, including menus."""
        return self.output("xdotool", "search", "--onlyvisible", "--class", "tunedeck").split()

    def window(self, process: subprocess.Popen) -> str | None:
        return next((window for window in self.windows()
                     if self.output("xdotool", "getwindowpid", window).strip() == str(process.pid)), None)

    def content(self, window: str) -> Frame:
        told = dict(line.split("=") for line in self.output("xdotool", "getwindowgeometry", "--shell",
                                                             window).splitlines())
        x, y, width, height = (int(told[key]) for key in ("X", "Y", "WIDTH", "HEIGHT"))
        left, right, top, bottom = SHADOW
        return x + left, y + top, width - left - right, height - top - bottom

    def focused(self) -> str:
        return self.output("xdotool", "getwindowfocus", "-f").strip()

    def states(self, window: str) -> list[str]:
        return re.findall(r"_NET_WM_STATE_\w+", self.output("xprop", "-notype", "-id", window, "_NET_WM_STATE"))


class XWaylandTest(unittest.TestCase):
    build: Build

    def setUp(self) -> None:
        self.stack = contextlib.ExitStack()
        self.addCleanup(self.stack.close)
        self.home = self.stack.enter_context(session())
        self.x11 = X11(self.stack.enter_context(self.desktop()))
        self.stack.enter_context(demo_player(self.build, "--track", "0"))
        self.settings = self.home / ".config/tunedeck/tunedeck.conf"
        self.settings.parent.mkdir(parents=True)
        point(0, 0)
        point(*CORNER)

    def desktop(self) -> contextlib.AbstractContextManager:
        raise NotImplementedError

    def start(self, program: Path | None = None, **variables: str) -> subprocess.Popen:
        environment = self.x11.environment | {"WAYLAND_DEBUG": "1"} | variables
        environment.pop("QT_QPA_PLATFORM")
        log = self.stack.enter_context((self.home / "protocol").open("w"))
        command = [program or self.build.tunedeck]
        process = self.stack.enter_context(subprocess.Popen(command, stderr=log, env=environment))
        self.stack.callback(process.terminate)
        return process

    def want_xwayland(self) -> None:
        self.settings.write_text("[General]\nStartThroughXWayland=true\n")

    def open_through_xwayland(self) -> tuple[subprocess.Popen, str]:
        self.want_xwayland()
        process = self.start()
        return process, self.await_x11_window(process)

    def await_x11_window(self, process: subprocess.Popen) -> str:
        window = seen_when(lambda: self.x11.window(process), lambda found: found is not None)
        self.assertIsNotNone(window)
        until(lambda: self.x11.focused() == window, "the window has the keyboard")
        with XServer(self.x11.display) as server:
            server.await_program(int(window))
        return window

    def await_wayland_windows(self, count: int) -> None:
        """Returns when the program has opened `count` main windows on Wayland and the last one has the keyboard."""
        self.assertTrue(becomes(lambda: self.wayland_windows() == count))
        until(lambda: KEYBOARD_COMES.search(self.protocol().rpartition(MAIN_WINDOW)[2]), "the window has the keyboard")

    def protocol(self) -> str:
        # Debian 12 writes an object's number after @, and Debian 13 after #.
        return (self.home / "protocol").read_text().replace("#", "@")

    def assert_drag_leads_to(self, window: str, start: tuple[int, int], by: tuple[int, int], *expected: range) -> None:
        """`expected` are the ranges of the window's place and size."""
        def is_dragged(frame: Frame | None) -> bool:
            return all(number in numbers for number, numbers in zip(frame, expected))

        with XServer(self.x11.display) as server:
            frame = drag(start, by, lambda: server.await_message("_NET_WM_MOVERESIZE"),
                         lambda: self.x11.content(window), is_dragged)
        self.assertTrue(is_dragged(frame), f"{frame} instead of {expected}")

    def settled_content(self, window: str) -> Frame:
        return settled(lambda: self.x11.content(window))

    def wayland_windows(self) -> int:
        """How many main windows the program has opened on Wayland."""
        return self.protocol().count(MAIN_WINDOW)

    def popups(self) -> int:
        """How many menus the program has opened on Wayland, plus its windows on XWayland."""
        return self.protocol().count(POPUP) + len(self.x11.windows())

    def choose(self, command: int) -> None:
        # A key can be lost while the desktop gives the window, or a menu, the keyboard.
        before = self.choices()
        for _ in range(MOST_TRIES):
            self.assertTrue(becomes(self.opens_last_menu_but_one))
            for key in (*("Up",) * command, "Return"):
                press(key)
            if becomes(lambda: self.choices() != before, 8):
                return
            press("Escape")
            press("Escape")
            await_wayland()

    def choices(self) -> list[str]:
        """The settings that the commands change."""
        lines = self.settings.read_text().splitlines() if self.settings.exists() else []
        return [line for line in lines if line.startswith(("StartThroughXWayland", "KeepMainWindow"))]

    def opens_last_menu_but_one(self) -> bool:
        if self.opens_popup("shift+F10"):
            press("Up")
            press("Up")
            if self.opens_popup("Right"):
                return True
        press("Escape")
        await_wayland()
        return False

    def opens_popup(self, key: str) -> bool:
        before = self.popups()
        press(key)
        opens = becomes(lambda: self.popups() > before, 5)
        # Some keys that are pressed while a menu gets the keyboard are lost. Sway gives it to no menu in a menu.
        becomes(lambda: KEYBOARD_COMES.search(self.protocol().rpartition(POPUP)[2]) is not None, 1)
        await_wayland()
        return opens

    def test_the_user_changes_to_xwayland_and_back_in_the_menu(self) -> None:
        process = self.start()
        self.await_wayland_windows(1)
        self.assertIsNone(self.x11.window(process))
        self.choose(XWAYLAND)
        self.await_x11_window(process)
        self.assertIn("StartThroughXWayland=true\n", self.settings.read_text())
        self.assertEqual(self.wayland_windows(), 1)
        self.choose(XWAYLAND)
        self.assertTrue(becomes(lambda: self.wayland_windows() == 2))
        self.assertIsNone(self.x11.window(process))
        self.assertIn("StartThroughXWayland=false\n", self.settings.read_text())

    def test_a_second_start_reaches_the_one_that_has_started_anew(self) -> None:
        process = self.start()
        self.await_wayland_windows(1)
        self.choose(XWAYLAND)
        self.await_x11_window(process)
        self.assertEqual(subprocess.run([self.build.tunedeck], timeout=20).returncode, 0)

    def test_where_xwayland_does_not_answer_it_is_on_wayland(self) -> None:
        self.want_xwayland()
        self.start(DISPLAY=NO_DISPLAY)
        self.assertTrue(becomes(lambda: self.wayland_windows() == 1))


    def saved(self, key: str) -> str:
        values = dict(line.split("=", 1) for line in self.settings.read_text().splitlines() if "=" in line)
        return values.get(key, "")

    def stop(self, process: subprocess.Popen) -> None:
        process.kill()
        process.wait()
        until(lambda: not self.x11.windows(), "its window is gone")


class PlacedWindowTest(XWaylandTest):
    """A desktop that tells X11 programs where their windows are, and respects their size limits."""

    def test_the_metal_drags_the_window(self) -> None:
        _, window = self.open_through_xwayland()
        x, y, width, height = self.settled_content(window)
        # The window does not make up for the way that the pointer went before it was a drag.
        self.assert_drag_leads_to(window, (x + METAL[0], y + METAL[1]), (60, 40), range(x + 40, x + 61),
                                  range(y + 25, y + 41), only(width), only(height))

    def test_its_side_resizes_it_within_its_limits(self) -> None:
        _, window = self.open_through_xwayland()
        x, y, width, height = self.settled_content(window)
        unmoved = only(x), only(y)
        self.assert_drag_leads_to(window, (x + width - 2, y + 32), (170, 0), *unmoved, only(550), only(height))
        self.assert_drag_leads_to(window, (x + 548, y + 32), (-400, 0), *unmoved, only(350), only(height))


class SwayTest(PlacedWindowTest):
    def desktop(self) -> contextlib.AbstractContextManager:
        return sway()

    def test_after_an_upgrade_it_starts_anew_as_the_new_program(self) -> None:
        program = self.home / "tunedeck"
        shutil.copy(self.build.tunedeck, program)
        process = self.start(program)
        self.await_wayland_windows(1)
        program.unlink()
        shutil.copy(self.build.tunedeck, program)
        self.choose(XWAYLAND)
        self.await_x11_window(process)
        self.assertEqual(os.readlink(f"/proc/{process.pid}/exe"), str(program))


class WestonTest(XWaylandTest):
    def desktop(self) -> contextlib.AbstractContextManager:
        return weston()

    def test_no_place_is_saved_but_that_of_the_window(self) -> None:
        # Weston puts each start's window elsewhere, and reports the place in the frame that it has put around it.
        for _ in range(4):
            self.want_xwayland()
            process = self.start()
            window = self.await_x11_window(process)
            until(lambda: self.saved("PlayerWindowWidth"), "the width is saved")
            left, top = (int(number) for number in re.findall(r"Absolute.*?(-?\d+)", self.x11.output(
                "xwininfo", "-id", window)))
            true = f"{left + SHADOW[0]} {top + SHADOW[2]} "
            saved = self.saved("PlayerWindowPlace")
            self.assertTrue(not saved or saved.startswith(true), f"{saved} instead of {true}")
            self.stop(process)


class MutterTest(PlacedWindowTest):
    def desktop(self) -> contextlib.AbstractContextManager:
        return mutter()

    def test_it_opens_where_it_was(self) -> None:
        process, window = self.open_through_xwayland()
        self.x11.output("xdotool", "windowmove", "--sync", window, "300", "200")
        x, y, *_ = before = self.settled_content(window)
        until(lambda: self.saved("PlayerWindowPlace").startswith(f"{x} {y} "), "the place is saved")
        self.stop(process)
        self.assertEqual(self.settled_content(self.await_x11_window(self.start())), before)

    def test_it_can_be_minimised_and_the_desktop_can_restore_it(self) -> None:
        process, window = self.open_through_xwayland()
        x, y, *_ = before = self.settled_content(window)
        click(x + MINIMISE[0], y + MINIMISE[1])
        self.assertTrue(becomes(lambda: "_NET_WM_STATE_HIDDEN" in self.x11.states(window)))
        self.x11.output("xdotool", "windowactivate", window)
        self.assertTrue(becomes(lambda: "_NET_WM_STATE_HIDDEN" not in self.x11.states(window)))
        self.assertEqual(self.x11.content(window), before)

    def open_other_window(self) -> tuple[int, int]:
        """Opens a Wayland window. Returns its top left corner."""
        before = Picture()
        self.stack.enter_context(running(self.build.bare_window))
        self.assertTrue(becomes(lambda: Picture().pixels != before.pixels))
        settled(screen_picture)
        after = Picture()
        y = next(y for y in range(SEEN[1]) if after.row(y) != before.row(y))
        return next(x for x in range(SEEN[0]) if after.pixel(x, y + 40) != before.pixel(x, y + 40)), y

    def test_where_only_xwayland_can_keep_it_above_the_command_leads_there_in_one_step(self) -> None:
        process = self.start()
        self.await_wayland_windows(1)
        self.choose(KEEP_ABOVE)
        window = self.await_x11_window(process)
        self.assertTrue(becomes(lambda: "_NET_WM_STATE_ABOVE" in self.x11.states(window)))
        self.assertIn("StartThroughXWayland=true\n", self.settings.read_text())
        self.assertIn("KeepMainWindowAboveAllOtherWindows=true\n", self.settings.read_text())

    def test_it_is_above_windows_of_wayland_that_the_user_clicks_once_it_is_kept_above(self) -> None:
        other_x, other_y = self.open_other_window()
        _, window = self.open_through_xwayland()
        placed = self.settled_content(window)
        self.x11.output("xdotool", "windowmove", window, str(other_x + 150), str(other_y + 10))
        self.assertTrue(becomes(lambda: self.x11.content(window) != placed))
        x, y, *_ = self.settled_content(window)

        def seen() -> tuple[int, ...]:
            return Picture().pixel(x + DISPLAY[0], y + DISPLAY[1])

        def other_has_keyboard_after_a_click() -> bool:
            click(other_x + 50, other_y + 60)
            return becomes(lambda: "_NET_WM_STATE_FOCUSED" not in self.x11.states(window), 1)

        of_the_display = settled(seen)
        self.assertTrue(becomes(other_has_keyboard_after_a_click))
        self.assertTrue(becomes(lambda: seen() != of_the_display))
        click(x + UNCOVERED_METAL[0], y + UNCOVERED_METAL[1])
        self.choose(KEEP_ABOVE)
        self.assertTrue(becomes(lambda: "_NET_WM_STATE_ABOVE" in self.x11.states(window)))
        self.assertIn("_NET_WM_STATE_FOCUSED", self.x11.states(window))
        self.assertTrue(becomes(other_has_keyboard_after_a_click))
        self.assertEqual(settled(seen), of_the_display)


if __name__ == "__main__":
    XWaylandTest.build = Build(Path(sys.argv[1]))
    if not shutil.which(sys.argv[2]):
        print(f"{sys.argv[2]} is not installed.")
        sys.exit(SKIPPED)
    desktops = {"sway": "SwayTest", "weston": "WestonTest", "mutter": "MutterTest"}
    unittest.main(argv=sys.argv[:1] + sys.argv[3:], defaultTest=desktops[sys.argv[2]])
