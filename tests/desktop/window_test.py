# SPDX-License-Identifier: MIT
"""The window with a window manager, with a compositor or without, tested with the mouse and the keyboard.

Usage: window_test.py BUILD-FOLDER
"""

import contextlib
import os
import re
import subprocess
import sys
import time
import unittest
from collections.abc import Callable
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
from session import (  # noqa: E402
    Build, becomes, compositor, demo_player, running, seen_when, session, settled, window_manager)
from x11window import TunedeckWindow, geometry_of, output, shown_window, window_of  # noqa: E402
from xserver import CLIENT_MESSAGE, XServer  # noqa: E402

CONTENT = (450, 64)
DRAWER = 60  # what the open drawer adds to the height
SHADOW = (14, 14, 9, 19)  # left, right, top, bottom
METAL, DISPLAY, FORWARD, CLOSE = (128, 4), (300, 20), (106, 21), (15, 13)  # in the content
QUIET, VOLUME, LOUD = (38, 52), (70, 52), (114, 52)
TIMES, TIMES_SIZE = (135, 37), (290, 10)  # the row with the two times and the slider between them
SCREEN = (1280, 720)


def server_time() -> int:
    """Milliseconds of the X server's clock, which has 32 bits."""
    return time.monotonic_ns() // 1_000_000 % 2**32


def wake_ups(process: subprocess.Popen) -> int:
    """How often the main thread went to sleep so far."""
    status = Path(f"/proc/{process.pid}/status").read_text()
    return int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", status, re.MULTILINE)[1])


def shared_with_the_x_server(process: subprocess.Popen) -> list[str]:
    """The memory in which the program and the X server share pictures: the server's, or the program's from System V."""
    mappings = Path(f"/proc/{process.pid}/maps").read_text().splitlines()
    return [mapping for mapping in mappings if re.search(r" rw-s .*/(memfd:xorg|SYSV)", mapping)]


class StartupMessages:
    """The startup messages that docks receive from now on."""

    def __init__(self) -> None:
        self.server = XServer()
        self.begin, self.next = (self.server.atom(name) for name in ("_NET_STARTUP_INFO_BEGIN", "_NET_STARTUP_INFO"))
        self.begun: dict[int, bytes] = {}

    def take(self) -> list[str]:
        """The messages that are complete."""
        while event := self.server.next_event():
            message = event.message
            if event.type != CLIENT_MESSAGE or message.message_type not in (self.begin, self.next):
                continue
            begun = b"" if message.message_type == self.begin else self.begun[message.window]
            self.begun[message.window] = begun + bytes(message.data)[:20]
        ended = [sender for sender, text in self.begun.items() if 0 in text]
        return [self.begun.pop(sender).partition(b"\0")[0].decode() for sender in ended]

    def close(self) -> None:
        self.server.close()


class DesktopTest(unittest.TestCase):
    build: Build
    window_manager = "openbox"

    def setUp(self) -> None:
        self.stack = contextlib.ExitStack()
        self.addCleanup(self.stack.close)
        self.home = self.stack.enter_context(session())
        self.stack.enter_context(window_manager(self.window_manager))
        self.stack.enter_context(demo_player(self.build, "--play", "--track", "0"))

    def open_window(self, *arguments: str) -> TunedeckWindow:
        return self.open_program(*arguments)[0]

    def open_program(self, *arguments: str) -> tuple[TunedeckWindow, subprocess.Popen]:
        program = self.stack.enter_context(running(self.build.tunedeck, *arguments))
        return TunedeckWindow(window_of(program)), program

    def keep_above(self) -> None:
        settings = self.home / ".config/tunedeck"
        settings.mkdir(parents=True, exist_ok=True)
        (settings / "tunedeck.conf").write_text("[General]\nKeepMainWindowAboveAllOtherWindows=true\n")

    def use_other_window(self) -> str:
        """Clicks on another window and types. Returns the window."""
        other = window_of(self.stack.enter_context(running(self.build.bare_window)))
        place = str(round(500 * TunedeckWindow.scale))
        output("xdotool", "windowmove", "--sync", other, place, place)
        output("xdotool", "mousemove", "--window", other, "40", "40", "click", "1", "type", "typed")
        self.assert_active_window_becomes(other)
        return other

    def start_again(self, **variables: str) -> None:
        second = subprocess.run([self.build.tunedeck], timeout=20, env=os.environ | variables)
        self.assertEqual(second.returncode, 0)

    def assert_becomes(self, expected: object, read: Callable[[], object]) -> None:
        self.assertEqual(seen_when(read, lambda seen: seen == expected), expected)

    def active_window(self) -> int:
        return int(re.search(r"0x[0-9a-f]+", output("xprop", "-root", "_NET_ACTIVE_WINDOW"))[0], 16)

    def assert_active_window_becomes(self, window: str) -> None:
        self.assert_becomes(int(window), self.active_window)


class WindowTest(DesktopTest):
    def test_with_a_compositor_the_shadow_is_in_margins_that_the_window_manager_knows_of(self) -> None:
        with compositor():
            window = self.open_window()
            self.assertEqual(tuple(window.numbers("_GTK_FRAME_EXTENTS")), SHADOW)
            self.assertEqual(window.content()[2:], CONTENT)
            self.assertEqual(window.limits(), ["378 by 92", "578 by 92"])

    def test_where_picom_tracks_damage_nothing_is_black_beside_the_times(self) -> None:
        version = int(re.search(r"\d+", output("picom", "--version"))[0])
        if version < 12:
            self.skipTest(f"picom {version} shows nothing black; it needs picom 12")
        with compositor(tracks_damage=True), XServer() as server:
            window = self.open_window()
            pictures: set[str] = set()
            self.assertTrue(becomes(lambda: pictures.add(window.picture(TIMES, TIMES_SIZE)) or len(pictures) > 4))
            width, height = TIMES_SIZE
            pixels = server.picture(*window.on_screen(TIMES), width, height)
            black = [x for x in range(width)
                     if all(pixels[4 * (y * width + x):][:3] == bytes(3) for y in range(height))]
            self.assertEqual(black, [])

    def test_it_shares_memory_with_the_x_server_only_where_its_pictures_are_large(self) -> None:
        for scale, is_shared in (("1", False), ("1.5", False), ("2", True)):
            with self.subTest(scale=scale), running(self.build.tunedeck,
                                                    env=os.environ | {"QT_SCALE_FACTOR": scale}) as program:
                TunedeckWindow(window_of(program)).settle()
                self.assertEqual(shared_with_the_x_server(program) != [], is_shared)

    def test_its_other_windows_open_above_it_and_leave_it_free(self) -> None:
        self.keep_above()
        window = self.open_window()
        # Below, there is room for any of them.
        window.move_to(400, 60)
        output("xdotool", "key", "ctrl+comma")
        other = shown_window("--name", "^General$")
        self.assertIn(hex(int(window.id)), output("xprop", "-notype", "-id", other, "WM_TRANSIENT_FOR"))
        self.assert_becomes(True, lambda: self.stacking().index(int(other)) > self.stacking().index(int(window.id)))
        x, y, width, height = window.content()
        self.assert_becomes(True, lambda: geometry_of(other)[1] > y + height + DRAWER)
        # A click on the player raises it among the windows of its level.
        output("xdotool", "mousemove", str(x + METAL[0]), str(y + METAL[1]), "click", "1")
        window.settle()
        self.assertGreater(self.stacking().index(int(other)), self.stacking().index(int(window.id)))

    def stacking(self) -> list[int]:
        told = output("xprop", "-root", "-notype", "_NET_CLIENT_LIST_STACKING")
        return [int(number, 16) for number in re.findall(r"0x[0-9a-f]+", told)]

    def test_without_a_compositor_there_are_no_margins(self) -> None:
        window = self.open_window()
        self.assertEqual(window.geometry()[2:], CONTENT)
        self.assertEqual(window.numbers("_GTK_FRAME_EXTENTS"), [0, 0, 0, 0])
        self.assertEqual(window.limits(), ["350 by 64", "550 by 64"])

    def test_without_a_compositor_its_corners_are_cut_round(self) -> None:
        with compositor():
            window = self.open_window()
            x, y, width, height = window.geometry()
            self.assertEqual(window.outline(), [(0, 0, width, height)])
        window.minimise_and_restore()
        self.assertEqual(window.outline(), [
            (2, 0, 446, 1), (1, 1, 448, 1), (0, 2, 450, 60), (1, 62, 448, 1), (2, 63, 446, 1)])

    def test_the_shadow_is_seen_through_the_round_corners_when_the_drawer_has_closed(self) -> None:
        with compositor():
            window = self.open_window()
            corners = [(x, y) for x in (0, CONTENT[0] - 1) for y in (0, CONTENT[1] - 1)]
            before = settled(lambda: [window.color(corner) for corner in corners])
            for height in (CONTENT[1] + DRAWER, CONTENT[1]):
                output("xdotool", "key", "--window", window.id, "ctrl+l")
                self.assert_becomes((CONTENT[0], height), lambda: window.content()[2:])
            self.assertEqual(settled(lambda: [window.color(corner) for corner in corners]), before)

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
            # The window does not make up for the way that the pointer went before it was a drag.
            self.assertIn(window.content()[0], range(x + 40, x + 61))
            self.assertIn(window.content()[1], range(y + 25, y + 41))
            self.assertEqual(window.content()[2:], (width, height))

    def test_a_button_that_is_held_does_not(self) -> None:
        window = self.open_window()
        window.drag(METAL, (8, 8))
        before = window.content()
        window.drag(FORWARD, (60, 40))
        self.assertEqual(window.content(), before)

    def player_property(self, name: str) -> str:
        return output("gdbus", "call", "--session", "--dest", "org.mpris.MediaPlayer2.tunedeckdemo", "--object-path",
                      "/org/mpris/MediaPlayer2", "--method", "org.freedesktop.DBus.Properties.Get",
                      "org.mpris.MediaPlayer2.Player", name)

    def position(self) -> int:
        """The player's, in microseconds."""
        return int(re.search(r"\bint64 (\d+)", self.player_property("Position"))[1])

    def test_a_seek_ends_though_a_menu_gets_the_release(self) -> None:
        window = self.open_window()
        output("xdotool", "key", "--window", window.id, "space")
        before = settled(self.position)
        x, y, _, _ = window.content()
        output("xdotool", "mousemove", str(x + FORWARD[0]), str(y + FORWARD[1]), "mousedown", "1")
        self.assertTrue(becomes(lambda: self.position() > before))
        output("xdotool", "mousedown", "3", "mouseup", "1", "mouseup", "3", "key", "Escape")
        # A seek that nothing ends goes on to the end of the track, which is minutes away.
        self.assertLess(settled(self.position), before + 60_000_000)

    def test_a_key_that_is_held_on_a_button_winds_until_it_is_released(self) -> None:
        window = self.open_window()
        self.assert_active_window_becomes(window.id)
        output("xdotool", "key", "space", "Tab", "Tab", "Tab")
        before = settled(self.position)
        output("xdotool", "keydown", "space")
        # Long after the key has begun to repeat.
        self.assertTrue(becomes(lambda: self.position() > before + 30_000_000))
        output("xdotool", "keyup", "space")
        self.assertGreater(settled(self.position), before + 30_000_000)

    def test_a_key_that_is_held_goes_to_the_next_track_once(self) -> None:
        window = self.open_window()
        self.assert_active_window_becomes(window.id)
        output("xdotool", "keydown", "ctrl", "keydown", "Right")
        # A key that began to repeat would skip through the list.
        self.assertIn("/track/1'", settled(lambda: self.player_property("Metadata"), 1.5))
        output("xdotool", "keyup", "Right", "keyup", "ctrl")

    def volume(self) -> float:
        """The player's, from 0 to 1."""
        return float(re.search(r"<([0-9.]+)>", self.player_property("Volume"))[1])

    def test_the_wheel_changes_the_volume_over_the_speakers_as_over_the_slider(self) -> None:
        window = self.open_window()
        x, y, _, _ = window.content()
        for place in (QUIET, VOLUME, LOUD):
            before = self.volume()
            output("xdotool", "mousemove", str(x + place[0]), str(y + place[1]), "click", "5")
            self.assertTrue(becomes(lambda: self.volume() < before))
            output("xdotool", "click", "4")
            self.assertTrue(becomes(lambda: self.volume() >= before))

    def test_the_window_buttons_notice_that_the_pointer_leaves_them_while_a_menu_is_open(self) -> None:
        window = self.open_window()
        before = settled(lambda: window.color(CLOSE))
        x, y, _, _ = window.content()
        output("xdotool", "mousemove", str(x + CLOSE[0]), str(y + CLOSE[1]), "click", "3")
        self.assertNotEqual(seen_when(lambda: window.color(CLOSE), lambda seen: seen != before), before)
        output("xdotool", "mousemove", "5", "5", "key", "Escape")
        self.assert_becomes(before, lambda: window.color(CLOSE))

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
                window = TunedeckWindow(window_of(stack.enter_context(running(self.build.tunedeck))))
                x, y, width, height = window.content()
                for expected in (height + 60, height):
                    output("xdotool", "key", "--window", window.id, "ctrl+l")
                    self.assert_becomes((x, y, width, expected), window.content)

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
        self.assertTrue(becomes(lambda: "_NET_WM_STATE_ABOVE" in window.states()))

    def test_a_second_start_brings_back_the_minimised_window_and_ends(self) -> None:
        window = self.open_window()
        window.minimise()
        self.assertIn("_NET_WM_STATE_HIDDEN", window.states())
        self.start_again()
        self.assertTrue(becomes(lambda: "_NET_WM_STATE_HIDDEN" not in window.states()))

    def test_once_it_is_minimised_nothing_wakes_it(self) -> None:
        window, program = self.open_program()
        window.minimise()
        settled(lambda: wake_ups(program), 1.5)  # what follows the start is over
        window.restore()
        window.minimise()
        before = settled(lambda: wake_ups(program), 0.3)
        self.assertEqual(settled(lambda: wake_ups(program), 2), before)

    def test_a_second_start_hands_on_its_startup_id_which_tells_docks_that_it_is_over(self) -> None:
        window = self.open_window()
        self.use_other_window()
        messages = StartupMessages()
        self.addCleanup(messages.close)
        asked_at = server_time()
        self.start_again(DESKTOP_STARTUP_ID=f'a "dock"\\s-1_TIME{asked_at}')
        self.assert_active_window_becomes(window.id)
        self.assertEqual(window.numbers("_NET_WM_USER_TIME"), [asked_at])
        told = output("xprop", "-notype", "-id", window.id, "_NET_STARTUP_ID").strip()
        self.assertEqual(told, f'_NET_STARTUP_ID = "a \\"dock\\"\\\\s-1_TIME{asked_at}"')
        self.assertEqual(messages.take(), [f'remove: ID="a \\"dock\\"\\\\s-1_TIME{asked_at}"'])

    def test_it_hears_a_second_start_after_another_program_has_called_it_without_end(self) -> None:
        window = self.open_window()
        subprocess.run([self.build.storm, "activate", "--rate", "5000", "--seconds", "3"], stdout=subprocess.DEVNULL,
                       check=True)
        output("xdotool", "windowminimize", "--sync", window.id)
        self.start_again()
        self.assertTrue(becomes(lambda: "_NET_WM_STATE_HIDDEN" not in window.states()))

    def test_the_first_start_tells_docks_that_it_is_over(self) -> None:
        messages = StartupMessages()
        self.addCleanup(messages.close)
        os.environ["DESKTOP_STARTUP_ID"] = startup_id = f"dock-1_TIME{server_time()}"
        self.addCleanup(os.environ.pop, "DESKTOP_STARTUP_ID")
        self.open_window()
        self.assertEqual(messages.take(), [f'remove: ID="{startup_id}"'])

    def test_a_player_that_is_shown_gets_the_time_when_the_user_asked_for_it(self) -> None:
        name = "org.mpris.MediaPlayer2.tunedeckdemo"
        entries = self.home / ".local/share/applications"
        entries.mkdir(parents=True)
        (entries / f"{name}.desktop").write_text(
            "[Desktop Entry]\nType=Application\nName=Demo\nExec=false\nDBusActivatable=true\n")
        output("dbus-send", "--print-reply", f"--dest={name}", "/org/mpris/MediaPlayer2",
               "org.tunedeck.DemoPlayer.Script", f"string:wrong DesktopEntry string {name}")
        window = self.open_window()
        calls = self.home / "calls"
        self.stack.enter_context(running("dbus-monitor", "--session", "interface='org.freedesktop.Application'",
                                         stdout=self.stack.enter_context(calls.open("w"))))
        self.assertIn("NameLost", seen_when(calls.read_text, lambda text: "NameLost" in text))
        output("xdotool", "windowactivate", "--sync", window.id)
        before = server_time()

        def calls_after_a_key() -> str:
            output("xdotool", "key", "ctrl+shift+o")
            window.settle()
            return calls.read_text()

        # The program finds out while its window opens whether the player can be shown.
        seen = re.search(r"_TIME(\d+)", seen_when(calls_after_a_key, lambda text: "_TIME" in text))
        self.assertIn(int(seen[1]), range(before, server_time() + 1))

    def test_a_start_for_an_action_leaves_the_keyboard_and_tells_docks_that_it_is_over(self) -> None:
        other = self.use_other_window()
        messages = StartupMessages()
        self.addCleanup(messages.close)
        os.environ["DESKTOP_STARTUP_ID"] = startup_id = f"dock-1_TIME{server_time()}"
        self.addCleanup(os.environ.pop, "DESKTOP_STARTUP_ID")
        program = self.stack.enter_context(running(self.build.tunedeck, "--action", "next"))
        self.assertEqual(seen_when(messages.take, bool), [f'remove: ID="{startup_id}"'])
        window = TunedeckWindow(window_of(program))
        window.settle()
        self.assertEqual(self.active_window(), int(other))
        second = subprocess.run([self.build.tunedeck, "--action", "next"], timeout=20)
        self.assertEqual(second.returncode, 0)
        self.assertEqual(seen_when(messages.take, bool), [f'remove: ID="{startup_id}"'])
        window.settle()
        self.assertEqual(self.active_window(), int(other))


class PresenceTest(DesktopTest):
    """The window comes and goes by commands and with players."""

    def setUp(self) -> None:
        self.stack = contextlib.ExitStack()
        self.addCleanup(self.stack.close)
        self.home = self.stack.enter_context(session())
        self.stack.enter_context(window_manager(self.window_manager))

    def act(self, action: str) -> None:
        subprocess.run([self.build.tunedeck, "--action", action], timeout=20, check=True)

    def is_on_screen(self, window: TunedeckWindow) -> bool:
        # The question fails where the window vanishes meanwhile.
        question = ("xwininfo", "-id", window.id)
        return "IsViewable" in subprocess.run(question, stdout=subprocess.PIPE, text=True).stdout

    def test_show_or_hide_brings_it_back_to_its_place_and_to_the_keyboard(self) -> None:
        window = self.open_window()
        output("xdotool", "windowmove", "--sync", window.id, "200", "300")
        place = geometry_of(window.id)
        self.act("show-or-hide")
        self.assert_becomes(False, lambda: self.is_on_screen(window))
        self.use_other_window()
        self.act("show-or-hide")
        self.assert_becomes(True, lambda: self.is_on_screen(window))
        self.assert_active_window_becomes(window.id)
        self.assert_becomes(place, lambda: geometry_of(window.id))

    def test_playlists_opens_the_drawer(self) -> None:
        window = self.open_window()
        self.act("playlists")
        self.assert_becomes(CONTENT[1] + DRAWER, lambda: geometry_of(window.id)[3])
        self.act("playlists")
        self.assert_becomes(CONTENT[1], lambda: geometry_of(window.id)[3])

    def test_a_start_for_showing_it_shows_it_with_the_keyboard(self) -> None:
        self.use_other_window()
        window = self.open_window("--action", "show-or-hide")
        self.assert_active_window_becomes(window.id)
        window.settle()
        self.assertTrue(self.is_on_screen(window))

    def test_a_window_that_comes_with_a_player_leaves_the_keyboard(self) -> None:
        settings = self.home / ".config/tunedeck"
        settings.mkdir(parents=True)
        (settings / "tunedeck.conf").write_text("[General]\nShowOnlyWithPlayer=true\n")
        other = self.use_other_window()
        program = self.stack.enter_context(running(self.build.tunedeck, "--autostart"))
        for _ in range(2):
            with demo_player(self.build, "--play", "--track", "0"):
                window = TunedeckWindow(window_of(program))
                window.settle()
                self.assertEqual(self.active_window(), int(other))
                self.assertEqual(window.numbers("_NET_WM_USER_TIME"), [0])
            self.assert_becomes(False, lambda: self.is_on_screen(window))
        self.start_again()
        self.assert_active_window_becomes(window.id)


class KeyboardTest(DesktopTest):
    """A window manager that gives the keyboard focus only to programs with a valid startup id."""

    window_manager = "metacity"

    def setUp(self) -> None:
        super().setUp()
        self.window = self.open_window()
        self.before = server_time()
        self.other = self.use_other_window()

    def test_a_second_start_takes_the_keyboard_by_right_of_its_startup_id(self) -> None:
        self.start_again(DESKTOP_STARTUP_ID=f"dock-1_TIME{server_time()}")
        self.assert_active_window_becomes(self.window.id)

    def test_a_second_start_without_a_startup_id_is_what_the_user_asks_for_now(self) -> None:
        self.start_again()
        self.assert_active_window_becomes(self.window.id)

    def test_who_has_turned_to_another_window_since_keeps_the_keyboard(self) -> None:
        self.start_again(DESKTOP_STARTUP_ID=f"dock-1_TIME{self.before}")
        self.window.settle()
        self.assertEqual(self.active_window(), int(self.other))


if __name__ == "__main__":
    DesktopTest.build = Build(Path(sys.argv.pop(1)))
    unittest.main()
