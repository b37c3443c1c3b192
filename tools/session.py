# SPDX-License-Identifier: MIT
"""What benchmarks, photographs and tests of the desktop run in: a home, a display and a bus that nothing else uses."""

import contextlib
import os
import re
import shutil
import subprocess
import sys
import tempfile
import time
from collections.abc import Callable, Iterator
from pathlib import Path
from typing import TypeVar

ROOT = Path(__file__).resolve().parents[1]
DESKTOP = bytes((0x3a, 0x6e, 0xa5))  # the color of the Wayland desktops
ACCESSIBILITY_BUS_LAUNCHER = Path("/usr/libexec/at-spi-bus-launcher")

Seen = TypeVar("Seen")


class Build:
    """The programs of a build."""

    def __init__(self, folder: Path) -> None:
        folder = folder.resolve()
        self.bare_window = folder / "tools/benchmarks/bare-window"
        self.start_watch = folder / "tools/benchmarks/start-watch"
        self.playlists_watch = folder / "tools/benchmarks/playlists-watch"
        self.demo_player = folder / "tools/demo-player/tunedeck-demo-player"
        self.tunedeck = folder / "src/app/tunedeck"
        for program in vars(self).values():
            if not program.exists():
                sys.exit(f"{program} is not built. Build it with: "
                         "cmake --preset release && cmake --build --preset release")


def seen_when(read: Callable[[], Seen], is_it: Callable[[Seen], bool], seconds: float = 10) -> Seen:
    """What is read once it is what is waited for; after that time, whatever it is."""
    deadline = time.monotonic() + seconds
    while not is_it(seen := read()) and time.monotonic() < deadline:
        time.sleep(0.1)
    return seen


def becomes(is_it: Callable[[], bool], seconds: float = 10) -> bool:
    return seen_when(is_it, bool, seconds)


@contextlib.contextmanager
def running(*command: str | Path, **options: object) -> Iterator[subprocess.Popen]:
    with subprocess.Popen(command, text=True, **({"stderr": subprocess.DEVNULL} | options)) as process:
        try:
            yield process
        finally:
            process.terminate()


@contextlib.contextmanager
def session(*server_options: str) -> Iterator[Path]:
    """Gives the home folder."""
    with contextlib.ExitStack() as stack:
        # What the bus has started may still be at its end when all else is.
        home = stack.enter_context(tempfile.TemporaryDirectory(ignore_cleanup_errors=True))
        os.environ.update(HOME=home, XDG_RUNTIME_DIR=home, LC_ALL="C.UTF-8", QT_QPA_PLATFORM="xcb")
        for name in ("XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "WAYLAND_DISPLAY", "XAUTHORITY"):
            os.environ.pop(name, None)
        screen = ("-screen", "0", "1280x720x24", "-nolisten", "tcp", "-noreset", *server_options)
        server = stack.enter_context(running("Xvfb", "-displayfd", "1", *screen, stdout=subprocess.PIPE))
        os.environ["DISPLAY"] = ":" + server.stdout.readline().strip()
        bus = stack.enter_context(
            running("dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address", stdout=subprocess.PIPE))
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        yield Path(home)


@contextlib.contextmanager
def window_manager(command: str = "openbox") -> Iterator[None]:
    with running(command, stdout=subprocess.DEVNULL):
        while subprocess.run(["xdotool", "get_num_desktops"], capture_output=True).returncode != 0:
            time.sleep(0.1)
        time.sleep(1)  # what is mapped while it still takes over the screen can stay unmapped
        yield


@contextlib.contextmanager
def tiling_window_manager() -> Iterator[None]:
    configuration = Path(os.environ["HOME"]) / "i3.conf"
    configuration.write_text("font pango:monospace 8\n")
    with running("i3", "-c", configuration, stdout=subprocess.DEVNULL):
        while subprocess.run(["i3-msg", "nop"], capture_output=True).returncode != 0:
            time.sleep(0.1)
        yield


@contextlib.contextmanager
def compositor() -> Iterator[None]:
    # It tells every window of its own coming, in a way that older libraries complain about.
    with running("picom", "--backend", "xrender", "--config", "/dev/null"):
        time.sleep(0.5)
        yield


@contextlib.contextmanager
def accessibility_bus() -> Iterator[None]:
    """As where a screen reader runs."""
    with running(ACCESSIBILITY_BUS_LAUNCHER, "--launch-immediately", "--a11y=1", "--screen-reader=1",
                 stdout=subprocess.DEVNULL):
        subprocess.run(["gdbus", "wait", "--session", "--timeout", "10", "org.a11y.Bus"], check=True)
        yield


@contextlib.contextmanager
def weston() -> Iterator[str]:
    """A Wayland desktop of one color that fills the session's display; programs started in it are its clients.

    Gives the display of its X11 clients.
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
        yield re.search(r"listening on display (:\d+)", log.read_text())[1]


@contextlib.contextmanager
def sway(*settings: str) -> Iterator[str]:
    """Like weston(), with lines of sway's configuration."""
    with tempfile.TemporaryDirectory() as folder:
        user: tuple[str, ...] = ()
        # It refuses to be root, who runs the tests in a container.
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
    """Which lets in, beside its own user, the one who runs the tests."""
    told = folder / "x11"
    command = f"xhost +si:localuser:$(id -nu {os.geteuid()}) && echo $DISPLAY > {told}.next && mv {told}.next {told}"
    subprocess.run(["swaymsg", "exec", command], stdout=subprocess.DEVNULL, check=True)
    if not becomes(told.exists, 20):
        raise TimeoutError("sway does not tell the display of XWayland")
    return told.read_text().strip()


@contextlib.contextmanager
def mutter() -> Iterator[str]:
    """Like weston(), but for the color."""
    folder = Path(os.environ["XDG_RUNTIME_DIR"])
    log = folder / "mutter.log"
    own = {"MUTTER_DEBUG_DUMMY_MODE_SPECS": "1280x720"}
    options = ("--wayland", "--nested", "--wayland-display=wayland-1")
    with log.open("w") as told, running("mutter", *options, stderr=told, env=os.environ | own):
        with wayland(folder):
            os.environ["XAUTHORITY"] = str(next(folder.glob(".mutter-Xwaylandauth.*")))
            yield re.search(r"public X11 display (:\d+)", log.read_text())[1]


@contextlib.contextmanager
def wayland(folder: Path) -> Iterator[None]:
    socket = folder / "wayland-1"
    while not socket.exists():
        time.sleep(0.05)
    os.environ.update(WAYLAND_DISPLAY=str(socket), QT_QPA_PLATFORM="wayland")
    time.sleep(1)  # it still takes over the screen
    yield


@contextlib.contextmanager
def demo_player(build: Build, *arguments: str) -> Iterator[None]:
    with running(build.demo_player, *arguments, stdout=subprocess.PIPE) as player:
        if player.stdout.readline() != "ready\n":
            sys.exit("The demo player did not start.")
        yield
