# SPDX-License-Identifier: MIT
"""Brings a used window to rest and compares it with a fresh one in the same state."""

import time
from pathlib import Path

from session import screen_picture, seen_when, until

from random_use.actions import ORDERLY
from random_use.desktop import Desktop, NotAsExpected, xdotool
from random_use.hand import Hand
from random_use.pictures import look_alike, named_differences, shown, write_picture
from random_use.resources import Held, held, wake_ups

FITTING_TRACK = "2"  # a track of the demo player whose title stands still
ANOTHER_VOLUME = "0.5"
COMING_TO_REST = 15  # seconds that what an action started may go on
QUIET = 2  # seconds without a wake-up
MOST_TABS = 25
CLOSED_HEIGHT = 64


def focused(frames: list[dict]) -> str:
    """The control that has the keyboard, or nothing."""
    return next((f"{element['role']} {element['name']}" for frame in frames for element in shown(frame)
                 if "focused" in element["states"] and element is not frame), "")


def descriptions(frames: list[dict]) -> list[str]:
    """What a screen reader finds."""
    return [f"{element['role']} {element['name']!r} {element['description']!r} {' '.join(element['states'])} "
            f"{element['place']} {element.get('value', '')}" for frame in frames for element in shown(frame)]


def player_lines(process: str, kind: str, seconds: str, volume: str, shuffle: str, loop: str, playlists: str,
                 *title: str) -> list[str]:
    # Without playlists, the player plays none of them, and none of those that it gets again. What a playlist means that
    # plays depends on what its process has done before.
    return [*(["playlists 0"] if process == "same" else ()), f"track {FITTING_TRACK}",
            f"title {' '.join(title)}".strip(), "pause" if kind == "paused" else "stop",
            f"seek {seconds}", f"volume {volume}", f"shuffle {shuffle}", f"loop {loop}", f"playlists {playlists}"]


def start_player(desktop: Desktop, words: list[str]) -> None:
    """The player is in its state before it appears."""
    desktop.start_player(1, *(option for line in player_lines(*words) for option in ("--do", line)))


class Rest:
    def __init__(self, used: Desktop, fresh: Desktop, hand: Hand, folder: Path) -> None:
        self.used, self.fresh, self.hand, self.folder = used, fresh, hand, folder

    def check(self, words: list[str]) -> Held:
        """`words` are those of an action `rest`."""
        self.hand.let_go()
        self.calm_player(words)
        self.reload_playlists()
        with self.fresh.entered():
            self.start_fresh(words)
        try:
            self.align_focus()
            self.compare()
        finally:
            with self.fresh.entered():
                self.fresh.end_program()
                self.fresh.end_players()
        self.await_quiet()
        self.check_log()
        return held(self.used.program.pid, self.used.window)

    # The same state

    def calm_player(self, words: list[str]) -> None:
        self.used.end_player(2)
        # Until they end, they may send signals, as they did before.
        self.used.end_replaced_players()
        if words == ["gone"]:
            self.used.end_player(1)
            return
        if words[0] == "same" and self.used.is_player_running(1):
            self.used.tell_player(1, *(line for line in ORDERLY if line != "late 0"), "right all", "rate 1")
            # It may still carry out late what the hand did last.
            self.used.await_player(1)
            # A player that kept its volume is believed to do so until the volume changes.
            self.used.tell_player(1, "late 0", f"volume {ANOTHER_VOLUME if words[3] == '0' else '0'}")
            self.used.await_player(1)
            self.used.tell_player(1, *player_lines(*words))
        else:
            shown_before = self.title()
            if self.used.is_player_running(1):
                self.used.end_player(1)
                # A player that takes its name again at once is still the same one.
                seen_when(self.title, lambda now: now != shown_before, 2)
            start_player(self.used, words)

    def title(self) -> str:
        return next((element["name"] for frame in self.used.frames() for element in shown(frame)
                     if element["role"] == "notification"), "")

    def reload_playlists(self) -> None:
        """The picker shows what was played when the drawer was opened, so an open drawer is opened once more."""
        opened = seen_when(self.used.content, lambda content: content[2] > 0)
        if opened[3] > CLOSED_HEIGHT:
            for height in (CLOSED_HEIGHT, opened[3]):
                xdotool("key", "ctrl+l")
                until(lambda: self.used.content()[3] == height, f"the drawer is as high as {height}")  # noqa: B023

    def start_fresh(self, words: list[str]) -> None:
        fresh = self.fresh
        fresh.write_settings(self.used.settings())
        for setting, line in self.used.portal_lines.items():
            if fresh.portal_lines.get(setting) != line:
                fresh.change_portal(*line.split(maxsplit=2))
        if words != ["gone"]:
            start_player(fresh, words)
        x, y = self.hand.outside()
        xdotool("mousemove", x, y)
        fresh.start_program()
        xdotool("windowactivate", fresh.window)
        until(lambda: fresh.active_window() == fresh.window, "the fresh window is active")
        # The used window's place can be read on its own desktop alone.
        with self.used.entered():
            place = seen_when(self.used.content, lambda content: content[2] > 0)
        if place[3] > CLOSED_HEIGHT:
            xdotool("key", "ctrl+l")
            until(lambda: fresh.content()[3] == place[3], "the fresh window's drawer is open")
        fresh.place(place)

    def align_focus(self) -> None:
        """Takes the keyboard to the next control of the used window, and to the same one of the fresh window."""
        xdotool("key", "Tab")
        self.used.await_program()
        expected = seen_when(lambda: focused(self.used.frames()), bool, 3)
        if not expected:
            raise NotAsExpected("Tab takes the keyboard to no control")
        with self.fresh.entered():
            reached = []
            for _ in range(MOST_TABS):
                xdotool("key", "Tab")
                self.fresh.await_program()
                reached.append(seen_when(lambda: focused(self.fresh.frames()), bool, 3))
                if reached[-1] == expected:
                    return
        raise NotAsExpected(f"Tab reaches {expected} in the used window, and in a fresh one only {reached}")

    # The comparison

    def compare(self) -> None:
        used, fresh = seen_when(self.pictures, lambda seen: look_alike(*seen), 5)
        told, expected = seen_when(self.told, lambda seen: seen[0] == seen[1], 5)
        if not look_alike(used, fresh):
            write_picture(fresh, self.folder / "fresh.png")
            differences = named_differences(used, fresh, self.used.frames())
            raise NotAsExpected(f"used.png and fresh.png differ in: {', '.join(differences)}")
        if told != expected:
            lines = [f"{line}, used" for line in told if line not in expected]
            lines += [f"{line}, fresh" for line in expected if line not in told]
            raise NotAsExpected("a screen reader is told:\n" + "\n".join(lines))

    def pictures(self) -> tuple[bytes, bytes]:
        with self.fresh.entered():
            fresh = screen_picture()
        return screen_picture(), fresh

    def told(self) -> tuple[list[str], list[str]]:
        with self.fresh.entered():
            fresh = self.fresh.frames()
        return descriptions(self.used.frames()), descriptions(fresh)

    # Quiet

    def await_quiet(self) -> None:
        process = self.used.program.pid
        deadline = time.monotonic() + COMING_TO_REST
        while True:
            self.used.calls_of_player()
            before = wake_ups(process)
            time.sleep(QUIET)
            woken, calls = wake_ups(process) - before, self.used.calls_of_player()
            if not woken and not calls:
                return
            if time.monotonic() > deadline:
                raise NotAsExpected(f"the program does not come to rest: {woken} wake-ups in {QUIET} s, "
                                    f"calls to the player: {', '.join(calls) or 'none'}")

    def check_log(self) -> None:
        if text := self.used.log.read_text(errors="replace"):
            raise NotAsExpected(f"the program complains:\n{text}")
