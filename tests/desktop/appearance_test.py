# SPDX-License-Identifier: MIT
"""All windows beside a settings portal that says whether the desktop is dark, as their pixels show it.

Usage: appearance_test.py BUILD-FOLDER [TEST...]

Exits with 77 if the library that the portal needs is not installed.
"""

import subprocess
import sys
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tools"))
from session import Build, running, seen_when  # noqa: E402
from window_test import DISPLAY, DesktopTest  # noqa: E402
from x11window import TunedeckWindow, geometry_of, output, shown_window, shown_windows  # noqa: E402
from xserver import XServer  # noqa: E402

SKIPPED = 77
try:
    import gi

    gi.require_version("Gio", "2.0")
except (ImportError, ValueError):
    print("Skipped: it needs python3-gi.")
    sys.exit(SKIPPED)

PORTAL = ROOT / "tools/random_use/portal.py"
GLASS = (434, 20), (434, 21)  # two rows of it
DARK, LIGHT = 1, 2  # the portal's values
# The menu opens where the pointer is.
OPENED = {
    "Preferences": (("key", "ctrl+comma"), "^General$"), "Help": (("key", "F1"), "Help"),
    "About": (("click", "3", "sleep", "0.2", "key", "--delay", "40", "Down", "Right", "Return"), "^About$"),
}


def background(window: str) -> str:
    """That of a menu or an ordinary window. Texts and pictures cover less of it."""
    x, y, width, height = geometry_of(window)
    with XServer() as server:
        greens = server.picture(x, y, width, height)[1::4]
    lightness = max(range(256), key=greens.count)
    return "dark" if lightness < 90 else "light" if lightness > 180 else f"in between: {lightness}"


def skin(player: TunedeckWindow) -> str:
    """The metal is always light. The glass has lines that are seen only where it is dark."""
    upper, lower = (player.color(place)[1] for place in GLASS)
    return "dark" if abs(upper - lower) > 10 else "light"


class AppearanceTest(DesktopTest):
    def setUp(self) -> None:
        super().setUp()
        options = {"stdin": subprocess.PIPE, "stdout": subprocess.PIPE}
        self.portal = self.stack.enter_context(running(sys.executable, "-B", PORTAL, **options))
        self.assertEqual(self.portal.stdout.readline(), "ready\n")

    def be(self, color_scheme: int) -> None:
        line = f"org.freedesktop.appearance color-scheme uint32 {color_scheme}\n"
        self.portal.stdin.write(line)
        self.portal.stdin.flush()
        self.assertEqual(self.portal.stdout.readline(), line)

    def set_classic(self, is_classic: bool) -> None:
        settings = self.home / ".config/tunedeck/tunedeck.conf"
        settings.parent.mkdir(parents=True, exist_ok=True)
        settings.write_text(f"[General]\nAppearanceClassic={str(is_classic).lower()}\n")

    def open_other(self, window: TunedeckWindow, name: str) -> str:
        keys, title = OPENED[name]
        self.assert_active_window_becomes(window.id)
        window.point(DISPLAY)
        output("xdotool", *keys)
        other = shown_window("--name", title)
        self.assert_active_window_becomes(other)
        return other

    def open_menu(self, window: TunedeckWindow, process: subprocess.Popen) -> str:
        window.point(DISPLAY)
        output("xdotool", "click", "3")

        def shown() -> set[str]:
            return {*shown_windows("--pid", str(process.pid))} - {window.id}

        return seen_when(shown, bool).pop()

    def assert_become(self, expected: str, player: TunedeckWindow, other: str) -> None:
        self.assert_becomes(expected, lambda: skin(player))
        self.assert_becomes(expected, lambda: background(other))

    def test_on_a_dark_desktop_each_window_is_dark_and_follows_it(self) -> None:
        self.set_classic(False)
        self.be(DARK)
        window, process = self.open_program()
        window.move_to(400, 20)
        menu = self.open_menu(window, process)
        self.assert_become("dark", window, menu)
        output("xdotool", "key", "Escape")
        for name in OPENED:
            other = self.open_other(window, name)
            self.assert_become("dark", window, other)
            self.be(LIGHT)
            self.assert_become("light", window, other)
            self.be(DARK)
            self.assert_become("dark", window, other)
            output("xdotool", "windowactivate", "--sync", other, "key", "ctrl+w")

    def test_with_the_classic_appearance_each_window_is_light(self) -> None:
        self.set_classic(True)
        self.be(DARK)
        window, process = self.open_program()
        window.move_to(400, 20)
        menu = self.open_menu(window, process)
        self.assert_become("light", window, menu)
        output("xdotool", "key", "Escape")
        for name in OPENED:
            other = self.open_other(window, name)
            self.assert_become("light", window, other)
            output("xdotool", "windowactivate", "--sync", other, "key", "ctrl+w")


if __name__ == "__main__":
    DesktopTest.build = Build(Path(sys.argv.pop(1)))
    unittest.main()
