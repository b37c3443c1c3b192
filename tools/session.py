# SPDX-License-Identifier: MIT
"""What benchmarks, photographs and tests of the desktop run in: a home, a display and a bus that nothing else uses."""

import contextlib
import os
import subprocess
import sys
import tempfile
import time
from collections.abc import Iterator
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]


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


@contextlib.contextmanager
def running(*command: str | Path, **options: object) -> Iterator[subprocess.Popen]:
    with subprocess.Popen(command, text=True, stderr=subprocess.DEVNULL, **options) as process:
        try:
            yield process
        finally:
            process.terminate()


@contextlib.contextmanager
def session(*server_options: str) -> Iterator[Path]:
    """Gives the home folder."""
    with contextlib.ExitStack() as stack:
        home = stack.enter_context(tempfile.TemporaryDirectory())
        os.environ.update(HOME=home, XDG_RUNTIME_DIR=home, LC_ALL="C.UTF-8", QT_QPA_PLATFORM="xcb")
        for name in ("XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "WAYLAND_DISPLAY"):
            os.environ.pop(name, None)
        screen = ("-screen", "0", "1280x720x24", "-nolisten", "tcp", "-noreset", *server_options)
        server = stack.enter_context(running("Xvfb", "-displayfd", "1", *screen, stdout=subprocess.PIPE))
        os.environ["DISPLAY"] = ":" + server.stdout.readline().strip()
        bus = stack.enter_context(
            running("dbus-daemon", "--session", "--nofork", "--nopidfile", "--print-address", stdout=subprocess.PIPE))
        os.environ["DBUS_SESSION_BUS_ADDRESS"] = bus.stdout.readline().strip()
        yield Path(home)


@contextlib.contextmanager
def window_manager() -> Iterator[None]:
    with running("openbox", stdout=subprocess.DEVNULL):
        while subprocess.run(["xdotool", "get_num_desktops"], capture_output=True).returncode != 0:
            time.sleep(0.1)
        time.sleep(1)  # what is mapped while it still takes over the screen can stay unmapped
        yield


@contextlib.contextmanager
def compositor() -> Iterator[None]:
    # It tells every window of its own coming, in a way that older libraries complain about.
    with running("picom", "--backend", "xrender", "--config", "/dev/null"):
        time.sleep(0.5)
        yield


@contextlib.contextmanager
def demo_player(build: Build, *arguments: str) -> Iterator[None]:
    with running(build.demo_player, *arguments, stdout=subprocess.PIPE) as player:
        if player.stdout.readline() != "ready\n":
            sys.exit("The demo player did not start.")
        yield
