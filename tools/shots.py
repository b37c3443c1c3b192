# SPDX-License-Identifier: MIT
"""What the contact sheet shows."""

from dataclasses import dataclass, field

# The places of the controls in the window, in points.
CONTROLS = {
    "close": (15, 13), "minimize": (15, 32), "maximize": (15, 51), "back": (42, 21), "play": (74, 21),
    "forward": (106, 21), "quiet": (38, 52), "loud": (114, 52), "volume": (76, 52), "time": (422, 42), "info": (430, 42),
    "shuffle": (377, 91), "repeat": (419, 91), "picker": (150, 91), "done": (327, 91),
    "metal": (128, 4), "right edge": (448, 30),
}
PLAYING = ("--play", "--track", "0")
DARK = {"AppearanceClassic": False}
SCALES = (1, 1.5, 2)
MENU = "shift+F10"
ABOUT = (MENU, "Down", "Right", "Return")
PANES = {"General": None, "Interface": (103, 25), "Updates": (172, 25)}  # where each is clicked, in points


@dataclass(frozen=True)
class Shot:
    name: str
    width: int = 450
    scale: float = 1
    player: tuple[str, ...] | None = PLAYING
    settings: dict[str, bool] = field(default_factory=dict)
    dark: bool = False
    active: bool = True
    expanded: bool = False
    picker: bool = False  # the list of playlists is open
    tabs: int = 0  # how often Tab was pressed
    composited: bool = True
    hovered: str | None = None
    pressed: str | None = None
    released: str | None = None  # was clicked, and the pointer is still there
    keys: tuple[str, ...] = ()  # open a menu or another window
    window: str | None = None  # the title of another window that is open
    pane: tuple[int, int] | None = None  # what is clicked in that window
    dragged: tuple[str, tuple[int, int]] | None = None  # filmed: a control and the pointer's way, in points
    opening: bool = False  # filmed: the drawer

    @property
    def sheet(self) -> str:
        if self.dragged or self.opening:
            return "films"
        return "windows" if self.keys else "contact-sheet"


def looks() -> list[tuple[str, dict]]:
    """The light and the dark appearance at each scale."""
    return [(f"{name}, scale {scale}", options | {"scale": scale})
            for name, options in (("light", {}), ("dark", {"dark": True, "settings": DARK})) for scale in SCALES]


def drawer_shots() -> list[Shot]:
    listed = [Shot(f"drawer, {width}", width=width, expanded=True) for width in (350, 450, 550)]
    for name, options in looks():
        listed += [
            Shot(f"drawer, {name}, inactive", expanded=True, active=False, **options),
            Shot(f"drawer, {name}, picker", expanded=True, hovered="picker", picker=True, **options),
        ]
    listed += [Shot(f"drawer, scale {scale}", scale=scale, expanded=True) for scale in (1.25, 1.5)]
    listed += [Shot(f"drawer, shuffle {shuffle}, repeat {repeat}", expanded=True,
                    player=(*PLAYING, "--do", f"shuffle {shuffle}", "--do", f"loop {repeat}"))
               for shuffle, repeat in (("off", "Track"), ("on", "Playlist"), ("on", "None"))]
    listed += [Shot("drawer, no compositor", expanded=True, composited=False),
               Shot("drawer, no playlists", expanded=True, player=(*PLAYING, "--do", "playlists 0")),
               Shot("drawer, many playlists, picker", expanded=True, hovered="picker", picker=True, width=350,
                    player=(*PLAYING, "--do", "playlists 10000")),
               *(Shot(f"drawer, tab {count}", expanded=True, tabs=count, scale=2) for count in range(9, 14))]
    return listed


def pointer_shots() -> list[Shot]:
    listed = [Shot("hovered close", hovered="close", scale=2)]
    for control in ("close", "minimize", "maximize", "back", "play", "forward", "quiet", "loud", "volume", "info"):
        listed.append(Shot(f"pressed {control}", pressed=control, scale=2))
    for control in ("done", "shuffle", "repeat"):
        listed.append(Shot(f"pressed {control}", pressed=control, scale=2, expanded=True))
    # Those that are not here close, minimize or widen the window, or open or close the drawer.
    for control in ("back", "play", "forward", "quiet", "loud", "volume"):
        listed.append(Shot(f"released {control}", released=control, scale=2))
    for control in ("shuffle", "repeat"):
        listed.append(Shot(f"released {control}", released=control, scale=2, expanded=True))
    return listed


def filmed_shots() -> list[Shot]:
    listed = []
    for name, options in looks():
        listed += [Shot(f"moved, {name}", dragged=("metal", (40, 24)), **options),
                   Shot(f"resized, {name}", dragged=("right edge", (-60, 0)), **options),
                   Shot(f"drawer opens, {name}", opening=True, **options)]
    listed += [Shot("moved, no compositor", dragged=("metal", (40, 24)), composited=False),
               Shot("resized, no compositor", dragged=("right edge", (-60, 0)), composited=False)]
    return listed


def other_window_shots() -> list[Shot]:
    listed = []
    for name, options in looks():
        listed += [Shot(f"menu, {name}", keys=(MENU, "Down", "Right"), **options),
                   Shot(f"menu of the controls, {name}", keys=(MENU, "Down", "Down", "Down", "Right"), **options),
                   Shot(f"About, {name}", keys=ABOUT, window="About", **options),
                   Shot(f"Help, {name}", keys=("F1",), window="Tunedeck Help", **options)]
        listed += [Shot(f"Preferences, {pane}, {name}", keys=("ctrl+comma",), window=pane, pane=place, **options)
                   for pane, place in PANES.items()]
    return listed


def shots() -> list[Shot]:
    listed = [Shot(f"{width}", width=width) for width in (350, 450, 550)]
    listed += [Shot(f"scale {scale}", scale=scale) for scale in (1.25, 1.5, 2)]
    listed += [
        Shot("inactive", active=False),
        Shot("inactive, kept above", active=False, settings={"KeepMainWindowAboveAllOtherWindows": True}),
        Shot("dark", dark=True, settings=DARK),
        Shot("dark, inactive", dark=True, settings=DARK, active=False),
        Shot("dark, scale 2", dark=True, settings=DARK, scale=2),
        Shot("no compositor", composited=False),
        *drawer_shots(),
        Shot("paused", player=(*PLAYING, "--do", "pause")),
        Shot("live", player=("--play", "--track", "9")),
        Shot("no song", player=()),
        Shot("music is not open", player=None),
        Shot("long title", player=("--play", "--track", "3")),
        Shot("right to left", player=("--play", "--track", "6")),
        Shot("ideographs", player=("--play", "--track", "5"), width=350),
        Shot("emoji and combining marks",
             player=(*PLAYING, "--do", "title Cafe\u0301 n\u0303 \u20d7 \U0001f3b7\U0001f469\u200d\U0001f3a4")),
        Shot("empty title", player=(*PLAYING, "--do", "title")),
        Shot("total time", settings={"RemainingTimeEnabled": False}),
        Shot("no speakers", settings={"VolumeButtonsHidden": True}),
        *(Shot(f"tab {count}", tabs=count, scale=2) for count in range(1, 9)),
        *pointer_shots(),
        *filmed_shots(),
        *other_window_shots(),
    ]
    return listed
