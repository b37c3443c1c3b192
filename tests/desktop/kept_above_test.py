# SPDX-License-Identifier: MIT
"""The window that a Wayland compositor keeps above others, on the user's command.

Usage: kept_above_test.py BUILD-FOLDER (kwin_wayland | sway)

Exits with 77 if the compositor is not installed.
"""

import contextlib
import json
import os
import re
import shutil
import signal
import socket
import subprocess
import sys
import threading
import time
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
from session import Build, kwin, running, seen_when, session, settled, sway, until  # noqa: E402

SKIPPED = 77
KEY = "KeepMainWindowAboveAllOtherWindows"
TITLE = "Keep Above All Other Windows"
SECOND = 1.0

# Says whether KWin has the window, and whether it keeps it above.
LOOK = """
var windows = workspace.windowList ? workspace.windowList() : workspace.clientList();
windows.forEach(function (w) {
    if (String(w.desktopFileName) === "org.tunedeck.Tunedeck")
        print("look NUMBER: " + w.caption + " above " + w.keepAbove);
});
print("look NUMBER ends");
"""


def output(*command: str | Path, **options: object) -> str:
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True, timeout=20, **options).stdout


class KeptAboveTest(unittest.TestCase):
    build: Build
    title: str  # of the menu's item

    def setUp(self) -> None:
        self.stack = contextlib.ExitStack()
        self.addCleanup(self.stack.close)
        self.home = self.stack.enter_context(session())
        self.settings = self.home / ".config/tunedeck/tunedeck.conf"
        self.settings.parent.mkdir(parents=True)
        self.set_up_desktop()

    def set_up_desktop(self) -> None:
        raise NotImplementedError

    def is_above(self) -> bool | None:
        """Whether the compositor has the main window above; None without a window."""
        raise NotImplementedError

    def start(self, kept_above: bool = False) -> subprocess.Popen:
        self.settings.write_text(f"[General]\n{KEY}={str(kept_above).lower()}\n")
        program = self.stack.enter_context(running(self.build.tunedeck))
        until(lambda: self.is_above() is not None, "the compositor has the window")
        return program

    def item(self) -> tuple[str, str, bool]:
        """The number of the dock menu's item, its title, and whether it is checked."""
        told = self.call_dock_menu("GetLayout", "0", "-1", "[]")
        number, properties, title = re.search(rf"\((\d+), (\{{[^{{}}]*'({TITLE}[^']*)'[^{{}}]*\}})", told).groups()
        return number, title, "'toggle-state': <1>" in properties

    def call_dock_menu(self, method: str, *arguments: str) -> str:
        return output("gdbus", "call", "--session", "--dest", "org.tunedeck.Tunedeck", "--object-path",
                      "/org/tunedeck/Tunedeck/DockMenu", "--method", f"com.canonical.dbusmenu.{method}", "--", *arguments)

    def choose(self) -> None:
        self.call_dock_menu("Event", self.item()[0], "clicked", "<0>", "0")

    def assert_item_becomes(self, title: str, is_checked: bool, seconds: float = 10) -> None:
        self.assertEqual(seen_when(lambda: self.item()[1:], lambda seen: seen == (title, is_checked), seconds),
                         (title, is_checked))

    def assert_above_becomes(self, above: bool) -> None:
        self.assertEqual(seen_when(self.is_above, lambda seen: seen == above), above)

    def test_the_user_switches_it_on_and_off(self) -> None:
        self.start()
        self.assertFalse(self.is_above())
        self.assertEqual(self.item()[1:], (self.title, False))
        self.choose()
        self.assert_above_becomes(True)
        self.assert_item_becomes(self.title, True)
        self.assertEqual(settled(self.item)[1:], (self.title, True))
        self.choose()
        self.assert_above_becomes(False)
        self.assert_item_becomes(self.title, False)

    def test_it_is_above_from_the_start_if_it_was_before(self) -> None:
        self.start(kept_above=True)
        self.assert_above_becomes(True)
        self.assertEqual(settled(self.item)[1:], (self.title, True))

    def test_an_action_from_anywhere_switches_it(self) -> None:
        self.start()
        command = [self.build.tunedeck, "--action", "keep-above"]
        self.assertEqual(subprocess.run(command, timeout=20).returncode, 0)
        self.assert_above_becomes(True)
        self.assertEqual(subprocess.run(command, timeout=20).returncode, 0)
        self.assert_above_becomes(False)

    def assert_action_is_refused(self) -> None:
        refused = subprocess.run([self.build.tunedeck, "--action", "keep-above"], timeout=20, stderr=subprocess.PIPE,
                                 text=True)
        self.assertEqual(refused.returncode, 1)
        self.assertIn("The desktop refuses", refused.stderr)

    def assert_refused_within_a_second(self) -> None:
        begin = time.monotonic()
        self.choose()
        self.assert_item_becomes(f"{TITLE} (The Desktop Refuses)", True)
        # A busy machine also has to start the program that asks.
        self.assertLess(time.monotonic() - begin, SECOND + 1)


class KWinTest(KeptAboveTest):
    title = TITLE

    def set_up_desktop(self) -> None:
        os.environ["XDG_CURRENT_DESKTOP"] = "KDE"
        self.addCleanup(os.environ.pop, "XDG_CURRENT_DESKTOP")
        self.kwin, self.log = self.stack.enter_context(kwin())
        self.looks = 0

    def is_above(self) -> bool | None:
        return self.look().get("Tunedeck")

    def look(self) -> dict[str, bool]:
        """Whether each of the program's windows is above."""
        self.looks += 1
        script = self.home / f"look{self.looks}.js"
        script.write_text(LOOK.replace("NUMBER", str(self.looks)))
        number = re.search(r"\d+", self.call_kwin("/Scripting", "org.kde.kwin.Scripting.loadScript", str(script),
                                                  script.stem))[0]
        # KWin 6 has a script in the first of these places, KWin 5 in the second.
        for path in (f"/Scripting/Script{number}", f"/{number}"):
            with contextlib.suppress(subprocess.CalledProcessError):
                self.call_kwin(path, "org.kde.kwin.Script.run")
        until(lambda: f"look {self.looks} ends" in self.log.read_text(), "KWin has looked")
        self.call_kwin("/Scripting", "org.kde.kwin.Scripting.unloadScript", script.stem)
        return {caption: above == "true" for caption, above in
                re.findall(rf"look {self.looks}: (.*) above (true|false)", self.log.read_text())}

    def call_kwin(self, path: str, method: str, *arguments: str) -> str:
        return output("gdbus", "call", "--session", "--dest", "org.kde.KWin", "--object-path", path, "--method", method,
                      *arguments, stderr=subprocess.DEVNULL)

    def test_it_leaves_no_script_behind(self) -> None:
        self.start()
        self.choose()
        self.assert_above_becomes(True)
        self.assertEqual(list(self.home.glob("tunedeck-*.js")), [])

    def test_a_window_that_was_hidden_is_kept_above_again(self) -> None:
        self.start()
        self.choose()
        self.assert_above_becomes(True)
        for above in (None, True):
            subprocess.run([self.build.tunedeck, "--action", "show-or-hide"], timeout=20, check=True)
            self.assert_above_becomes(above)

    def test_a_kwin_that_hangs_leaves_an_item_that_says_so(self) -> None:
        self.start()
        os.kill(self.kwin.pid, signal.SIGSTOP)
        try:
            self.assert_refused_within_a_second()
        finally:
            os.kill(self.kwin.pid, signal.SIGCONT)
        # The program asks once more some seconds later.
        self.assert_above_becomes(True)
        self.assert_item_becomes(TITLE, True)
        self.choose()
        self.assert_item_becomes(TITLE, False)
        self.assert_above_becomes(False)
        self.choose()
        self.assert_above_becomes(True)


class Relay:
    """Sway's socket as a process of this user's has it, who is another one than Sway's where the tests run as root."""

    def __init__(self, path: Path, target: str) -> None:
        self.target = target
        self.answers = True
        self.server = socket.socket(socket.AF_UNIX)
        self.server.bind(str(path))
        self.server.listen()
        self.held: list[socket.socket] = []
        threading.Thread(target=self.serve, daemon=True).start()

    def serve(self) -> None:
        with contextlib.suppress(OSError):
            while True:
                client, _ = self.server.accept()
                if self.answers:
                    threading.Thread(target=self.relay, args=(client,), daemon=True).start()
                else:
                    self.held.append(client)

    def relay(self, client: socket.socket) -> None:
        with client, socket.socket(socket.AF_UNIX) as compositor, contextlib.suppress(OSError):
            compositor.connect(self.target)
            threading.Thread(target=self.copy, args=(client, compositor), daemon=True).start()
            self.copy(compositor, client)

    @staticmethod
    def copy(source: socket.socket, target: socket.socket) -> None:
        with contextlib.suppress(OSError):
            while data := source.recv(65536):
                target.sendall(data)
            target.shutdown(socket.SHUT_RDWR)

    def close(self) -> None:
        self.server.shutdown(socket.SHUT_RDWR)
        self.server.close()
        for client in self.held:
            client.close()


class SwayTest(KeptAboveTest):
    title = f"{TITLE} (Floating, on Every Workspace)"

    def set_up_desktop(self) -> None:
        self.stack.enter_context(sway())
        self.sway_socket = os.environ["SWAYSOCK"]
        path = self.home / "relay"
        self.relay = Relay(path, self.sway_socket)
        self.addCleanup(self.relay.close)
        os.environ["SWAYSOCK"] = str(path)

    def windows(self, node: dict | None = None) -> list[dict]:
        node = node or json.loads(output("swaymsg", "-s", self.sway_socket, "-t", "get_tree"))
        below = [window for child in node["nodes"] + node["floating_nodes"] for window in self.windows(child)]
        return [node, *below] if node.get("app_id") == "org.tunedeck.Tunedeck" else below

    def window(self) -> dict | None:
        return next((window for window in self.windows() if window["name"] == "Tunedeck"), None)

    def is_above(self) -> bool | None:
        window = self.window()
        return window and window["sticky"] and window["type"] == "floating_con"

    def tell(self, command: str) -> None:
        output("swaymsg", "-s", self.sway_socket, command)

    def test_a_tiled_window_floats_and_is_tiled_again(self) -> None:
        self.start()
        self.tell('[app_id="org.tunedeck.Tunedeck"] floating disable')
        self.assertEqual(self.window()["type"], "con")
        self.choose()
        self.assert_above_becomes(True)
        self.choose()
        self.assertEqual(seen_when(lambda: self.window()["type"], lambda kind: kind == "con"), "con")

    def test_a_window_that_was_hidden_is_kept_above_again(self) -> None:
        self.start()
        self.choose()
        self.assert_above_becomes(True)
        before = self.window()["id"]
        for shown in (False, True):
            subprocess.run([self.build.tunedeck, "--action", "show-or-hide"], timeout=20, check=True)
            until(lambda shown=shown: bool(self.window()) == shown, "the window is shown or hidden")
        self.assertNotEqual(self.window()["id"], before)
        self.assert_above_becomes(True)

    def test_other_windows_of_the_program_stay_where_they_are(self) -> None:
        self.start()
        self.tell('[app_id="org.tunedeck.Tunedeck"] focus')
        output("xdotool", "key", "ctrl+comma")
        until(lambda: len(self.windows()) == 2, "the preferences are open")
        self.choose()
        self.assert_above_becomes(True)
        self.assertEqual(sorted(window["sticky"] for window in self.windows()), [False, True])

    def test_a_sway_that_hangs_leaves_an_item_that_says_so(self) -> None:
        self.start()
        self.relay.answers = False
        self.assert_refused_within_a_second()
        self.relay.answers = True
        self.choose()
        self.assert_item_becomes(self.title, False)
        self.choose()
        self.assert_above_becomes(True)

    def test_an_action_that_sway_does_not_carry_out_says_so(self) -> None:
        self.start()
        self.relay.answers = False
        self.assert_action_is_refused()
        self.assert_action_is_refused()

    def test_an_action_fails_where_sway_is_gone(self) -> None:
        self.start()
        Path(os.environ["SWAYSOCK"]).unlink()
        self.assert_action_is_refused()
        self.assert_action_is_refused()

    def test_a_sway_that_is_gone_leaves_an_item_that_says_so(self) -> None:
        self.start()
        Path(os.environ["SWAYSOCK"]).unlink()
        self.assert_refused_within_a_second()

    def test_a_socket_that_another_session_has_left_promises_nothing(self) -> None:
        os.environ["SWAYSOCK"] = str(self.home / "gone")
        self.start()
        self.assertNotIn("Floating", self.item()[1])


if __name__ == "__main__":
    KeptAboveTest.build = Build(Path(sys.argv[1]))
    if not shutil.which(sys.argv[2]):
        print(f"{sys.argv[2]} is not installed.")
        sys.exit(SKIPPED)
    desktops = {"kwin_wayland": "KWinTest", "sway": "SwayTest"}
    unittest.main(argv=sys.argv[:1] + sys.argv[3:], defaultTest=desktops[sys.argv[2]])
