# SPDX-License-Identifier: MIT
"""The window and the dock menu, with a real sound server and a player that has no volume of its own.

Usage: sound_test.py BUILD-FOLDER (pulseaudio | pipewire) [TEST...]

Exits with 77 if the sound server is not installed.
"""

import contextlib
import json
import os
import re
import shutil
import signal
import subprocess
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
from session import Build, accepts, becomes, running, seen_when, session, until, window_manager  # noqa: E402
from x11window import TunedeckWindow, output, window_of  # noqa: E402

SKIPPED = 77
SERVERS = {"pulseaudio": ["pulseaudio"], "pipewire": ["pipewire", "wireplumber", "pipewire-pulse"]}
OUTPUTS = ["First", "Second", "Kitchen"]
VOLUME = (70, 52)  # in the content
WIDTH = 100  # further than the slider is long
PLAYER = """
import subprocess
while True:
    subprocess.run(["pacat", "--playback", "--raw", "/dev/zero"])
    subprocess.run(["sleep", "0.1"])
"""


def pactl(*arguments: str) -> str:
    return subprocess.run(["pactl", *arguments], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout


def listed(what: str) -> list[dict]:
    return json.loads(pactl("--format=json", "list", what) or "[]")


class SoundTest(unittest.TestCase):
    build: Build
    server: str

    def setUp(self) -> None:
        self.stack = contextlib.ExitStack()
        self.addCleanup(self.stack.close)
        self.home = self.stack.enter_context(session())
        self.stack.enter_context(window_manager())
        self.start_server()
        # The process that plays is a child of the one on the bus, as in a browser.
        command = f"python3 -c '{PLAYER}' & exec {self.build.demo_player} --play --do 'absent Volume'"
        player = self.stack.enter_context(running("sh", "-c", command, stdout=subprocess.PIPE, start_new_session=True))
        self.stack.callback(os.killpg, player.pid, signal.SIGKILL)
        self.assertEqual(player.stdout.readline(), "ready\n")
        until(lambda: self.volume() == 100, "the player plays")
        program = self.stack.enter_context(running(self.build.tunedeck))
        self.window = TunedeckWindow(window_of(program))
        until(lambda: "Kitchen" in self.dock_menu(), "the program has found the outputs")

    def start_server(self) -> None:
        # WirePlumber does not always come up on a busy machine.
        if not self.server_comes_up():
            self.kill_server()
            self.assertTrue(self.server_comes_up(), "the sound server does not answer")
        for name in OUTPUTS:
            pactl("load-module", "module-null-sink", f"sink_name={name}", f"sink_properties=device.description={name}")
        pactl("set-default-sink", OUTPUTS[0])

    def server_comes_up(self) -> bool:
        self.processes = []
        for program in SERVERS[self.server]:
            options = ["-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no", "-L",
                       f"module-native-protocol-unix socket={self.home}/pulse/native"]
            self.processes.append(self.stack.enter_context(running(
                program, *options if program == "pulseaudio" else [], stdout=subprocess.DEVNULL)))
            if program == "pipewire":
                until(lambda: accepts(self.home / "pipewire-0"), "pipewire accepts a connection")
        # Without WirePlumber, PipeWire has no default output but by this name.
        return becomes(lambda: (told := pactl("info")) and "@DEFAULT_SINK@" not in told, 20)

    def kill_server(self) -> None:
        for process in reversed(self.processes):
            process.kill()
            process.wait()
        shutil.rmtree(self.home / "pulse", ignore_errors=True)
        (self.home / "pipewire-0").unlink(missing_ok=True)

    def volume(self) -> int | None:
        """In percent, of the stream; none unless there is one."""
        streams = listed("sink-inputs")
        if len(streams) != 1:
            return None
        return round(max(channel["value"] for channel in streams[0]["volume"].values()) / 65536 * 100)

    def output(self) -> str:
        """The name of the one that the stream plays to."""
        indexes = {sink["index"]: sink["name"] for sink in listed("sinks")}
        return indexes.get(listed("sink-inputs")[0]["sink"])

    def call_dock_menu(self, method: str, *arguments: str) -> str:
        return output("gdbus", "call", "--session", "--dest", "org.tunedeck.Tunedeck", "--object-path",
                      "/org/tunedeck/Tunedeck/DockMenu", "--method", f"com.canonical.dbusmenu.{method}", "--", *arguments)

    def dock_menu(self) -> str:
        return self.call_dock_menu("GetLayout", "0", "-1", "[]")

    def play_through(self, name: str) -> None:
        number = re.search(rf"\((\d+), \{{[^{{}}]*'{name}'", self.dock_menu())[1]
        self.call_dock_menu("Event", number, "clicked", "<0>", "0")

    def assert_volume_becomes(self, percent: int) -> None:
        self.assertEqual(seen_when(self.volume, lambda seen: seen == percent), percent)

    def test_the_knob_turns_the_stream(self) -> None:
        self.window.drag(VOLUME, (-WIDTH, 0))
        self.assert_volume_becomes(0)
        self.window.drag(VOLUME, (WIDTH, 0))
        self.assert_volume_becomes(100)

    def test_the_dock_menu_moves_the_stream(self) -> None:
        self.assertEqual(self.output(), "First")
        self.play_through("Kitchen")
        self.assertEqual(seen_when(self.output, lambda seen: seen == "Kitchen"), "Kitchen")
        self.play_through("Default")
        self.assertEqual(seen_when(self.output, lambda seen: seen == "First"), "First")

    def test_the_knob_and_the_menu_work_again_after_the_server_was_killed_in_a_drag(self) -> None:
        self.window.begin_drag(VOLUME, (8, 0))
        self.assertTrue(becomes(lambda: self.volume() not in (0, 100)))
        self.kill_server()
        x, y = self.window.on_screen(VOLUME)
        for step in range(8):
            output("xdotool", "mousemove", str(x + 8 - step), str(y))
            self.window.settle()
        until(lambda: "Kitchen" not in self.dock_menu(), "the menu has no output")
        self.start_server()
        self.window.end_drag()
        until(lambda: self.volume() is not None, "the player plays again")
        until(lambda: "Kitchen" in self.dock_menu(), "the menu has the outputs again")
        self.window.drag(VOLUME, (-WIDTH, 0))
        self.assert_volume_becomes(0)
        self.play_through("Kitchen")
        self.assertEqual(seen_when(self.output, lambda seen: seen == "Kitchen"), "Kitchen")


if __name__ == "__main__":
    SoundTest.build = Build(Path(sys.argv.pop(1)))
    SoundTest.server = sys.argv.pop(1)
    missing = [program for program in (*SERVERS[SoundTest.server], "pactl") if not shutil.which(program)]
    if missing:
        print(f"Skipped: {missing[0]} is not installed.")
        sys.exit(SKIPPED)
    unittest.main()
