# SPDX-License-Identifier: MIT
"""Carries actions out on a desktop: with its mouse and keyboard, and as its players and programs."""

import contextlib
import subprocess
import time
from collections.abc import Callable

from gi.repository import GLib
from session import until

from random_use.actions import PLACES
from random_use.desktop import APPEARANCE, GNOME, Desktop, stranger, xdotool

OUTSIDE = ((2, 2), (1277, 2), (2, 717), (1277, 717))  # corners of the screen
STEPS = 4  # of a drag: it begins only when the pointer has moved a few pixels
OPENED = {"preferences": ("key", "ctrl+comma"), "help": ("key", "F1"),
          "about": ("Down", "Right", "Return"), "updates": ("Down", "Right", "Down", "Return")}
MODIFIERS = ("ctrl", "shift", "alt", "super", "space", "Tab", "Up", "Right", "Left", "Down")
PORTAL = {"dark": (APPEARANCE, "color-scheme", "uint32 {}"), "still": (GNOME, "enable-animations", "{}"),
          "text": (GNOME, "text-scaling-factor", "{}")}


class NotThere(Exception):
    """The window is minimised."""


class Hand:
    def __init__(self, desktop: Desktop) -> None:
        self.desktop = desktop
        self.strangers: list[contextlib.ExitStack] = []
        desktop.stack.callback(self.end_strangers)

    def act(self, action: str) -> None:
        """`action` is a line of random_use.actions, except for a state of rest."""
        name, *words = action.split()
        does: Callable[..., None] = getattr(self, "do_" + name.replace("-", "_"))
        with contextlib.suppress(NotThere):
            does(*words)

    def point(self, place: str) -> tuple[int, int]:
        if place == "outside":
            return self.outside()
        if not self.desktop.is_window_shown():
            raise NotThere
        x, y, width, height = self.desktop.content()
        left, top = PLACES[place]
        # A click beside the window is the window manager's, which may open a menu of its own.
        return x + (left if left >= 0 else width + left), y + min(top, height - 2)

    def outside(self) -> tuple[int, int]:
        """A corner of the screen that the window does not cover."""
        x, y, width, height = self.desktop.content()
        margin = 20  # the shadow
        return next(corner for corner in OUTSIDE if not (
            x - margin <= corner[0] < x + width + margin and y - margin <= corner[1] < y + height + margin))

    # The mouse and the keyboard

    def do_click(self, button: str, place: str, times: str = "1") -> None:
        xdotool("mousemove", *self.point(place), "click", "--repeat", times, "--delay", 60, button)

    def do_leave(self, button: str, place: str, elsewhere: str) -> None:
        xdotool("mousemove", *self.point(place), "mousedown", button, "sleep", 0.05,
                "mousemove", *self.point(elsewhere), "sleep", 0.05, "mouseup", button)

    def do_hold(self, button: str, place: str, milliseconds: str) -> None:
        xdotool("mousemove", *self.point(place), "mousedown", button, "sleep", int(milliseconds) / 1000,
                "mouseup", button)

    def do_chord(self, first: str, second: str, place: str, order: str, pause: str) -> None:
        released = (first, second) if order == "crossed" else (second, first)
        rest = ("sleep", int(pause) / 1000)
        xdotool("mousemove", *self.point(place), "mousedown", first, *rest, "mousedown", second, *rest,
                "mouseup", released[0], *rest, "mouseup", released[1])

    def do_drag(self, place: str, right: str, down: str, means: str = "", what: str = "") -> None:
        self.drag(self.point(place), int(right), int(down), *self.meanwhile(means, what))

    def drag(self, start: tuple[int, int], right: int, down: int, *meanwhile: str) -> None:
        x, y = start
        steps = [word for step in range(1, STEPS + 1)
                 for word in ("mousemove", x + right * step // STEPS, y + down * step // STEPS, "sleep", 0.03)]
        xdotool("mousemove", x, y, "mousedown", 1, "sleep", 0.03, *steps, *meanwhile, "mouseup", 1)

    @staticmethod
    def meanwhile(means: str, what: str) -> tuple[str, ...]:
        return {"": (), "key": ("key", what), "button": ("click", what)}[means]

    def do_wheel(self, direction: str, place: str, clicks: str) -> None:
        xdotool("mousemove", *self.point(place), "click", "--repeat", clicks, "--delay", 20, direction)

    def do_hover(self, place: str) -> None:
        xdotool("mousemove", *self.point(place))

    def do_key(self, key: str) -> None:
        xdotool("key", key)

    def do_hold_key(self, key: str, milliseconds: str, place: str = "") -> None:
        click = ("mousemove", *self.point(place), "click", 1) if place else ()
        xdotool("keydown", key, "sleep", int(milliseconds) / 1000, *click, "keyup", key)

    def do_menu(self, opener: str, *keys: str) -> None:
        opening = ("key", "shift+F10") if opener == "keyboard" else ("mousemove", *self.point(opener), "click", 3)
        if opener == "picker":
            opening = ("mousemove", *self.point(opener), "click", 1)
        xdotool(*opening, "sleep", 0.1)
        for key in keys:
            xdotool("key", key, "sleep", 0.03)

    # The program's other windows

    def do_open(self, window: str) -> None:
        first, *following = OPENED[window]
        if first == "key":
            xdotool("key", *following)
        else:
            xdotool("mousemove", *self.point("metal"), "click", 3, "sleep", 0.1)
            xdotool("key", "--delay", 40, first, *following)

    def do_other(self, button: str, across: str, down: str) -> None:
        if others := self.desktop.others():
            x, y, width, height = geometry(others[-1])
            xdotool("mousemove", x + width * int(across) // 100, y + height * int(down) // 100, "click", button)

    def do_drag_other(self, right: str, down: str) -> None:
        """By its title bar, where the window manager adds one."""
        if others := self.desktop.others():
            x, y, width, _ = geometry(others[-1])
            self.drag((x + width // 2, max(0, y - 8)), int(right), int(down))

    def do_close_other(self) -> None:
        if others := self.desktop.others():
            self.desktop.close(others[-1])

    def do_minimise(self) -> None:
        xdotool("windowminimize", self.desktop.window)

    def do_restore(self) -> None:
        xdotool("windowactivate", self.desktop.window)

    do_activate = do_restore

    def do_work(self, number: str, *role: str) -> None:
        self.desktop.accessible("work", " ".join(role), number)

    # The desktop

    def do_pause(self, seconds: str) -> None:
        time.sleep(float(seconds))  # the pace of a hand

    def do_stranger(self, does: str) -> None:
        if does == "opens" and len(self.strangers) < 2:
            stack = contextlib.ExitStack()
            stack.enter_context(stranger(self.desktop.build))
            self.strangers.append(stack)
        elif does == "ends" and self.strangers:
            self.strangers.pop().close()
        elif does == "clicked":
            xdotool("search", "--onlyvisible", "--name", "^bare-window$", "windowactivate")

    def end_strangers(self) -> None:
        while self.strangers:
            self.strangers.pop().close()

    def do_start(self, action: str) -> None:
        words = () if action == "again" else ("--action", action)
        command = (self.desktop.build.tunedeck, *words)
        try:
            second = subprocess.run(command, stderr=subprocess.PIPE, text=True, timeout=30)
        except subprocess.TimeoutExpired:
            if self.desktop.program.poll() is None:
                raise
            return  # the program was about to end, so this start, which is killed now, was the first one
        # An action that cannot be carried out now is refused with a reason. Only silence is a fault.
        is_fault = second.returncode not in (0, 1) or "but not responding" in second.stderr
        if is_fault and self.desktop.program.poll() is None:
            raise RuntimeError(f"{action}: a second start ends with {second.returncode}: {second.stderr}")

    def do_setting(self, name: str, value: str) -> None:
        lines = [line for line in self.desktop.settings().splitlines() if line and not line.startswith(f"{name}=")]
        lines = lines or ["[General]"]
        lines.insert(lines.index("[General]") + 1, f"{name}={value}")
        self.desktop.write_settings("\n".join(lines) + "\n")

    def do_desktop(self, what: str, value: str) -> None:
        group, key, form = PORTAL[what]
        self.desktop.change_portal(group, key, form.format(value))

    # Players

    def do_say(self, number: str, *words: str) -> None:
        if int(number) in self.desktop.players:
            # What a player cannot do now, such as renaming a playlist that it does not have, it refuses.
            with contextlib.suppress(GLib.Error):
                self.desktop.tell_player(int(number), " ".join(words))

    def do_player(self, number: str, does: str) -> None:
        player = int(number)
        if does == "starts":
            self.desktop.start_player(player, "--track", str(player))
        elif does == "replaced" and player in self.desktop.players:
            self.desktop.start_player(player, "--play", "--replace")
        elif does == "dies":
            self.do_say(number, "die")
        elif does == "ends":
            self.desktop.end_player(player)

    # Rest

    def let_go(self) -> None:
        """Nothing is pressed, the pointer is outside, the window is alone, restored and active."""
        desktop = self.desktop
        if "ShowOnlyWithPlayer=true" in desktop.settings():
            self.do_setting("ShowOnlyWithPlayer", "false")  # the players may have gone, and the window with them
        xdotool("keyup", *MODIFIERS, *(word for button in (1, 2, 3, 8) for word in ("mouseup", button)))
        xdotool("mousemove", *self.outside())
        desktop.await_program()
        for _ in range(5):
            if not desktop.popups():
                break
            xdotool("key", "Escape")
            desktop.await_program()
        self.end_strangers()
        for window in desktop.others():
            desktop.close(window)
        until(lambda: not desktop.others() and not desktop.popups(), "the other windows are closed")
        xdotool("windowactivate", desktop.window)
        until(lambda: desktop.active_window() == desktop.window, "the window is active")
        xdotool("mousemove", *self.outside())
        desktop.await_window_manager()
        desktop.await_program()


def geometry(window: int) -> tuple[int, int, int, int]:
    told = dict(line.split("=") for line in xdotool("getwindowgeometry", "--shell", window).splitlines())
    x, y, width, height = (int(told.get(key, 0)) for key in ("X", "Y", "WIDTH", "HEIGHT"))
    return x, y, width, height
