# SPDX-License-Identifier: MIT
"""How soon the program does what the user asks for. The other desktop tests are patient, for busy machines.

Usage: prompt_test.py BUILD-FOLDER (openbox | metacity | xfwm4 | kwin_x11 | sway | weston)

Exits with 77 if the desktop is not installed.
"""

import contextlib
import re
import shutil
import statistics
import sys
import time
import unittest
from collections.abc import Callable
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
from session import (  # noqa: E402
    Build, becomes, demo_player, running, seen_when, session, settled, sway, until, weston, window_manager)
from wayland_test import CORNER, Picture, click, point  # noqa: E402
from window_test import FORWARD  # noqa: E402
from x11window import TunedeckWindow, output, window_of  # noqa: E402

SKIPPED = 77
WAYLAND = {"sway": sway, "weston": weston}
# In seconds, with the time that the test needs to look. A user wonders after that.
USERS_PATIENCE = 1.5
STILL = 3  # seconds, longer than between two of the first clicks
# The one in the middle counts: a machine may have something else to do for a moment.
ATTEMPTS = 3
PLAYER = ("--dest", "org.mpris.MediaPlayer2.tunedeckdemo", "--object-path", "/org/mpris/MediaPlayer2")


def title() -> str:
    metadata = output("gdbus", "call", "--session", *PLAYER, "--method", "org.freedesktop.DBus.Properties.Get",
                      "org.mpris.MediaPlayer2.Player", "Metadata")
    return re.search(r"'xesam:title': <[\"'](.*?)[\"']>", metadata)[1]


def seconds_to_next_track(act: Callable[[], None]) -> float:
    before, start = title(), time.monotonic()
    act()
    until(lambda: title() != before, "the next track plays")
    return time.monotonic() - start


class PromptTest(unittest.TestCase):
    build: Build
    desktop: str

    def setUp(self) -> None:
        self.stack = self.enterContext(contextlib.ExitStack())
        self.stack.enter_context(session())
        desktop = WAYLAND[self.desktop]() if self.desktop in WAYLAND else window_manager(self.desktop)
        self.stack.enter_context(desktop)
        self.stack.enter_context(demo_player(self.build, "--play", "--track", "0"))
        self.forward = self.on_wayland() if self.desktop in WAYLAND else self.on_x11()
        # The first click may come before the program follows the player.
        before = title()
        until(lambda: self.click_forward() or becomes(lambda: title() != before, 1), "the program follows the player")
        # A slow program may still have some of these clicks to handle. Their effects must not be taken for later ones'.
        settled(title, STILL)

    def on_x11(self) -> tuple[int, int]:
        """Opens the window, and returns the place of its forward button."""
        return TunedeckWindow(window_of(self.stack.enter_context(running(self.build.tunedeck)))).on_screen(FORWARD)

    def on_wayland(self) -> tuple[int, int]:
        # A nested desktop may know only how far the pointer moves. These moves end in the corner from anywhere.
        point(0, 0)
        point(*CORNER)
        self.stack.enter_context(running(self.build.tunedeck))
        x, y, *_ = seen_when(lambda: settled(lambda: Picture().frame()), lambda frame: frame is not None)
        return x + FORWARD[0], y + FORWARD[1]

    def click_forward(self) -> None:
        if self.desktop in WAYLAND:
            click(*self.forward)
        else:
            output("xdotool", "mousemove", *map(str, self.forward), "click", "1")

    def assert_prompt(self, act: Callable[[], None]) -> None:
        seconds = [seconds_to_next_track(act) for _ in range(ATTEMPTS)]
        self.assertLess(statistics.median(seconds), USERS_PATIENCE, seconds)

    def test_a_click_reaches_the_player(self) -> None:
        self.assert_prompt(self.click_forward)

    def test_a_key_reaches_the_player(self) -> None:
        self.assert_prompt(lambda: output("xdotool", "key", "ctrl+Right"))


if __name__ == "__main__":
    PromptTest.build = Build(Path(sys.argv.pop(1)))
    PromptTest.desktop = sys.argv.pop(1)
    if not shutil.which(PromptTest.desktop):
        print(f"{PromptTest.desktop} is not installed.")
        sys.exit(SKIPPED)
    unittest.main()
