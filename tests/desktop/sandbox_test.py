# SPDX-License-Identifier: MIT
"""The installed program in a sandbox that has the permissions of the Flatpak manifest and no others.

Usage: sandbox_test.py BUILD-FOLDER (x11 | weston) [TEST...]

Exits with 77 if this machine has no bubblewrap, proxy for buses or desktop, or lets nobody make a sandbox.
"""

import contextlib
import os
import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
from sandbox import PROGRAMS, Sandbox, refusal  # noqa: E402
from session import (  # noqa: E402
    ACCESSIBILITY_BUS_LAUNCHER, Build, accessibility_bus, becomes, demo_player, running, seen_when, session, settled,
    weston)
from shots import CONTROLS  # noqa: E402
from wayland_test import Frame, Picture, click, point_away  # noqa: E402
from window_test import CONTENT, DRAWER, DesktopTest, server_time  # noqa: E402
from x11window import TunedeckWindow, output, shown_window, shown_windows  # noqa: E402

SKIPPED = 77
ID, PATH = "org.tunedeck.Tunedeck", "/org/tunedeck/Tunedeck"
PLAYER = "org.mpris.MediaPlayer2.tunedeckdemo"
PLAY = (74, 21)  # in the content
TITLE = "Quince Harbour Timetable"
NOT_LAUNCHED = "(Not Possible in a Sandbox)"


def call(name: str, path: str, method: str, *arguments: str) -> str:
    return output("gdbus", "call", "--session", "--dest", name, "--object-path", path, "--method", method, "--",
                  *arguments)


class ProgramInSandbox(unittest.TestCase):
    """The program in a sandbox, which follows a player outside."""
    build: Build
    application: Path
    home: Path
    stack: contextlib.ExitStack

    def make_sandbox(self) -> None:
        (self.home / "Music").mkdir()
        self.sandbox = Sandbox(self.application, self.home)

    def within(self, *command: str) -> str:
        """What a program prints in the sandbox."""
        with self.sandbox.running(*command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT) as process:
            return process.communicate(timeout=20)[0]

    def tell(self, line: str) -> None:
        output(str(self.build.demo_player), "--tell", line)

    def commands(self) -> list[str]:
        """Those that the player got since the last call."""
        told = call(PLAYER, "/org/mpris/MediaPlayer2", "org.tunedeck.DemoPlayer.TakeCalls")
        return [command for command in re.findall(r"'([^']*)'", told) if not command.startswith(("Get", "Introspect"))]

    def assert_gets(self, expected: str) -> None:
        got: list[str] = []
        self.assertTrue(becomes(lambda: got.extend(self.commands()) or any(
            re.fullmatch(expected, command) for command in got)), f"{expected} is not among {got}")

    def dock_menu(self) -> str:
        return call(ID, PATH + "/DockMenu", "com.canonical.dbusmenu.GetLayout", "0", "-1", "[]")

    def item(self, title: str) -> tuple[str, str]:
        """The number and the properties of the dock menu's item; both empty if there is none."""
        found = re.search(rf"\((\d+), (\{{[^{{}}]*'label': <'[^']*{re.escape(title)}[^{{}}]*\}})", self.dock_menu())
        return (found[1], found[2]) if found else ("", "")

    def assert_dock_has(self, title: str) -> None:
        self.assertTrue(becomes(lambda: self.item(title)[0] != ""), f"{title} is not in {self.dock_menu()}")


class SandboxTest(ProgramInSandbox, DesktopTest):
    def setUp(self) -> None:
        super().setUp()
        self.make_sandbox()

    def open_in_sandbox(self, **options: str) -> TunedeckWindow:
        self.stack.enter_context(self.sandbox.running("/app/bin/tunedeck", **options))
        # The number of its process is another one outside.
        return TunedeckWindow(shown_window("--class", "tunedeck"))

    def test_it_keeps_the_home_the_network_and_other_programs_from_what_runs_in_it(self) -> None:
        (self.home / "secret").touch()
        (self.home / "Music/song").touch()
        self.assertEqual(self.within("ls", str(self.home)).split(), ["Music"])
        self.assertEqual(self.within("ls", str(self.home / "Music")).split(), ["song"])
        self.assertIn("Read-only file system", self.within("touch", str(self.home / "Music/other")))
        self.assertEqual(re.findall(r"^ *(\w+):", self.within("cat", "/proc/net/dev"), re.MULTILINE), ["lo"])
        seen = self.within("gdbus", "call", "--session", "--dest", "org.freedesktop.DBus", "--object-path", "/",
                           "--method", "org.freedesktop.DBus.ListNames")
        self.assertEqual(set(re.findall(r"'([a-z][^']*)'", seen)), {"org.freedesktop.DBus", PLAYER})

    def test_it_follows_a_player_that_goes_and_comes_back(self) -> None:
        self.open_in_sandbox()
        self.assert_dock_has(f"Track: {TITLE}")
        self.tell("die")
        self.assert_dock_has(NOT_LAUNCHED)
        self.stack.enter_context(demo_player(self.build, "--play", "--track", "1"))
        self.assert_dock_has("Track: Borrowed Thimble Waltz")

    def test_a_click_and_a_command_line_reach_the_player(self) -> None:
        window = self.open_in_sandbox()
        self.assert_dock_has(TITLE)
        window.point(PLAY)
        output("xdotool", "click", "1")
        self.assert_gets("PlayPause|Pause")
        with self.sandbox.running("/app/bin/tunedeck", "--action", "next") as second:
            self.assertEqual(second.wait(20), 0)
        self.assert_gets("Next")

    def choose_last_playlist(self, window: TunedeckWindow) -> None:
        output("xdotool", "key", "--window", window.id, "ctrl+l")
        self.assert_becomes((CONTENT[0], CONTENT[1] + DRAWER), lambda: window.content()[2:])
        window.point(CONTROLS["picker"])
        output("xdotool", "click", "1")
        self.assert_becomes(2, lambda: len(shown_windows("--class", "tunedeck")))
        output("xdotool", "key", "--delay", "100", "End", "Return")
        self.assert_becomes(1, lambda: len(shown_windows("--class", "tunedeck")))
        window.point(CONTROLS["done"])
        output("xdotool", "click", "1")

    def test_a_playlist_of_the_player_is_chosen(self) -> None:
        window = self.open_in_sandbox()
        self.assert_dock_has(TITLE)
        self.choose_last_playlist(window)
        self.assert_gets("ActivatePlaylist .*")

    def test_a_playlist_file_in_the_music_folder_is_opened_by_the_player(self) -> None:
        (self.home / "Music/evening.m3u").write_text("song.ogg\n")
        self.tell("playlists off")
        self.tell("wrong SupportedMimeTypes array audio/x-mpegurl")
        window = self.open_in_sandbox()
        self.assert_dock_has(TITLE)
        self.choose_last_playlist(window)
        self.assert_gets(f"OpenUri file://{re.escape(str(self.home))}/Music/evening.m3u")

    def test_a_docks_menu_shows_the_track_and_commands_the_player(self) -> None:
        self.open_in_sandbox()
        self.assert_dock_has(f"Track: {TITLE}")
        number, _ = self.item("Next")
        call(ID, PATH + "/DockMenu", "com.canonical.dbusmenu.Event", number, "clicked", "<0>", "0")
        self.assert_gets("Next")

    def test_what_the_sandbox_forbids_is_said(self) -> None:
        self.open_in_sandbox()
        self.assert_dock_has("The sandbox keeps the sound server from Tunedeck")
        self.tell("die")
        self.assert_dock_has(NOT_LAUNCHED)
        self.assertIn("'enabled': <false>", self.item(NOT_LAUNCHED)[1])

    def test_on_a_dark_desktop_it_is_dark(self) -> None:
        try:
            from appearance_test import DARK, PORTAL, skin
        except SystemExit:
            self.skipTest("it needs python3-gi")
        options = {"stdin": subprocess.PIPE, "stdout": subprocess.PIPE}
        portal = self.stack.enter_context(running(sys.executable, "-B", PORTAL, **options))
        self.assertEqual(portal.stdout.readline(), "ready\n")
        portal.stdin.write(f"org.freedesktop.appearance color-scheme uint32 {DARK}\n")
        portal.stdin.flush()
        portal.stdout.readline()
        self.sandbox.settings.parent.mkdir()
        self.sandbox.settings.write_text("[General]\nAppearanceClassic=false\n")
        window = self.open_in_sandbox()
        self.assert_becomes("dark", lambda: skin(window))

    def test_a_second_start_brings_the_first_to_the_front(self) -> None:
        window = self.open_in_sandbox()
        self.use_other_window()
        with self.sandbox.running("/app/bin/tunedeck") as second:
            self.assertEqual(second.wait(20), 0)
        self.assert_active_window_becomes(window.id)
        self.assertEqual(shown_windows("--class", "tunedeck"), [window.id])

    def test_a_dock_that_was_clicked_gives_it_the_keyboard(self) -> None:
        window = self.open_in_sandbox()
        self.use_other_window()
        call(ID, PATH, "org.freedesktop.Application.Activate",
             f"{{'desktop-startup-id': <'dock_TIME{server_time()}'>}}")
        self.assert_active_window_becomes(window.id)

    def test_a_screen_reader_reads_its_window(self) -> None:
        if not ACCESSIBILITY_BUS_LAUNCHER.exists():
            self.skipTest("it needs at-spi2-core")
        if qt_version() < (6, 8):
            self.skipTest("Qt before 6.8 does not announce a program whose accessibility bus has a proxy")
        self.stack.enter_context(accessibility_bus())
        bus = AccessibilityBus()
        self.open_in_sandbox(accessibility_bus=bus.address)
        self.assertTrue(becomes(lambda: {"Tunedeck", "Pause", "Volume"} <= set(bus.names())), bus.names())


class SandboxOnWaylandTest(ProgramInSandbox):
    def setUp(self) -> None:
        self.stack = contextlib.ExitStack()
        self.addCleanup(self.stack.close)
        self.home = self.stack.enter_context(session())
        self.stack.enter_context(weston())
        self.stack.enter_context(demo_player(self.build, "--play", "--track", "0"))
        self.make_sandbox()
        point_away()

    def open_in_sandbox(self) -> Frame:
        self.stack.enter_context(self.sandbox.running("/app/bin/tunedeck"))
        seen_when(lambda: Picture().frame(), lambda frame: frame is not None)
        return settled(lambda: Picture().frame())

    def test_it_has_the_desktops_socket_and_no_x11(self) -> None:
        variables = self.within("env")
        self.assertIn("WAYLAND_DISPLAY=", variables)
        self.assertNotRegex(variables, "(?m)^DISPLAY=")
        self.assertNotIn(".X11-unix", self.within("ls", "-a", "/tmp"))

    def test_it_follows_a_player_and_a_click_and_a_command_line_reach_it(self) -> None:
        x, y, *size = self.open_in_sandbox()
        self.assertEqual(tuple(size), CONTENT)
        self.assert_dock_has(f"Track: {TITLE}")
        click(x + PLAY[0], y + PLAY[1])
        self.assert_gets("PlayPause|Pause")
        with self.sandbox.running("/app/bin/tunedeck", "--action", "next") as second:
            self.assertEqual(second.wait(20), 0)
        self.assert_gets("Next")

    def test_that_nothing_keeps_it_above_is_said_of_the_sandbox(self) -> None:
        self.open_in_sandbox()
        item = "Keep Above All Other Windows (Not Possible in a Sandbox)"
        self.assert_dock_has(item)
        self.assertIn("'enabled': <false>", self.item(item)[1])
        self.assertIn("The sandbox keeps Tunedeck from the desktop",
                      self.within("/app/bin/tunedeck", "--action", "keep-above"))


class AccessibilityBus:
    def __init__(self) -> None:
        told = call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus.GetAddress")
        self.address = re.search(r"'(.*)'", told)[1]

    def ask(self, name: str, path: str, method: str, *arguments: str) -> str:
        """The answer; empty if there is none."""
        command = ("gdbus", "call", "--address", self.address, "--dest", name, "--object-path", path, "--method",
                   method, "--", *arguments)
        return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout

    def names(self) -> list[str]:
        """Those of all that can be read on the bus."""
        names = []
        waiting = [("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")]
        while waiting:
            element = waiting.pop()
            children = self.ask(*element, "org.a11y.atspi.Accessible.GetChildren")
            waiting += re.findall(r"\('(:[^']*)', (?:objectpath )?'([^']*)'\)", children)
            named = self.ask(*element, "org.freedesktop.DBus.Properties.Get", "org.a11y.atspi.Accessible", "Name")
            names += re.findall(r"<'(.*)'>", named)
        return names


def qt_version() -> tuple[int, ...]:
    """That of the Qt which the program loads."""
    library = next(Path("/usr/lib").glob("*/libQt6Core.so.6.*.*"))
    return tuple(int(number) for number in library.name.split(".so.")[1].split("."))


def install(build: Build, folder: Path) -> Path:
    subprocess.run(["cmake", "--install", build.folder, "--prefix", "/app"], env=os.environ | {"DESTDIR": str(folder)},
                   stdout=subprocess.DEVNULL, check=True)
    return folder / "app"


def why_skipped(programs: tuple[str, ...]) -> str:
    missing = [program for program in programs if not shutil.which(program)]
    return f"{missing[0]} is not installed" if missing else refusal()


def main() -> None:
    ProgramInSandbox.build = Build(Path(sys.argv[1]))
    desktop, test = {"x11": ((), "SandboxTest"), "weston": (("weston",), "SandboxOnWaylandTest")}[sys.argv[2]]
    if why := why_skipped((*PROGRAMS, *desktop)):
        print(f"Skipped: {why}.")
        sys.exit(SKIPPED)
    with tempfile.TemporaryDirectory() as folder:
        ProgramInSandbox.application = install(ProgramInSandbox.build, Path(folder))
        unittest.main(argv=sys.argv[:1] + sys.argv[3:], defaultTest=test)


if __name__ == "__main__":
    main()
