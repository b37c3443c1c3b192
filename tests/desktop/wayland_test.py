# SPDX-License-Identifier: MIT
"""The window on a Wayland desktop, tested with the mouse, the keyboard and pictures of the screen.

Usage: wayland_test.py BUILD-FOLDER (sway | weston)

Exits with 77 if the desktop is not installed.
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
from session import (  # noqa: E402
    DESKTOP, PATIENCE, Build, await_wayland, becomes, demo_player, running, screen_picture, seen_when, session, settled,
    sway, until, weston)
from x11window import window_of  # noqa: E402

SKIPPED = 77
SCREEN = (1280, 720)
CORNER = (1279, 719)  # the pointer covers nothing there
SEEN = (1260, 700)  # the part of the screen without that corner
CONTENT = (450, 64)
METAL, FREE_METAL, MINIMISE, BACK, FORWARD = (128, 4), (400, 3), (15, 32), (42, 21), (106, 21)  # in the content
# The program asks to drag its window; the desktop takes the pointer from it and drags.
DRAG_BEGIN = re.compile(r"xdg_toplevel@\d+\.(?:move|resize)\(.*?wl_pointer@\d+\.leave\(", re.DOTALL)
KEYBOARD_COMES = re.compile(r"wl_keyboard@\d+\.enter\(")
WINDOW = '[app_id="org.tunedeck.Tunedeck"]'

Frame = tuple[int, int, int, int]  # x, y, width, height


def output(*command: str) -> str:
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout


class Picture:
    """A picture of the screen."""

    def __init__(self) -> None:
        self.pixels = screen_picture()

    def row(self, y: int, left: int = 0, width: int = SEEN[0]) -> bytes:
        start = (y * SCREEN[0] + left) * 3
        return self.pixels[start:start + width * 3]

    def pixel(self, x: int, y: int) -> tuple[int, ...]:
        return tuple(self.row(y, x, 1))

    def frame(self) -> Frame | None:
        """The area that the desktop's background does not fill."""
        desktop = DESKTOP * SEEN[0]
        rows = [y for y in range(SEEN[1]) if self.row(y) != desktop]
        if not rows:
            return None
        columns = [x for x in range(SEEN[0]) if any(self.row(y, x, 1) != DESKTOP for y in rows)]
        return columns[0], rows[0], columns[-1] - columns[0] + 1, rows[-1] - rows[0] + 1

    def part(self, frame: Frame) -> list[bytes]:
        x, y, width, height = frame
        return [self.row(line, x, width) for line in range(y, y + height)]


def without_corners(picture: list[bytes]) -> list[bytes]:
    side = 8
    middle = range(side, len(picture) - side)
    return [row if y in middle else row[side * 3:-side * 3] for y, row in enumerate(picture)]


def only(number: int) -> range:
    return range(number, number + 1)


def point(*place: int) -> None:
    output("xdotool", "mousemove", *map(str, place))


def point_away() -> None:
    # A nested desktop may know only how far the pointer moves. These moves end in the corner from anywhere.
    point(0, 0)
    point(*CORNER)


def click(x: int, y: int) -> None:
    point(x, y)
    await_wayland()
    output("xdotool", "click", "1")
    point(*CORNER)


def press(key: str) -> None:
    output("xdotool", "key", key)


def drag(start: tuple[int, int], by: tuple[int, int], await_begin: Callable[[], None],
         read: Callable[[], Frame | None], is_dragged: Callable[[Frame | None], bool]) -> Frame | None:
    """Returns where the window is then.

    `await_begin` returns when the desktop moves or resizes the window with the pointer. `read` returns where the window
    is, and `is_dragged` whether the drag leads there.
    """
    point(*start)
    output("xdotool", "mousedown", "1")
    # The program asks for the drag once the pointer is more than a few pixels away.
    for eighths in (1, 2):
        point(*(place + way * eighths // 8 for place, way in zip(start, by)))
    await_begin()
    await_wayland()
    # The window follows each step until it is at its limit. Steps that come faster can be lost, and a drag that the
    # desktop only begins after the button has come up, too.
    for eighths, patience in ((4, PATIENCE), (6, 0.5), (8, 0.5)):
        before = read()
        point(*(place + way * eighths // 8 for place, way in zip(start, by)))
        seen_when(read, lambda seen: seen != before, patience)
    # Weston moves a window whose left side is resized only as long as the button is held. Its pointer, which is in the
    # picture by then, may hide where the window is.
    settled(read, 0.3)
    output("xdotool", "mouseup", "1")
    point(*CORNER)
    await_wayland()
    return seen_when(read, is_dragged)


class WaylandTest(unittest.TestCase):
    build: Build

    def setUp(self) -> None:
        self.stack = contextlib.ExitStack()
        self.addCleanup(self.stack.close)
        self.home = self.stack.enter_context(session())
        self.x11 = self.stack.enter_context(self.desktop())
        self.stack.enter_context(demo_player(self.build))
        point_away()

    def desktop(self) -> contextlib.AbstractContextManager:
        raise NotImplementedError

    def open_window(self, **variables: str) -> Frame:
        log = self.stack.enter_context((self.home / "protocol").open("w"))
        # Its output is the log of the protocol, which running() would drop.
        environment = os.environ | variables | {"WAYLAND_DEBUG": "1"}
        process = self.stack.enter_context(subprocess.Popen([self.build.tunedeck], stderr=log, env=environment))
        self.stack.callback(process.terminate)
        self.await_frame(lambda frame: frame is not None)
        until(lambda: KEYBOARD_COMES.search(self.protocol()), "the window has the keyboard")
        return self.settled_frame()

    def start_again(self, **variables: str) -> None:
        self.assertEqual(subprocess.run([self.build.tunedeck], env=os.environ | variables, timeout=20).returncode, 0)

    def said(self, pattern: str) -> list[str]:
        """The requests that the program has sent to the desktop."""
        return re.findall(rf" -> .*?{pattern}", self.protocol())

    def protocol(self) -> str:
        # Debian 12 writes an object's number after @, and Debian 13 after #.
        return (self.home / "protocol").read_text().replace("#", "@")

    def settled_frame(self) -> Frame | None:
        return settled(lambda: Picture().frame())

    def assert_drag_leads_to(self, start: tuple[int, int], by: tuple[int, int], *expected: range) -> Frame:
        """`expected` are the ranges of the window's place and size. Returns the place and the size."""
        def is_dragged(frame: Frame | None) -> bool:
            return frame is not None and all(number in numbers for number, numbers in zip(frame, expected))

        before = self.drags()
        frame = drag(start, by, lambda: until(lambda: self.drags() > before, "the desktop drags the window"),
                     lambda: Picture().frame(), is_dragged)
        self.assertTrue(is_dragged(frame), f"{frame} instead of {expected}")
        return frame

    def drags(self) -> int:
        return len(DRAG_BEGIN.findall(self.protocol()))

    def await_frame(self, is_it: Callable[[Frame | None], bool]) -> Frame | None:
        return seen_when(lambda: Picture().frame(), is_it)

    def assert_frame_becomes(self, expected: Frame | None) -> None:
        self.assertEqual(self.await_frame(lambda frame: frame == expected), expected)

    def test_its_surface_is_the_content_alone_and_its_corners_let_the_desktop_show(self) -> None:
        x, y, width, height = self.open_window()
        self.assertEqual((width, height), CONTENT)
        self.assertEqual(set(self.said(r"set_window_geometry(\(.*\))")), {"(0, 0, 450, 64)"})
        self.assertEqual(self.said(r"set_min_size(\(.*\))")[-1], "(350, 64)")
        self.assertEqual(self.said(r"set_max_size(\(.*\))")[-1], "(550, 64)")
        picture = Picture()
        for corner_x in (x, x + width - 1):
            for corner_y in (y, y + height - 1):
                for seen, desktop in zip(picture.pixel(corner_x, corner_y), DESKTOP):
                    self.assertAlmostEqual(seen, desktop, delta=8)

    def test_the_metal_drags_the_window(self) -> None:
        x, y, width, height = self.open_window()
        # The window does not make up for the way that the pointer went before it was a drag.
        self.assert_drag_leads_to((x + METAL[0], y + METAL[1]), (60, 40), range(x + 40, x + 61), range(y + 25, y + 41),
                                  only(width), only(height))

    def test_its_sides_resize_it_within_its_limits(self) -> None:
        x, y, width, height = self.open_window()
        unmoved = only(x), only(y)
        _, _, width, _ = self.assert_drag_leads_to(
            (x + width - 2, y + 32), (60, 20), *unmoved, range(490, 511), only(height))
        self.assert_drag_leads_to((x + width - 2, y + 32), (170, 0), *unmoved, only(550), only(height))
        self.assert_drag_leads_to((x + 548, y + 32), (-400, 0), *unmoved, only(350), only(height))
        left, _, width, _ = self.assert_drag_leads_to(
            (x + 2, y + 32), (-60, 0), range(x - 60, x - 39), only(y), range(390, 411), only(height))
        self.assertEqual(left + width, x + 350)

    def test_it_opens_as_wide_as_it_was_and_keeps_the_place_that_it_has_on_x11(self) -> None:
        settings = self.home / ".config/tunedeck/tunedeck.conf"
        settings.parent.mkdir(parents=True)
        place = "PlayerWindowPlace=7 8 0 0 1280 720 screen"
        settings.write_text(f"[General]\n{place}\n")
        x, y, width, height = self.open_window()
        _, _, width, _ = self.assert_drag_leads_to(
            (x + width - 2, y + 32), (60, 20), only(x), only(y), range(490, 511), only(height))
        until(lambda: f"PlayerWindowWidth={width}\n" in settings.read_text(), "the width is saved")
        self.assertIn(place, settings.read_text())
        press("ctrl+q")
        self.assert_frame_becomes(None)
        self.assertEqual(self.open_window()[2:], (width, height))

    def test_the_drawer_opens_below_and_leaves_nothing_behind(self) -> None:
        x, y, width, height = before = self.open_window()
        press("ctrl+l")
        self.assert_frame_becomes((x, y, width, 124))
        press("Escape")
        self.assert_frame_becomes(before)

    def test_the_metal_keeps_its_colors_while_the_window_is_moved(self) -> None:
        self.open_window()
        before = self.metal()
        self.assertIsNotNone(before)
        x, y, *_ = self.settled_frame()
        drags = self.drags()
        point(x + METAL[0], y + METAL[1])
        output("xdotool", "mousedown", "1")
        for way in (8, 16, 24):
            point(x + METAL[0] + way, y + METAL[1] + way)
        until(lambda: self.drags() > drags, "the desktop drags the window")
        # Qt waits a while before it believes that the keyboard is gone.
        self.assertEqual(settled(self.metal), before)
        output("xdotool", "mouseup", "1")
        self.assertEqual(settled(self.metal), before)

    def metal(self) -> tuple[int, ...] | None:
        """The color of the metal where no pointer of these tests is."""
        picture = Picture()
        if not (frame := picture.frame()):
            return None
        # The pointer reaches beyond the upper edge.
        right, bottom = frame[0] + frame[2], frame[1] + frame[3]
        return picture.pixel(right - CONTENT[0] + FREE_METAL[0], bottom - CONTENT[1] + FREE_METAL[1])

    def test_a_button_that_was_clicked_looks_as_before(self) -> None:
        self.use_track()
        x, y, *_ = self.open_window()
        for left, top in (BACK, FORWARD):
            def upper_half(corner: tuple[int, int] = (x + left - 12, y + top - 12)) -> list[bytes]:
                return Picture().part((*corner, 24, 12))

            before = settled(upper_half)
            # The desktop draws the pointer below this place.
            point(x + left, y + top + 4)
            output("xdotool", "mousedown", "1")
            self.assertTrue(becomes(lambda: upper_half() != before))
            output("xdotool", "mouseup", "1")
            self.assertTrue(becomes(lambda: upper_half() == before))
            self.assertEqual(settled(upper_half), before)

    def test_a_seek_ends_though_a_menu_gets_the_release(self) -> None:
        self.use_track()
        x, y, *_ = self.open_window()
        before = settled(self.position)
        point(x + FORWARD[0], y + FORWARD[1])
        output("xdotool", "mousedown", "1")
        self.assertTrue(becomes(lambda: self.position() > before))
        output("xdotool", "mousedown", "3", "mouseup", "1", "mouseup", "3", "key", "Escape")
        # A seek that nothing ends goes on to the end of the track, which is minutes away.
        self.assertLess(settled(self.position), before + 60_000_000)

    def use_track(self) -> None:
        for line in ("track 1", "pause", "seek 0"):
            output(str(self.build.demo_player), "--tell", line)

    def position(self) -> int:
        """The player's, in microseconds."""
        told = output("gdbus", "call", "--session", "--dest", "org.mpris.MediaPlayer2.tunedeckdemo", "--object-path",
                      "/org/mpris/MediaPlayer2", "--method", "org.freedesktop.DBus.Properties.Get",
                      "org.mpris.MediaPlayer2.Player", "Position")
        return int(re.search(r"\bint64 (\d+)", told)[1])

    def test_the_preferences_belong_to_the_player_and_have_its_keys(self) -> None:
        self.open_window()
        press("ctrl+comma")
        until(lambda: self.said(r"set_parent\(xdg_toplevel"), "the preferences belong to the player")
        until(lambda: len(KEYBOARD_COMES.findall(self.protocol())) > 1, "the preferences have the keyboard")
        press("ctrl+w")
        self.assert_frame_becomes_the_player()
        press("ctrl+comma")
        self.assertTrue(becomes(lambda: len(KEYBOARD_COMES.findall(self.protocol())) > 3))
        press("ctrl+q")
        self.assert_frame_becomes(None)

    def assert_frame_becomes_the_player(self) -> None:
        self.assertTrue(becomes(lambda: (Picture().frame() or ())[2:] == CONTENT))
        until(lambda: len(KEYBOARD_COMES.findall(self.protocol())) > 2, "the player has the keyboard")

    def test_a_second_start_reaches_the_first_one(self) -> None:
        before = self.open_window()
        self.start_again(XDG_ACTIVATION_TOKEN="of-the-desktop")
        self.start_again()
        self.assert_frame_becomes(before)


    def keep_above_in_the_dock(self) -> tuple[str, bool, bool]:
        """The number of the dock menu's item, whether it is checked, and whether it is enabled."""
        told = self.call_dock_menu("GetLayout", "0", "-1", "[]")
        number, properties = re.search(
            r"\((\d+), (\{[^{}]*'Keep Above All Other Windows[^{}]*\})", told).groups()
        return number, "'toggle-state': <1>" in properties, "'enabled': <false>" not in properties

    def call_dock_menu(self, method: str, *arguments: str) -> str:
        return output("gdbus", "call", "--session", "--dest", "org.tunedeck.Tunedeck", "--object-path",
                      "/org/tunedeck/Tunedeck/DockMenu", "--method", f"com.canonical.dbusmenu.{method}", "--", *arguments)

    def write_kept_above(self) -> Path:
        settings = self.home / ".config/tunedeck/tunedeck.conf"
        settings.parent.mkdir(parents=True, exist_ok=True)
        settings.write_text("[General]\nKeepMainWindowAboveAllOtherWindows=true\n")
        return settings


class WestonTest(WaylandTest):
    def desktop(self) -> contextlib.AbstractContextManager:
        return weston()

    def test_what_keeps_it_above_elsewhere_can_be_switched_off_in_the_dock_and_not_on_again(self) -> None:
        settings = self.write_kept_above()
        self.open_window()
        number, is_checked, is_enabled = self.keep_above_in_the_dock()
        self.assertEqual((is_checked, is_enabled), (True, True))
        self.call_dock_menu("Event", number, "clicked", "<0>", "0")
        self.assertTrue(becomes(lambda: "KeepMainWindowAboveAllOtherWindows=false" in settings.read_text()))
        _, is_checked, is_enabled = self.keep_above_in_the_dock()
        self.assertEqual((is_checked, is_enabled), (False, False))

    def test_an_action_switches_it_off_and_is_refused_when_it_is_off(self) -> None:
        settings = self.write_kept_above()
        self.open_window()
        command = [self.build.tunedeck, "--action", "keep-above"]
        self.assertEqual(subprocess.run(command, timeout=20).returncode, 0)
        self.assertTrue(becomes(lambda: "KeepMainWindowAboveAllOtherWindows=false" in settings.read_text()))
        refused = subprocess.run(command, timeout=20, stderr=subprocess.PIPE, text=True)
        self.assertEqual(refused.returncode, 1)
        self.assertIn("On Wayland only the desktop can keep a window above all others", refused.stderr)
        self.assertIn("KeepMainWindowAboveAllOtherWindows=false", settings.read_text())

    def test_kept_above_it_is_an_x11_window_that_tells_its_margins_where_the_user_starts_it_so(self) -> None:
        self.write_kept_above()
        os.environ.update(QT_QPA_PLATFORM="xcb", DISPLAY=self.x11)
        process = self.stack.enter_context(running(self.build.tunedeck))
        found = window_of(process)
        told = output("xprop", "-notype", "-id", found, "_GTK_FRAME_EXTENTS")
        self.assertEqual(told.strip(), "_GTK_FRAME_EXTENTS = 14, 14, 9, 19")

    def test_it_can_be_minimised_and_the_desktop_can_restore_it(self) -> None:
        x, y, *_ = before = self.open_window()
        click(x + MINIMISE[0], y + MINIMISE[1])
        self.assert_frame_becomes(None)
        press("super+Tab")
        self.assert_frame_becomes(before)


class SwayTest(WaylandTest):
    def desktop(self) -> contextlib.AbstractContextManager:
        return sway()

    def test_the_first_start_asks_for_the_keyboard_by_right_of_its_token(self) -> None:
        self.open_window(XDG_ACTIVATION_TOKEN="of-the-desktop")
        self.assertEqual(len(self.said(r'activate\("of-the-desktop"')), 1)

    def test_a_second_start_asks_for_the_keyboard_by_right_of_its_token(self) -> None:
        self.open_window()
        self.start_again(XDG_ACTIVATION_TOKEN="of-the-desktop")
        self.start_again()
        self.assertTrue(becomes(lambda: self.said(r'activate\("of-the-desktop"') != []))
        self.assertEqual(len(self.said(r'activate\("of-the-desktop"')), 1)

    def pictures(self) -> int:
        return len(self.said(r"wl_surface@\d+\.commit"))

    def test_on_another_workspace_it_draws_nothing(self) -> None:
        self.open_window()
        before = settled(self.pictures)
        press("space")
        until(lambda: self.pictures() > before + 10, "the display rolls to the next text")
        output("swaymsg", f"{WINDOW} move to workspace 2")
        # The display would roll every 5.7 seconds, and the clock would go on.
        settled(self.pictures, 6.5)

    def assert_picture_becomes(self, expected: list[bytes], frame: Frame) -> None:
        # Qt 6.8 can draw twice what is translucent in a new buffer, as the edges of the round corners are.
        wanted = without_corners(expected)
        self.assertTrue(becomes(lambda: without_corners(Picture().part(frame)) == wanted), "The picture is another one.")

    def open_window_at(self, scale: int) -> tuple[list[bytes], Frame]:
        output("swaymsg", f"output X11-1 scale {scale}")
        self.open_window()
        output("swaymsg", f"{WINDOW} move absolute position 40 40")
        frame = (40 * scale, 40 * scale, CONTENT[0] * scale, CONTENT[1] * scale)
        self.assert_frame_becomes(frame)
        return settled(lambda: Picture().part(frame), 0.8), frame

    def change_scale(self, scale: int) -> None:
        """The window may be elsewhere afterwards."""
        size = (CONTENT[0] * scale, CONTENT[1] * scale)
        self.change_scale_and_await_picture(scale, size)
        self.await_frame(lambda frame: frame is not None and frame[2:] == size)

    def change_scale_and_await_picture(self, scale: float, size: tuple[int, int]) -> None:
        """Sway shows the old picture in the new size until the program has drawn one of that size, in pixels."""
        def pictures() -> int:
            return len(self.said(rf"create_buffer\(new id \S+, 0, {size[0]}, {size[1]},"))

        before = pictures()
        output("swaymsg", f"output X11-1 scale {scale}")
        until(lambda: pictures() > before, f"the program draws {size[0]} times {size[1]} pixels")

    def test_when_the_screens_scale_changes_it_looks_as_if_it_had_begun_with_that_scale(self) -> None:
        picture, frame = self.open_window_at(2)
        self.change_scale(1)
        self.change_scale(2)
        output("swaymsg", f"{WINDOW} move absolute position 40 40")
        self.assert_picture_becomes(picture, frame)

    def test_on_a_screen_of_another_scale_it_looks_as_if_it_had_begun_there(self) -> None:
        picture, frame = self.open_window_at(2)
        self.change_scale(1)
        # The picture of the second screen covers that of the first.
        output("swaymsg", "create_output")
        output("swaymsg", "output X11-2 resolution 1280x720 position 1280 0 scale 2")
        # If the screen still changes while the window is on it, the program replaces its surface, and sway chooses the place.
        settled(lambda: len(re.findall(r"wl_output@", self.protocol())), 1)
        output("swaymsg", f"{WINDOW} move absolute position 1320 40, focus")
        self.assert_picture_becomes(picture, frame)

    def test_it_is_drawn_for_the_pixels_of_fractional_scales_and_keeps_its_surface(self) -> None:
        # Sway fills the desktop with a gradient at these scales, so where the window ends is not seen.
        output("swaymsg", "output X11-1 scale 1.5")
        self.open_window()
        if not self.said("get_fractional_scale"):
            self.skipTest("This Qt does not ask for fractional scales.")
        self.change_scale_and_await_picture(1.25, (563, 80))
        self.change_scale_and_await_picture(1.5, (675, 96))
        self.assertEqual(set(self.said(r"set_destination(\(.*\))")), {"(450, 64)"})
        # A screen that only changes its place has no other scale.
        output("swaymsg", "output X11-1 position 100 0")
        settled(self.protocol, 1)
        self.assertEqual(len(self.said("get_toplevel")), 1)


if __name__ == "__main__":
    WaylandTest.build = Build(Path(sys.argv[1]))
    if not shutil.which(sys.argv[2]):
        print(f"{sys.argv[2]} is not installed.")
        sys.exit(SKIPPED)
    desktops = {"sway": "SwayTest", "weston": "WestonTest"}
    unittest.main(argv=sys.argv[:1] + sys.argv[3:], defaultTest=desktops[sys.argv[2]])
