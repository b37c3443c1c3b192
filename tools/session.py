# SPDX-License-Identifier: MIT
"""Sessions for benchmarks, screenshots and desktop tests: each has a home, a display and a bus of its own."""

import contextlib
import os
import re
import shutil
import socket
import struct
import subprocess
import sys
import tempfile
import time
from collections.abc import Callable, Iterator
from pathlib import Path
from typing import TypeVar

from xserver import XServer

ROOT = Path(__file__).resolve().parents[1]
DESKTOP = bytes((0x3a, 0x6e, 0xa5))  # the color of the Wayland desktops
ACCESSIBILITY_BUS_LAUNCHER = Path("/usr/libexec/at-spi-bus-launcher")

Seen = TypeVar("Seen")

# Seconds within which a program does what it was asked for, on a machine that has much else to do.
PATIENCE = 30


class Build:
    """The programs of a build."""

    def __init__(self, folder: Path) -> None:
        self.folder = folder.resolve()

    def program(self, path: str) -> Path:
        program = self.folder / path
        if not program.exists():
            sys.exit(f"{program} is not built. Build it with: "
                     "cmake --preset release && cmake --build --preset release")
        return program

    @property
    def bare_window(self) -> Path:
        return self.program("tools/benchmarks/bare-window")

    @property
    def label_window(self) -> Path:
        return self.program("tools/benchmarks/label-window")

    @property
    def start_watch(self) -> Path:
        return self.program("tools/benchmarks/start-watch")

    @property
    def playlists_watch(self) -> Path:
        return self.program("tools/benchmarks/playlists-watch")

    @property
    def demo_player(self) -> Path:
        return self.program("tools/demo-player/tunedeck-demo-player")

    @property
    def storm(self) -> Path:
        return self.program("tools/storm/tunedeck-storm")

    @property
    def tunedeck(self) -> Path:
        return self.program("src/app/tunedeck")


def seen_when(read: Callable[[], Seen], is_it: Callable[[Seen], bool], seconds: float = PATIENCE) -> Seen:
    """Reads until `is_it` accepts the value, and returns that value. After `seconds`, it returns the last one."""
    deadline = time.monotonic() + seconds
    while not is_it(seen := read()) and time.monotonic() < deadline:
        time.sleep(0.05)  # the only sleep: where an event reports a change, the tests wait for the event
    return seen


def becomes(is_it: Callable[[], bool], seconds: float = PATIENCE) -> bool:
    return seen_when(is_it, bool, seconds)


def until(is_it: Callable[[], bool], awaited: str, seconds: float = PATIENCE) -> None:
    if not becomes(is_it, seconds):
        raise TimeoutError(f"{awaited}: not within {seconds} s")


def settled(read: Callable[[], Seen], seconds: float = 0.5, deadline: float = PATIENCE) -> Seen:
    """Reads until the value has stayed the same for `seconds`, and returns it."""
    seen, since = read(), time.monotonic()

    def is_settled() -> bool:
        nonlocal seen, since
        if (now := read()) != seen:
            seen, since = now, time.monotonic()
        return time.monotonic() >= since + seconds

    until(is_settled, f"nothing changes for {seconds} s", deadline)
    return seen


def accepts(server: Path) -> bool:
    """Whether the socket takes a connection. Its file is there a little before it does."""
    with socket.socket(socket.AF_UNIX) as client:
        try:
            client.connect(str(server))
            return True
        except OSError:
            return False


@contextlib.contextmanager
def running(*command: str | Path, **options: object) -> Iterator[subprocess.Popen]:
    with subprocess.Popen(command, text=True, **({"stderr": subprocess.DEVNULL} | options)) as process:
        try:
            yield process
        finally:
            process.terminate()


@contextlib.contextmanager
def session(*server_options: str, size: tuple[int, int] = (1280, 720)) -> Iterator[Path]:
    """Yields the home folder. `size` is the screen's."""
    with contextlib.ExitStack() as stack:
        # Programs that the bus started may still be ending.
        home = stack.enter_context(tempfile.TemporaryDirectory(ignore_cleanup_errors=True))
        os.environ.update(HOME=home, XDG_RUNTIME_DIR=home, LC_ALL="C.UTF-8", QT_QPA_PLATFORM="xcb")
        for name in ("XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "WAYLAND_DISPLAY", "XAUTHORITY"):
            os.environ.pop(name, None)
        screen = ("-screen", "0", f"{size[0]}x{size[1]}x24", "-nolisten", "tcp", "-noreset", *server_options)
        server = stack.enter_context(running("Xvfb", "-displayfd", "1", *screen, stdout=subprocess.PIPE))
        os.environ["DISPLAY"] = ":" + server.stdout.readline().strip()
        bus = stack.enter_context(
            running("dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address", stdout=subprocess.PIPE))
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        yield Path(home)


# The options without and with the window manager's own compositor.
OWN_COMPOSITORS = {"metacity": ("--no-composite", "--composite"), "xfwm4": ("--compositor=off", "--compositor=on")}


@contextlib.contextmanager
def window_manager(command: str = "openbox", composited: bool = False) -> Iterator[None]:
    """With the window manager's own compositor, if `composited` and if it has one, else with picom."""
    if command == "kwin_x11":
        configure_kwin(composited)
    options = OWN_COMPOSITORS.get(command, ())[composited:][:1]
    with running(command, *options, stdout=subprocess.DEVNULL):
        # A window that is mapped while the window manager takes over the screen can stay unmapped.
        with XServer() as server:
            server.await_window_manager()
            if command == "xfwm4":
                server.await_focus()
            if composited and command != "openbox":
                until(server.has_compositor, f"{command} composites")
        with compositor() if composited and command == "openbox" else contextlib.nullcontext():
            yield


def configure_kwin(composited: bool) -> None:
    configuration = Path(os.environ["HOME"]) / ".config"
    configuration.mkdir(exist_ok=True)
    # Without a decoration of its own, it gives windows no title bars.
    (configuration / "kwinrc").write_text("[org.kde.kdecoration2]\nlibrary=org.kde.oxygen\n"
                                          f"[Compositing]\nEnabled={str(composited).lower()}\n")


@contextlib.contextmanager
def tiling_window_manager() -> Iterator[None]:
    configuration = Path(os.environ["HOME"]) / "i3.conf"
    configuration.write_text("font pango:monospace 8\n")
    with running("i3", "-c", configuration, stdout=subprocess.DEVNULL):
        with XServer() as server:
            server.await_window_manager()
        yield


@contextlib.contextmanager
def compositor(tracks_damage: bool = False) -> Iterator[None]:
    # Where picom 12 tracks damage, it shows black between parts of a window that change together.
    damage = () if tracks_damage else ("--no-use-damage",)
    with running("picom", "--backend", "xrender", "--config", "/dev/null", *damage), XServer() as server:
        until(server.has_compositor, "picom composites")
        yield


@contextlib.contextmanager
def accessibility_bus() -> Iterator[None]:
    """Starts the accessibility bus as a running screen reader does."""
    with running(ACCESSIBILITY_BUS_LAUNCHER, "--launch-immediately", "--a11y=1", "--screen-reader=1",
                 stdout=subprocess.DEVNULL):
        subprocess.run(["gdbus", "wait", "--session", "--timeout", str(PATIENCE), "org.a11y.Bus"], check=True)
        yield


@contextlib.contextmanager
def weston() -> Iterator[str]:
    """Starts a Wayland desktop of one color that fills the session's display. Programs started in it are its clients.

    Yields the display of its X11 clients.
    """
    folder = Path(os.environ["XDG_RUNTIME_DIR"])
    configuration = folder / "weston.ini"
    configuration.write_text("[core]\nidle-time=0\nxwayland=true\n[output]\nname=X1\nmode=1280x720\n"
                             f"[shell]\npanel-position=none\nbackground-color=0xff{DESKTOP.hex()}\n"
                             "animation=none\nstartup-animation=none\nclose-animation=none\n")
    log = folder / "weston.log"
    options = ("--backend=x11-backend.so", "--use-pixman", "--socket=wayland-1", f"--config={configuration}",
               f"--log={log}")
    with running("weston", *options, stdout=subprocess.DEVNULL), wayland(folder):
        yield logged_display(log, r"listening on display (:\d+)")


@contextlib.contextmanager
def sway(*settings: str) -> Iterator[str]:
    """Like weston(), with lines of sway's configuration."""
    with tempfile.TemporaryDirectory() as folder:
        user: tuple[str, ...] = ()
        # Sway refuses to run as root, and in a container the tests run as root.
        if os.geteuid() == 0:
            user = ("setpriv", "--reuid=nobody", "--regid=nogroup", "--clear-groups")
            shutil.chown(folder, "nobody", "nogroup")
        configuration = Path(folder) / "config"
        configuration.write_text("\n".join((
            "output * resolution 1280x720", f"output * bg #{DESKTOP.hex()} solid_color",
            "default_floating_border none", 'for_window [app_id="."] floating enable',
            'for_window [class="."] floating enable', *settings, "")))
        os.environ["SWAYSOCK"] = str(Path(folder) / "sway")
        own = {"XDG_RUNTIME_DIR": folder, "WLR_BACKENDS": "x11", "WLR_RENDERER": "pixman"}
        with running(*user, "sway", "--config", configuration, stdout=subprocess.DEVNULL, env=os.environ | own):
            with wayland(Path(folder)):
                yield x11_of_sway(Path(folder))


def x11_of_sway(folder: Path) -> str:
    """The display of XWayland, which then accepts the user who runs the tests."""
    told = folder / "x11"
    command = f"xhost +si:localuser:$(id -nu {os.geteuid()}) && echo $DISPLAY > {told}.next && mv {told}.next {told}"
    subprocess.run(["swaymsg", "exec", command], stdout=subprocess.DEVNULL, check=True)
    if not becomes(told.exists):
        raise TimeoutError("Sway does not report the display of XWayland")
    return told.read_text().strip()


@contextlib.contextmanager
def mutter() -> Iterator[str]:
    """Like weston(), but with a color of its own."""
    folder = Path(os.environ["XDG_RUNTIME_DIR"])
    log = folder / "mutter.log"
    own = {"MUTTER_DEBUG_DUMMY_MODE_SPECS": "1280x720"}
    options = ("--wayland", "--nested", "--wayland-display=wayland-1")
    with log.open("w") as told, running("mutter", *options, stderr=told, env=os.environ | own):
        with wayland(folder):
            display = logged_display(log, r"public X11 display (:\d+)")
            os.environ["XAUTHORITY"] = str(next(folder.glob(".mutter-Xwaylandauth.*")))
            yield display


@contextlib.contextmanager
def kwin() -> Iterator[tuple[subprocess.Popen, Path]]:
    """A Wayland desktop without a screen. Yields its process, and the log to which scripts in it print."""
    folder = Path(os.environ["XDG_RUNTIME_DIR"])
    # The package gives the program a capability, which a container may refuse. A copy has none.
    program = shutil.copy(shutil.which("kwin_wayland"), folder)
    log = folder / "kwin.log"
    own = {"QT_LOGGING_RULES": "kwin_scripting*=true;js=true", "QT_FORCE_STDERR_LOGGING": "1"}
    options = ("--virtual", "--width", "1280", "--height", "720", "--no-lockscreen", "--socket", "wayland-1")
    with log.open("w") as told, running(program, *options, stderr=told, stdout=told,
                                        env=os.environ | own) as process:
        until(lambda: accepts_clients(folder / "wayland-1"), "the Wayland display is there")
        os.environ.update(WAYLAND_DISPLAY="wayland-1", QT_QPA_PLATFORM="wayland")
        until(has_scripting, "KWin takes scripts")
        yield process, log


def has_scripting() -> bool:
    question = ("gdbus", "call", "--session", "--dest", "org.kde.KWin", "--object-path", "/Scripting", "--method",
                "org.kde.kwin.Scripting.isScriptLoaded", "any")
    return subprocess.run(question, capture_output=True).returncode == 0


def logged_display(log: Path, line: str) -> str:
    found = seen_when(lambda: re.search(line, log.read_text()), lambda match: match is not None)
    if not found:
        raise TimeoutError(f"The display of XWayland is not in {log.name}")
    return found[1]


@contextlib.contextmanager
def wayland(folder: Path) -> Iterator[None]:
    display = folder / "wayland-1"
    until(lambda: accepts_clients(display), "the Wayland display is there")
    os.environ.update(WAYLAND_DISPLAY=str(display), QT_QPA_PLATFORM="wayland")
    await_wayland()
    until(is_screen_drawn, "the Wayland desktop is seen")
    yield


def accepts_clients(display: Path) -> bool:
    """The socket is there a moment before the desktop listens to it."""
    with socket.socket(socket.AF_UNIX) as client:
        return client.connect_ex(str(display)) == 0


def await_wayland() -> None:
    """Returns when the Wayland desktop has handled all earlier requests and input."""
    sync = struct.pack("=IHHI", 1, 0, 12, 2)  # to wl_display: method 0, 12 bytes, callback's number
    with socket.socket(socket.AF_UNIX) as client:
        client.settimeout(30)
        client.connect(os.environ["WAYLAND_DISPLAY"])
        client.sendall(sync)
        if not client.recv(12):
            raise ConnectionError("The Wayland desktop closes the connection")


def screen_picture() -> bytes:
    """Three bytes a pixel, row by row."""
    command = ("import", "-window", "root", "-depth", "8", "rgb:-")
    return subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout


def is_screen_drawn() -> bool:
    """An X server's screen is black until something is drawn on it."""
    return any(screen_picture())


@contextlib.contextmanager
def demo_player(build: Build, *arguments: str) -> Iterator[None]:
    with running(build.demo_player, *arguments, stdout=subprocess.PIPE) as player:
        if player.stdout.readline() != "ready\n":
            sys.exit("The demo player did not start.")
        yield
