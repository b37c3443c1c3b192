# SPDX-License-Identifier: MIT
"""A desktop with players and Tunedeck: a display, a window manager, a bus, a home and the services of its own."""

import contextlib
import json
import os
import re
import subprocess
import sys
from collections.abc import Iterator
from pathlib import Path
from unittest import mock

import gi
from session import Build, accessibility_bus, becomes, compositor, running, seen_when, session, until, window_manager
from xserver import SUBSTRUCTURE_NOTIFY, SUBSTRUCTURE_REDIRECT, XServer

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

SCREEN = (1280, 720)
TITLE = "Tunedeck"
HERE = Path(__file__).resolve().parent
PLAYERS = {1: "tunedeckdemo", 2: "seconddemo"}
APPEARANCE, GNOME = "org.freedesktop.appearance", "org.gnome.desktop.interface"
SETTINGS = Path(".config/tunedeck/tunedeck.conf")  # in the home
OPENBOX = Path("/etc/xdg/openbox/rc.xml")
ANSWER = 5  # seconds that the window gets to answer


class NotAsExpected(Exception):
    """What random use has found."""


def output(*command: str | Path) -> str:
    """What a command prints. It may fail: windows and players come and go."""
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, timeout=30).stdout


def xdotool(*words: object) -> str:
    return output("xdotool", *(str(word) for word in words))


def end(player: subprocess.Popen) -> None:
    player.terminate()
    player.wait()
    player.stdout.close()


class Desktop:
    def __init__(self, stack: contextlib.ExitStack, build: Build, manager: str) -> None:
        self.build, self.stack = build, stack
        self.home = stack.enter_context(session("-wr"))
        take_menus_from_openbox(self.home)
        give_browser(self.home)
        hide_applications(self.home)
        for part in (accessibility_bus(), window_manager(manager), compositor()):
            stack.enter_context(part)
        self.environment = dict(os.environ)
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.bus = Gio.DBusConnection.new_for_address_sync(os.environ["DBUS_SESSION_BUS_ADDRESS"], flags)
        self.players: dict[int, subprocess.Popen] = {}
        self.replaced: list[subprocess.Popen] = []
        self.portal = stack.enter_context(subprocess.Popen(
            (sys.executable, "-B", HERE / "portal.py"), text=True, stdin=subprocess.PIPE, stdout=subprocess.PIPE))
        stack.callback(self.portal.terminate)
        self.portal.stdout.readline()
        self.portal_lines: dict[str, str] = {}  # by group and key
        stack.callback(self.end_players)
        self.log = self.home / "log"
        self.program: subprocess.Popen | None = None
        self.window = 0

    @contextlib.contextmanager
    def entered(self) -> Iterator[None]:
        """Commands are carried out on this desktop."""
        with mock.patch.dict(os.environ, self.environment, clear=True):
            yield

    # Players

    def start_player(self, number: int, *options: str) -> None:
        if self.is_player_running(number) and "--replace" not in options:
            return
        self.end_player(number, replaced="--replace" in options)
        player = subprocess.Popen((self.build.demo_player, "--name", PLAYERS[number], *options), text=True,
                                  stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.players[number] = player
        player.stdout.readline()

    def is_player_running(self, number: int) -> bool:
        return number in self.players and self.players[number].poll() is None

    def end_player(self, number: int, replaced: bool = False) -> None:
        """A player that is replaced ends after its successor has its name."""
        if player := self.players.pop(number, None):
            if replaced:
                self.replaced.append(player)
            else:
                end(player)

    def end_replaced_players(self) -> None:
        while self.replaced:
            end(self.replaced.pop())

    def end_players(self) -> None:
        for number in tuple(self.players):
            self.end_player(number)
        self.end_replaced_players()

    def tell_player(self, number: int, *lines: str) -> None:
        for line in lines:
            self.call_player(number, "Script", GLib.Variant("(s)", (line,)))

    def calls_of_player(self) -> list[str]:
        """What the first player was asked since the last time."""
        return self.call_player(1, "TakeCalls", None)[0] if 1 in self.players else []

    def await_player(self, number: int) -> None:
        """Returns when a player that answers late has carried out all earlier calls."""
        flags, properties = Gio.DBusCallFlags.NO_AUTO_START, "org.freedesktop.DBus.Properties"
        self.bus.call_sync(f"org.mpris.MediaPlayer2.{PLAYERS[number]}", "/org/mpris/MediaPlayer2", properties, "GetAll",
                           GLib.Variant("(s)", ("org.mpris.MediaPlayer2",)), None, flags, 10_000)

    def call_player(self, number: int, method: str, arguments: GLib.Variant | None) -> tuple:
        try:
            return self.bus.call_sync(
                f"org.mpris.MediaPlayer2.{PLAYERS[number]}", "/org/mpris/MediaPlayer2", "org.tunedeck.DemoPlayer",
                method, arguments, None, Gio.DBusCallFlags.NO_AUTO_START, 5000).unpack()
        except GLib.Error:
            # It may have ended meanwhile, as players do.
            if self.players[number].poll() is None:
                raise
            return ([],)

    # The desktop's settings

    def change_portal(self, group: str, key: str, value: str) -> None:
        line = f"{group} {key} {value}"
        self.portal_lines[f"{group} {key}"] = line
        print(line, file=self.portal.stdin, flush=True)
        self.portal.stdout.readline()

    def settings(self) -> str:
        path = self.home / SETTINGS
        return path.read_text() if path.exists() else ""

    def write_settings(self, text: str) -> None:
        path = self.home / SETTINGS
        path.parent.mkdir(parents=True, exist_ok=True)
        following = path.with_suffix(".next")
        following.write_text(text)
        following.rename(path)

    # The program

    def start_program(self, **variables: str) -> None:
        with self.log.open("w") as log:
            self.program = subprocess.Popen((self.build.tunedeck,), stderr=log, stdout=log, env=os.environ | variables)
        until(lambda: self.find_window() != 0, "the window is there", 30)
        self.window = self.find_window()
        until(lambda: bool(self.frames()), "the window is on the accessibility bus", 30)

    def end_program(self) -> None:
        if self.program and self.program.poll() is None:
            self.program.terminate()
            self.program.wait()

    def find_window(self) -> int:
        return next((window for window in self.managed_windows() if title_of(window) == TITLE), 0)

    def managed_windows(self) -> list[int]:
        """The program's, from the oldest on."""
        windows = hexadecimals(output("xprop", "-root", "-notype", "_NET_CLIENT_LIST"))
        return [window for window in windows if process_of(window) == self.program.pid]

    def popups(self) -> list[int]:
        """Menus, lists and tooltips."""
        shown = [int(number) for number in xdotool("search", "--onlyvisible", "--pid", self.program.pid).split()]
        return sorted(set(shown) - set(self.managed_windows()))

    def others(self) -> list[int]:
        """The program's windows beside the main one, from the oldest on."""
        return [window for window in self.managed_windows() if window != self.window]

    def active_window(self) -> int:
        return next(iter(hexadecimals(output("xprop", "-root", "-notype", "_NET_ACTIVE_WINDOW"))), 0)

    def is_window_shown(self) -> bool:
        return "_NET_WM_STATE_HIDDEN" not in output("xprop", "-notype", "-id", str(self.window), "_NET_WM_STATE")

    def close(self, window: int) -> None:
        with XServer() as server:
            server.send(server.root, window, "_NET_CLOSE_WINDOW", 0, 2,
                        events=SUBSTRUCTURE_NOTIFY | SUBSTRUCTURE_REDIRECT)

    def await_program(self, seconds: float = ANSWER) -> None:
        """Returns when the program has handled all earlier mouse and key events."""
        try:
            with XServer() as server:
                server.await_program(self.window, seconds)
        except TimeoutError as error:
            # An action may have ended it.
            if not becomes(lambda: self.program.poll() is not None, ANSWER):
                raise NotAsExpected(f"the program does not answer within {seconds} s") from error

    def await_window_manager(self) -> None:
        with XServer() as server:
            server.await_window_manager()

    def frames(self) -> list[dict]:
        told = self.accessible("read")
        return [window for window in json.loads(told) if window["name"] == TITLE] if told else []

    def accessible(self, *words: str) -> str:
        return output(sys.executable, "-B", HERE / "accessible.py", str(self.program.pid), *words)

    def content(self) -> tuple[int, int, int, int]:
        """The window's place and size without its shadow."""
        told = dict(line.split("=") for line in xdotool("getwindowgeometry", "--shell", self.window).splitlines())
        x, y, width, height = (int(told.get(key, 0)) for key in ("X", "Y", "WIDTH", "HEIGHT"))
        left, right, top, bottom = self.shadow()
        return x + left, y + top, width - left - right, height - top - bottom

    def shadow(self) -> tuple[int, int, int, int]:
        told = output("xprop", "-notype", "-id", str(self.window), "_GTK_FRAME_EXTENTS").partition("=")[2]
        left, right, top, bottom = (int(number) for number in told.split(",")) if "," in told else (0, 0, 0, 0)
        return left, right, top, bottom

    def place(self, content: tuple[int, int, int, int]) -> None:
        """Moves and resizes the window so that it becomes `content`."""
        x, y, width, height = content
        left, right, top, bottom = self.shadow()
        xdotool("windowsize", self.window, width + left + right, height + top + bottom,
                "windowmove", self.window, x - left, y - top)
        seen_when(self.content, lambda seen: seen == content, 3)


def take_menus_from_openbox(home: Path) -> None:
    """A click that just misses the window, or hits another window's title bar, opens no menu of the window manager and
    goes to no other desktop."""
    if OPENBOX.exists():
        own = home / ".config/openbox/rc.xml"
        own.parent.mkdir(parents=True)
        taken = r'<context name="(Root|Desktop)">.*?</context>|<action name="ShowMenu">.*?</action>'
        own.write_text(re.sub(taken, "", OPENBOX.read_text(), flags=re.DOTALL))


def give_browser(home: Path) -> None:
    """A link opens nothing, and above all no browser of yours."""
    browser = home / "bin/xdg-open"
    browser.parent.mkdir()
    browser.write_text("#!/bin/sh\n")
    browser.chmod(0o755)
    os.environ["PATH"] = f"{browser.parent}:{os.environ['PATH']}"


def hide_applications(home: Path) -> None:
    """The command that opens a player opens none of yours."""
    entries = home / ".local/share/applications"
    entries.mkdir(parents=True)
    for entry in Path("/usr/share/applications").glob("*.desktop"):
        (entries / entry.name).write_text("[Desktop Entry]\nType=Application\nName=Hidden\nHidden=true\n")


def hexadecimals(text: str) -> list[int]:
    return [int(number, 16) for number in re.findall(r"0x[0-9a-f]+", text)]


def process_of(window: int) -> int:
    told = output("xprop", "-notype", "-id", str(window), "_NET_WM_PID")
    return int(match[1]) if (match := re.search(r"= (\d+)", told)) else 0


def title_of(window: int) -> str:
    told = output("xprop", "-notype", "-id", str(window), "_NET_WM_NAME")
    return match[1] if (match := re.search(r'= "(.*)"', told)) else ""


@contextlib.contextmanager
def stranger(build: Build) -> Iterator[subprocess.Popen]:
    """Another program's window."""
    with running(build.bare_window) as process:
        yield process
