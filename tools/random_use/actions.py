# SPDX-License-Identifier: MIT
"""Chooses what users, players and desktops do at random. An action is a line of words, so that it can be logged and
repeated. The choice depends on the seed alone and never on what the window shows."""

from collections.abc import Callable, Iterator
from random import Random

# Places in the window, in points. Negative ones are counted from its right edge.
PLACES = {
    "close": (15, 13), "minimize": (15, 32), "zoom": (15, 51), "back": (42, 21), "play": (74, 21),
    "forward": (106, 21), "quiet": (38, 52), "volume": (76, 52), "volume-start": (46, 52), "loud": (114, 52),
    "metal": (128, 4), "metal-below": (60, 62), "title": (200, 20), "title-end": (-40, 20), "elapsed": (152, 42),
    "position": (220, 42), "position-end": (-80, 42), "remaining": (-47, 42), "drawer": (-19, 42),
    "left-edge": (1, 34), "right-edge": (-2, 34), "corner": (1, 1),
    "caption": (40, 91), "picker": (150, 91), "done": (-122, 91), "shuffle": (-73, 91), "repeat": (-31, 91),
}
# A click on these with the left button closes the window or takes it away, which is done more rarely.
WINDOW_BUTTONS = ("close", "minimize")
CLICKED = tuple(place for place in PLACES if place not in WINDOW_BUTTONS)
MOVES_WINDOW = ("metal", "metal-below", "title", "left-edge", "right-edge", "right-edge", "drawer")
MOVES_KNOB = ("volume", "volume-start", "position", "position-end")
BUTTONS = (1, 1, 1, 1, 2, 3, 3, 8)

KEYS = (
    "space", "space", "Tab", "Tab", "Tab", "shift+Tab", "Return", "Escape", "Left", "Right", "Up", "Down", "Home",
    "End", "Prior", "Next", "ctrl+l", "ctrl+l", "ctrl+Left", "ctrl+Right", "ctrl+Up", "ctrl+Down", "ctrl+period",
    "ctrl+m", "XF86AudioPlay", "XF86AudioPause", "XF86AudioStop", "XF86AudioNext", "XF86AudioPrev", "ctrl+shift+o",
    "a", "1", "alt+Tab", "ctrl+Tab", "ctrl+a", "F5",
)
HELD_KEYS = ("space", "Right", "Left", "Up", "Tab", "ctrl+Up", "ctrl+Right", "Down", "ctrl", "shift", "alt")
MENU_KEYS = ("Down", "Down", "Down", "Up", "Right", "Right", "Left", "Return")
ROLES = ("push button", "push button", "slider", "combo box", "check box", "menu item")

TITLES = ("", "Gate", "Älva", "Слон", "水")
LONG_TITLE = "A Title That Does Not End Where The Window Ends " * 3
ODDITIES = (
    ("late 300", "late 0"), ("late 1500", "late 0"), ("silent on", "silent off"), ("hold on", "hold off"),
    ("refuse Volume", "refuse none"), ("toggling on", "toggling off"), ("cannot CanSeek on", "cannot CanSeek off"),
    ("cannot CanGoNext on", "cannot CanGoNext off"), ("cannot CanPlay on", "cannot CanPlay off"),
    ("cannot CanControl on", "cannot CanControl off"), ("playlists off", "playlists 3"),
    ("playlists 60", "playlists 3"), ("quiet Volume", "quiet none"), ("stale 400", "stale 0"),
    ("blink 200", "blink 0"), ("partial 200", "partial 0"), ("echo 3", "echo 1"), ("unasked 100", "unasked 0"),
    ("signals seeked off", "signals seeked on"), ("textless on", "textless off"), ("absent Volume", "right Volume"),
    ("wrong mpris:length string", "right mpris:length"), ("grow on", "grow off"),
)
# Ends all of them.
ORDERLY = tuple(dict.fromkeys(line for _, line in ODDITIES))


def click(rng: Random) -> str:
    return f"click {rng.choice(BUTTONS)} {rng.choice(CLICKED)}"


def click_often(rng: Random) -> str:
    return f"click {rng.choice((1, 1, 3))} {rng.choice(CLICKED)} {rng.choice((2, 2, 3, 6))}"


def press_and_leave(rng: Random) -> str:
    return f"leave {rng.choice((1, 1, 1, 2, 3))} {rng.choice(tuple(PLACES))} {rng.choice(('outside', *PLACES))}"


def hold(rng: Random) -> str:
    return f"hold 1 {rng.choice(CLICKED)} {rng.choice((200, 600, 1200))}"


def chord(rng: Random) -> str:
    first, second = rng.choice(((1, 3), (3, 1), (1, 2), (2, 1), (1, 8), (3, 2)))
    place, pause = rng.choice(CLICKED), rng.choice((0, 0, 30, 400))
    return f"chord {first} {second} {place} {rng.choice(('same', 'crossed'))} {pause}"


def drag(rng: Random) -> str:
    place = rng.choice((*MOVES_WINDOW, *MOVES_KNOB, *MOVES_KNOB, "play", "shuffle", "picker"))
    return f"drag {place} {rng.randint(-180, 180)} {rng.randint(-90, 90)}"


def drag_and_cancel(rng: Random) -> str:
    """A key or another button comes while the button is held."""
    return f"drag {rng.choice((*MOVES_WINDOW, *MOVES_KNOB))} {rng.randint(-90, 90)} 0 " + rng.choice((
        "key Escape", "key Tab", "key ctrl+l", "key space", "button 3", "button 4", "key ctrl+comma"))


def wheel(rng: Random) -> str:
    return f"wheel {rng.choice((4, 5, 4, 5, 6, 7))} {rng.choice(tuple(PLACES))} {rng.randint(1, 6)}"


def hover(rng: Random) -> str:
    return f"hover {rng.choice(('outside', *PLACES))}"


def key(rng: Random) -> str:
    return f"key {rng.choice(KEYS)}"


def hold_key(rng: Random) -> str:
    return f"hold-key {rng.choice(HELD_KEYS)} {rng.choice((100, 700, 1100))}"


def key_and_click(rng: Random) -> str:
    """A modifier or a key is held while the mouse clicks."""
    return f"hold-key {rng.choice(HELD_KEYS)} 50 {rng.choice(CLICKED)}"


def menu(rng: Random) -> str:
    opener = rng.choice(("metal", "metal", "title", "remaining", "keyboard", "play", "picker"))
    keys = [rng.choice(MENU_KEYS) for _ in range(rng.randint(0, 7))]
    return f"menu {opener} {' '.join(keys)}".strip()


def open_window(rng: Random) -> str:
    return f"open {rng.choice(('preferences', 'preferences', 'help', 'about', 'updates'))}"


def use_window(rng: Random) -> str:
    x, y = rng.randint(2, 98), rng.randint(2, 98)
    return f"other {rng.choice((1, 1, 1, 1, 3))} {x} {y}"


def drag_window(rng: Random) -> str:
    return f"drag-other {rng.randint(-200, 200)} {rng.randint(-100, 100)}"


def work_accessibly(rng: Random) -> str:
    return f"work {rng.randint(0, 40)} {rng.choice(ROLES)}"


def window_state(rng: Random) -> str:
    return rng.choice(("minimise", "restore", "restore", "close-other", "close-other", "activate", "activate"))


def stranger(rng: Random) -> str:
    """Another program's window."""
    return rng.choice(("stranger opens", "stranger opens", "stranger clicked", "stranger ends"))


def start(rng: Random) -> str:
    return f"start {rng.choice(('again', 'play-pause', 'next', 'previous', 'raise-player', 'keep-above'))}"


def setting(rng: Random) -> str:
    name = rng.choice(("KeepMainWindowAboveAllOtherWindows", "RemainingTimeEnabled", "AppearanceClassic",
                       "AppearanceUpdatesDockIcon", "VolumeButtonsHidden"))
    return f"setting {name} {rng.choice(('true', 'false'))}"


def desktop(rng: Random) -> str:
    return "desktop " + rng.choice(("dark 0", "dark 1", "dark 2", "still true", "still false", "text 1.0", "text 1.25"))


def player_state(rng: Random) -> str:
    said = rng.choice((
        "play", "pause", "stop", "toggle", "next", "previous",
        f"track {rng.randint(0, 9)}", f"seek {rng.randint(0, 60)}",
        f"volume {rng.choice((0, 0.03, 0.5, 0.97, 1, 1.5))}", f"shuffle {rng.choice(('on', 'off'))}",
        f"loop {rng.choice(('None', 'Track', 'Playlist'))}", f"title {rng.choice((*TITLES, LONG_TITLE))}".strip(),
        "restart", f"rate {rng.choice((0.5, 1, 2))}", "flood 50",
        f"playlist 1 {rng.choice(('Renamed', 'Short Ones'))}"))
    return f"say {rng.choice((1, 1, 2))} {said}"


def player_oddity(rng: Random) -> str:
    odd, orderly = rng.choice(ODDITIES)
    return f"say {rng.choice((1, 1, 2))} {rng.choice((odd, orderly))}"


def player_process(rng: Random) -> str:
    # The first player is there more often than not.
    return rng.choice(("player 1 ends", "player 1 starts", "player 1 starts", "player 1 replaced", "player 2 starts",
                       "player 2 ends", "player 1 dies"))


ACTIONS: dict[Callable[[Random], str], int] = {
    click: 24, click_often: 6, press_and_leave: 8, hold: 4, chord: 6, drag: 10, drag_and_cancel: 5, wheel: 7, hover: 6,
    key: 20, hold_key: 4, key_and_click: 2, menu: 7, open_window: 5, use_window: 14, drag_window: 2, work_accessibly: 8,
    window_state: 7, stranger: 4, start: 4, setting: 4, desktop: 4, player_state: 16, player_oddity: 6,
    player_process: 3,
}
PAUSES = (0, 0, 0, 0.03, 0.1, 0.2, 0.4)  # seconds


def rest(rng: Random) -> str:
    """A state in which nothing moves."""
    if rng.random() < 0.1:
        return "rest gone"
    kind = "stopped" if rng.random() < 0.15 else "paused"
    # Volume 0 of a stopped player can mean that it has none just then, as in VLC.
    volume = rng.choice((0.25, 0.8, 1) if kind == "stopped" else (0, 0.25, 0.8, 1))
    process = rng.choice(("restarted", "same"))
    return (f"rest {process} {kind} {rng.randint(1, 90)} {volume} {rng.choice(('on', 'off'))} "
            f"{rng.choice(('None', 'Track', 'Playlist'))} {rng.choice((0, 3, 3))} {rng.choice(TITLES)}").strip()


def chosen_actions(seed: int, between_rests: int) -> Iterator[str]:
    rng = Random(seed)
    while True:
        for _ in range(between_rests):
            act, = rng.choices(tuple(ACTIONS), tuple(ACTIONS.values()))
            yield act(rng)
            if pause := rng.choice(PAUSES):
                yield f"pause {pause}"
        yield rest(rng)
