# SPDX-License-Identifier: MIT
"""Reads and operates the window over the accessibility bus, as a screen reader does, and receives changes from it.

Usage: accessibility_test.py BUILD-FOLDER [TEST...]

Exits with 77 if the accessibility bus or the library that reads it is not installed.
"""

import contextlib
import os
import subprocess
import sys
import time
import unittest
from collections.abc import Callable, Iterator
from dataclasses import dataclass
from pathlib import Path
from unittest import mock

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
from session import (  # noqa: E402
    ACCESSIBILITY_BUS_LAUNCHER, Build, accessibility_bus, becomes, demo_player, running, screen_picture, session,
    window_manager)

SKIPPED = 77
NEEDED = "at-spi2-core, python3-gi and gir1.2-atspi-2.0"
try:
    import gi

    gi.require_version("Atspi", "2.0")
    from gi.repository import Atspi, Gio, GLib
except (ImportError, ValueError):
    print(f"Skipped: it needs {NEEDED}.")
    sys.exit(SKIPPED)

State = Atspi.StateType
CHANGE = "object:property-change:"
VALUE_CHANGE = f"{CHANGE}accessible-value"
FOCUSED = "object:state-changed:focused"
NOTIFIED = "object:state-changed:showing"  # what a screen reader speaks of a notification
ANNOUNCED = "object:announcement"  # what it speaks with Qt 6.8
EVENTS = (f"{CHANGE}accessible-name", VALUE_CHANGE, FOCUSED, NOTIFIED, ANNOUNCED)
DEADLINE = 20  # seconds
BUTTON = Atspi.role_get_name(Atspi.Role.PUSH_BUTTON)  # "push button" in Debian 12, "button" in Debian 13

FIRST_TRACK = "Quince Harbour Timetable, The Ferrous Pelicans, Gantry Weather"
SECOND_TRACK = "Borrowed Thimble Waltz, Odalune Brack, Mirek Soothe, Thimblerig"
PLAYLISTS = ["Everything", "Short Ones", "Far Away"]

PLAYER = [
    (BUTTON, "Close"), (BUTTON, "Minimize"), (BUTTON, "Zoom"),
    (BUTTON, "Previous"), (BUTTON, "Play"), (BUTTON, "Next"), ("slider", "Volume"),
    (BUTTON, "Silence"), (BUTTON, "Full volume"),
    ("notification", FIRST_TRACK), ("label", "1:00"), ("slider", "Position"), ("label", "-2:23"),
    (BUTTON, "Show or hide the playlists"),
]
DRAWER = [
    ("label", "Playlist:"), ("combo box", "Everything"), (BUTTON, "Done"),
    (BUTTON, "Shuffle: off"), (BUTTON, "Repeat: off"),
]
PLAY = (74, 21)  # in the window
SHOWN_ONLY = ("label", "notification")
PLAIN = "filler"  # the role of containers and decorations: screen readers skip it


@dataclass(frozen=True)
class Heard:
    """The contents of an event, and the name that its control had when the event came."""
    event: str
    gains: bool
    role: str
    name: str


class Player:
    """The demo player's own state."""

    def __init__(self) -> None:
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.bus = Gio.DBusConnection.new_for_address_sync(os.environ["DBUS_SESSION_BUS_ADDRESS"], flags)

    def call(self, interface: str, method: str, signature: str = "()", *arguments: str) -> list:
        answer = self.bus.call_sync(
            "org.mpris.MediaPlayer2.tunedeckdemo", "/org/mpris/MediaPlayer2", interface, method,
            GLib.Variant(signature, arguments), None, Gio.DBusCallFlags.NONE, DEADLINE * 1000)
        return answer.unpack()

    def tell(self, line: str) -> None:
        self.call("org.tunedeck.DemoPlayer", "Script", "(s)", line)

    def commands(self) -> list[str]:
        """The commands that the player got over the bus since the last call."""
        calls, = self.call("org.tunedeck.DemoPlayer", "TakeCalls")
        return [call for call in calls if not call.startswith("Get")]

    def get(self, name: str) -> object:
        value, = self.call("org.freedesktop.DBus.Properties", "Get", "(ss)", "org.mpris.MediaPlayer2.Player", name)
        return value

    def title(self) -> str:
        return self.get("Metadata")["xesam:title"]

    def volume(self) -> int:
        """In percent."""
        return round(self.get("Volume") * 100)


def listen(seconds: float) -> None:
    loop = GLib.MainLoop()
    GLib.timeout_add(round(seconds * 1000), loop.quit)
    loop.run()


def fresh(element: Atspi.Accessible) -> Atspi.Accessible:
    """`element` without its cached values."""
    element.clear_cache()
    return element


def children(element: Atspi.Accessible) -> Iterator[Atspi.Accessible]:
    fresh(element)
    return (fresh(element.get_child_at_index(index)) for index in range(element.get_child_count()))


def descendants(element: Atspi.Accessible) -> Iterator[Atspi.Accessible]:
    for child in children(element):
        yield child
        yield from descendants(child)


def shown(element: Atspi.Accessible) -> Iterator[Atspi.Accessible]:
    """The descendants that a screen reader finds: it skips hidden elements and all they contain."""
    for child in children(element):
        if has(child, State.SHOWING):
            yield child
            yield from shown(child)


def has(element: Atspi.Accessible, *states: Atspi.StateType) -> bool:
    held = fresh(element).get_state_set()
    return all(held.contains(state) for state in states)


def named(element: Atspi.Accessible) -> tuple[str, str]:
    return element.get_role_name(), element.get_name()


def do(element: Atspi.Accessible, action: str) -> None:
    names = [element.get_action_name(index) for index in range(element.get_n_actions())]
    element.do_action(names.index(action))


def type_key(key: str) -> None:
    subprocess.run(["xdotool", "key", key], check=True)


def is_on_session_bus(name: str) -> bool:
    asked = subprocess.run(["gdbus", "call", "--session", "--dest", "org.freedesktop.DBus",
                            "--object-path", "/org/freedesktop/DBus",
                            "--method", "org.freedesktop.DBus.NameHasOwner", name],
                           stdout=subprocess.PIPE, text=True, check=True)
    return asked.stdout == "(true,)\n"


def visible_windows(program: subprocess.Popen) -> list[str]:
    return subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(program.pid)], stdout=subprocess.PIPE,
                          text=True).stdout.split()


class DesktopTest(unittest.TestCase):
    build: Build

    def assert_soon(self, expected: object, actual: Callable[[], object]) -> None:
        deadline = time.monotonic() + DEADLINE
        while actual() != expected and time.monotonic() < deadline:
            listen(0.02)
        self.assertEqual(actual(), expected)


class ScreenReaderTest(DesktopTest):
    @classmethod
    def setUpClass(cls) -> None:
        for part in (session(), window_manager(), accessibility_bus()):
            cls.enterClassContext(part)
        Atspi.init()

    def setUp(self) -> None:
        paused = ("--play", "--do", "pause", "--do", "seek 60")
        self.enterContext(demo_player(self.build, *paused, "--do", "playlists 3"))
        self.player = Player()
        self.heard: list[Heard] = []
        listener = Atspi.EventListener.new(self.hear)
        for event in EVENTS:
            listener.register(event)
            self.addCleanup(listener.deregister, event)
        self.program = self.enterContext(running(self.build.tunedeck))
        self.assert_soon(["Tunedeck"], lambda: [window.get_name() for window in self.windows()])
        self.window, = self.windows()
        self.assert_soon(PLAYER, self.read)
        # The drawer appears after the window.
        self.assert_soon(True, lambda: DRAWER[1] in map(named, descendants(self.window)))
        self.assert_soon(True, lambda: has(self.window, State.ACTIVE))
        self.heard.clear()
        self.player.commands()

    def windows(self) -> list[Atspi.Accessible]:
        return [window for application in children(Atspi.get_desktop(0))
                if application.get_process_id() == self.program.pid for window in children(application)]

    def hear(self, event: Atspi.Event) -> None:
        # An object that is gone has no name.
        with contextlib.suppress(GLib.Error):
            self.heard.append(Heard(event.type, event.detail1 == 1, *named(event.source)))

    def told(self, role: str) -> list[str]:
        """The names of the controls that reported a change, in order."""
        return [heard.name for heard in self.heard if heard.role == role and heard.event.startswith(CHANGE)]

    def volumes_told(self) -> int:
        return len([heard for heard in self.heard if heard.event == VALUE_CHANGE and heard.name == "Volume"])

    def hear_the_rest(self) -> None:
        """Events arrive in order: when a change of the volume arrives, all earlier events have arrived."""
        before = self.volumes_told()
        self.player.tell(f"volume {0.1 if self.player.volume() > 50 else 0.9}")
        self.assert_soon(before + 1, self.volumes_told)

    def focused(self) -> list[str]:
        """The controls that got the keyboard, in order."""
        return [heard.name for heard in self.heard if heard.event == FOCUSED and heard.gains and heard.role != "frame"]

    def spoken(self) -> list[str]:
        return [heard.name for heard in self.heard if heard.role == "notification" and (
            heard.event == NOTIFIED or heard.event.startswith(ANNOUNCED))]

    def read(self) -> list[tuple[str, str]]:
        return [named(element) for element in shown(self.window) if element.get_role_name() != PLAIN]

    def find(self, role: str, name: str) -> Atspi.Accessible:
        found = [element for element in descendants(self.window) if named(element) == (role, name)]
        self.assertEqual(len(found), 1, (role, name))
        return found[0]

    def press(self, name: str) -> None:
        do(self.find(BUTTON, name), "Press")

    def open_drawer(self) -> None:
        self.press("Show or hide the playlists")
        self.assert_soon(124, lambda: self.window.get_extents(Atspi.CoordType.SCREEN).height)

    # Reading

    def test_the_window_is_a_frame_with_the_programs_name(self) -> None:
        self.assertEqual(named(self.window), ("frame", "Tunedeck"))
        self.assertTrue(has(self.window, State.ACTIVE, State.SHOWING))

    def test_the_closed_window_is_read_without_the_drawer_whose_controls_are_hidden(self) -> None:
        self.assertEqual(self.read(), PLAYER)
        for role, name in DRAWER:
            element = self.find(role, name)
            self.assertFalse(has(element, State.SHOWING) or has(element, State.VISIBLE))

    def test_the_open_window_is_read_with_the_drawer(self) -> None:
        self.open_drawer()
        self.assertEqual(self.read(), DRAWER + PLAYER)

    def test_each_control_can_be_worked_and_takes_the_keyboard(self) -> None:
        self.open_drawer()
        for element in shown(self.window):
            if element.get_role_name() not in (PLAIN, *SHOWN_ONLY):
                with self.subTest(element.get_name()):
                    self.assertTrue(has(element, State.ENABLED, State.SENSITIVE, State.FOCUSABLE, State.VISIBLE))
                    self.assertGreater(element.get_n_actions(), 0)

    def test_what_shows_something_or_only_decorates_does_not_take_the_keyboard(self) -> None:
        self.open_drawer()
        for element in shown(self.window):
            if element.get_role_name() in (PLAIN, *SHOWN_ONLY):
                with self.subTest(element.get_name()):
                    self.assertFalse(has(element, State.FOCUSABLE))
                    self.assertEqual(element.get_n_actions(), 0)

    def test_nothing_that_only_decorates_has_a_name_or_a_text(self) -> None:
        self.open_drawer()
        plain = [element for element in shown(self.window) if element.get_role_name() == PLAIN]
        self.assertNotEqual(plain, [])
        for element in plain:
            self.assertEqual((element.get_name(), element.get_description()), ("", ""))

    def test_the_times_are_told_apart_by_their_descriptions(self) -> None:
        self.assertEqual(self.find("label", "1:00").get_description(), "Elapsed time")
        self.assertEqual(self.find("label", "-2:23").get_description(), "Remaining time")

    def test_the_volume_is_a_value_in_percent_that_goes_in_steps_of_four(self) -> None:
        self.assertEqual(self.value_of("Volume"), (80, 0, 100, 4))

    def test_the_place_in_the_track_is_a_value_in_percent_that_goes_in_steps_of_five_seconds(self) -> None:
        place, minimum, maximum, step = self.value_of("Position")
        # The player has played for some milliseconds before it was paused.
        self.assertAlmostEqual(place, 100 * 60 / 204, 1)
        self.assertEqual((minimum, maximum), (0, 100))
        self.assertAlmostEqual(step, 100 * 5 / 204, 3)

    def value_of(self, slider: str) -> tuple[float, ...]:
        element = self.find("slider", slider)
        return (element.get_current_value(), element.get_minimum_value(), element.get_maximum_value(),
                element.get_minimum_increment())

    def test_the_caption_labels_the_playlist_picker(self) -> None:
        relations = [(relation.get_relation_type(), relation.get_target(0).get_name())
                     for relation in self.find("combo box", "Everything").get_relation_set()]
        self.assertEqual(relations, [(Atspi.RelationType.LABELLED_BY, "Playlist:")])

    def test_the_list_of_the_playlists_has_a_name_and_tells_which_is_chosen(self) -> None:
        self.open_drawer()
        picker = self.find("combo box", "Everything")
        self.assertTrue(has(picker, State.EXPANDABLE))
        do(picker, "ShowMenu")
        self.assert_soon([("list", "Playlist")],
                         lambda: [named(part) for part in children(picker) if has(part, State.SHOWING)])
        self.assertTrue(has(picker, State.EXPANDED))
        items = list(children(next(children(picker))))
        self.assertEqual([item.get_name() for item in items], PLAYLISTS)
        self.assertEqual([has(item, State.SELECTED) for item in items], [True, False, False])

    def test_what_a_live_stream_cannot_do_is_not_offered(self) -> None:
        self.player.tell("track 9")
        self.assert_soon(False, lambda: has(self.find(BUTTON, "Next"), State.SENSITIVE))
        self.assertFalse(has(self.find(BUTTON, "Previous"), State.SENSITIVE))
        self.assertNotIn(("slider", "Position"), self.read())
        self.assertIn(("label", "Live"), self.read())
        self.assert_soon(True, lambda: (BUTTON, "Stop") in self.read())

    def test_a_player_that_hangs_is_spoken_of_and_the_controls_say_why_they_are_disabled(self) -> None:
        hangs = "Tunedeck Demo Player is not responding"
        self.player.tell("silent on")
        self.press("Next")
        self.assert_soon([f"{hangs}, {FIRST_TRACK.replace(', ', ' – ')}"], self.spoken)
        disabled = ((BUTTON, "Previous"), (BUTTON, "Next"), (BUTTON, "Silence"),
                    ("slider", "Volume"), ("slider", "Position"), (BUTTON, "Done"))
        for role, name in disabled:
            control = self.find(role, name)
            self.assertFalse(has(control, State.SENSITIVE))
            self.assertEqual(control.get_description(), hangs)
        self.assertTrue(has(self.find(BUTTON, "Show or hide the playlists"), State.SENSITIVE))
        self.player.tell("silent off")
        self.player.tell("volume 0.5")
        for role, name in disabled:
            self.assert_soon(True, lambda role=role, name=name: has(self.find(role, name), State.SENSITIVE))

    def test_the_keyboard_goes_through_what_is_seen_and_is_told_of(self) -> None:
        closed = ["Previous", "Play", "Next", "Silence", "Volume", "Full volume", "Position",
                  "Show or hide the playlists", "Close", "Minimize", "Zoom"]
        self.assert_tab_goes_through(closed)
        self.open_drawer()
        self.assert_tab_goes_through(closed[:8] + ["Everything", "Done", "Shuffle: off", "Repeat: off"] + closed[8:])

    def assert_tab_goes_through(self, names: list[str]) -> None:
        for name in names:
            self.heard.clear()
            type_key("Tab")
            self.assert_soon([name], self.focused)

    def test_the_helps_search_field_answers_every_question_about_its_text(self) -> None:
        type_key("F1")
        self.assert_soon(True, lambda: "Tunedeck Help" in [window.get_name() for window in self.windows()])
        help_window, = (window for window in self.windows() if window.get_name() == "Tunedeck Help")
        field, = (element for element in descendants(help_window) if named(element) == ("text", "Search the help"))
        text = "two words "
        field.set_text_contents(text)
        self.assert_soon(text, lambda: Atspi.Text.get_text(field, 0, -1))
        for question in (Atspi.Text.get_text_at_offset, Atspi.Text.get_text_before_offset,
                         Atspi.Text.get_text_after_offset):
            for boundary in (Atspi.TextBoundaryType.CHAR, Atspi.TextBoundaryType.WORD_START,
                             Atspi.TextBoundaryType.WORD_END, Atspi.TextBoundaryType.SENTENCE_START,
                             Atspi.TextBoundaryType.LINE_START):
                for offset in range(len(text) + 2):
                    part = question(field, offset, boundary)
                    self.assertIn(part.content, text)
        self.assertEqual(Atspi.Text.get_text_at_offset(field, len(text), Atspi.TextBoundaryType.WORD_START).content,
                         "words ")

    # Operating

    def test_play_and_pause(self) -> None:
        self.press("Play")
        self.assert_soon("Playing", lambda: self.player.get("PlaybackStatus"))
        self.assert_soon(True, lambda: (BUTTON, "Pause") in self.read())
        self.press("Pause")
        self.assert_soon("Paused", lambda: self.player.get("PlaybackStatus"))

    def test_next_and_previous_are_clicked_and_not_held(self) -> None:
        self.press("Next")
        self.assert_soon("Borrowed Thimble Waltz", self.player.title)
        self.assertEqual(self.player.commands(), ["Next"])
        self.press("Previous")
        self.assert_soon("Quince Harbour Timetable", self.player.title)
        self.assertEqual(self.player.commands(), ["Previous"])

    def test_the_volume_is_set(self) -> None:
        self.find("slider", "Volume").set_current_value(40)
        self.assert_soon(40, self.player.volume)

    def test_the_volume_is_set_step_by_step(self) -> None:
        for action, volume in (("Increase", 84), ("Decrease", 80)):
            do(self.find("slider", "Volume"), action)
            self.assert_soon(volume, self.player.volume)

    def test_silence_and_full_volume(self) -> None:
        self.press("Silence")
        self.assert_soon(0, self.player.volume)
        self.press("Full volume")
        self.assert_soon(100, self.player.volume)

    def test_the_place_in_the_track_is_set(self) -> None:
        self.find("slider", "Position").set_current_value(50)
        self.assert_soon(102_000_000, lambda: self.player.get("Position"))

    def test_another_playlist_is_chosen_and_played(self) -> None:
        self.open_drawer()
        do(self.find("combo box", "Everything"), "ShowMenu")
        # Before it, Qt 6.4 reports the playlist that is chosen, and Qt 6.8 does not.
        self.assert_soon(["Playlist"], lambda: self.focused()[-1:])
        self.heard.clear()
        type_key("Down")
        self.assert_soon(["Short Ones"], self.focused)
        type_key("Return")
        self.assert_soon(True, lambda: ("combo box", "Short Ones") in self.read())
        self.press("Done")
        self.assert_soon("Borrowed Thimble Waltz", self.player.title)

    def test_shuffle_and_its_name(self) -> None:
        self.open_drawer()
        self.press("Shuffle: off")
        self.assert_soon(True, lambda: self.player.get("Shuffle"))
        self.assert_soon(True, lambda: (BUTTON, "Shuffle: on") in self.read())

    def test_repeat_and_its_name(self) -> None:
        self.open_drawer()
        for name, following, loop in (("Repeat: off", "Repeat: all", "Playlist"),
                                      ("Repeat: all", "Repeat: one", "Track"),
                                      ("Repeat: one", "Repeat: off", "None")):
            self.press(name)
            self.assert_soon(loop, lambda: self.player.get("LoopStatus"))
            self.assert_soon(True, lambda: (BUTTON, following) in self.read())

    def test_the_window_is_zoomed(self) -> None:
        self.press("Zoom")
        self.assert_soon(550, lambda: self.window.get_extents(Atspi.CoordType.SCREEN).width)

    def test_the_window_is_minimised(self) -> None:
        self.assertNotEqual(visible_windows(self.program), [])
        self.press("Minimize")
        self.assert_soon([], lambda: visible_windows(self.program))

    def test_the_window_is_closed(self) -> None:
        self.press("Close")
        self.assertEqual(self.program.wait(DEADLINE), 0)

    # Events

    def test_a_new_track_is_told_once_and_not_again_while_its_text_moves(self) -> None:
        track = self.find("notification", FIRST_TRACK)
        self.player.tell("track 1")
        self.assert_soon(SECOND_TRACK, track.get_name)
        pictures: set[bytes] = set()
        # More pictures than the change of the track makes: the text moves.
        self.assertTrue(becomes(lambda: pictures.add(screen_picture()) or len(pictures) > 4))
        self.hear_the_rest()
        self.assertEqual(self.told("notification"), [SECOND_TRACK])
        self.assertEqual(self.spoken(), [SECOND_TRACK])

    def test_a_new_track_does_not_interrupt_who_is_at_work_in_another_window(self) -> None:
        track = self.find("notification", FIRST_TRACK)
        with running(self.build.bare_window):
            self.assert_soon(False, lambda: has(self.window, State.ACTIVE))
            self.player.tell("track 1")
            self.assert_soon(SECOND_TRACK, track.get_name)
            self.hear_the_rest()
        self.assertEqual(self.spoken(), [])

    def test_what_the_play_button_does_now_is_told_once(self) -> None:
        self.player.tell("play")
        self.assert_buttons_told(["Pause"])
        self.player.tell("pause")
        self.assert_buttons_told(["Pause", "Play"])

    def test_a_new_mode_is_told_once_and_the_other_one_not_at_all(self) -> None:
        self.player.tell("shuffle on")
        self.assert_buttons_told(["Shuffle: on"])
        self.player.tell("loop Track")
        self.assert_buttons_told(["Shuffle: on", "Repeat: one"])

    def assert_buttons_told(self, names: list[str]) -> None:
        self.assert_soon(names, lambda: self.told(BUTTON))
        self.hear_the_rest()
        self.assertEqual(self.told(BUTTON), names)

    def test_a_volume_that_the_player_changes_is_told(self) -> None:
        self.player.tell("volume 0.3")
        self.assert_soon(["Volume"], lambda: [heard.name for heard in self.heard if heard.event == VALUE_CHANGE])
        self.assertEqual(self.find("slider", "Volume").get_current_value(), 30)


class NoScreenReaderTest(DesktopTest):
    def setUp(self) -> None:
        # The desktop's settings service, which the program asks, would start the accessibility bus.
        self.enterContext(mock.patch.dict(os.environ, NO_AT_BRIDGE="1"))
        self.enterContext(session())
        self.enterContext(demo_player(self.build, "--track", "0"))
        self.player = Player()

    def assert_it_can_be_clicked(self, program: subprocess.Popen) -> None:
        self.assert_soon(1, lambda: len(visible_windows(program)))
        window, = visible_windows(program)
        x, y = PLAY
        subprocess.run(["xdotool", "mousemove", "--window", window, str(x), str(y), "click", "1"], check=True)
        self.assert_soon("Playing", lambda: self.player.get("PlaybackStatus"))

    def test_without_an_accessibility_bus_the_program_is_as_ever_and_complains_of_nothing(self) -> None:
        with subprocess.Popen([self.build.tunedeck], stderr=subprocess.PIPE, text=True) as program:
            self.assert_it_can_be_clicked(program)
            self.assertFalse(is_on_session_bus("org.a11y.Bus"))
            program.terminate()
            self.assertEqual(program.stderr.read(), "")

    def test_the_program_outlives_the_accessibility_bus(self) -> None:
        with contextlib.ExitStack() as bus:
            bus.enter_context(accessibility_bus())
            program = self.enterContext(running(self.build.tunedeck))
            self.assert_soon(1, lambda: len(visible_windows(program)))
            self.assertTrue(is_on_session_bus("org.a11y.Bus"))
        self.assert_it_can_be_clicked(program)


if __name__ == "__main__":
    if not ACCESSIBILITY_BUS_LAUNCHER.exists():
        print(f"Skipped: it needs {NEEDED}.")
        sys.exit(SKIPPED)
    DesktopTest.build = Build(Path(sys.argv.pop(1)))
    # The binding calls functions deprecated that have no replacement.
    unittest.main(warnings="ignore")
