# SPDX-License-Identifier: MIT
"""What random use does without a display: it chooses, understands what it has chosen, and names what it finds."""

import inspect
import itertools
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools"))
SKIPPED = 77
try:
    from random_use.actions import ACTIONS, PLACES, chosen_actions
    from random_use.hand import Hand
    from random_use.pictures import look_alike, named_differences
    from random_use.resources import Held, least
    from random_use.rest import player_lines
except (ImportError, ValueError, OSError) as missing:
    print(f"Skipped: {missing}. It needs python3-gi and libxres1.")
    sys.exit(SKIPPED)

WIDTH, HEIGHT = 1280, 720
WINDOW = {"role": "frame", "name": "Tunedeck", "states": ["showing"], "place": [100, 100, 450, 64], "children": [
    {"role": "push button", "name": "Next", "states": ["showing"], "place": [194, 109, 25, 25], "children": []},
    {"role": "push button", "name": "Done", "states": [], "place": [194, 109, 25, 25], "children": []}]}


def chosen(seed: int, count: int) -> list[str]:
    return list(itertools.islice(chosen_actions(seed, 100), count))


def picture(*points: tuple[int, int], light: int = 0) -> bytes:
    pixels = bytearray(3 * WIDTH * HEIGHT)
    for x, y in points:
        pixels[3 * (y * WIDTH + x)] = light
    return bytes(pixels)


class ChoiceTest(unittest.TestCase):
    def test_the_same_seed_makes_the_same_choices_and_another_one_others(self) -> None:
        self.assertEqual(chosen(1, 500), chosen(1, 500))
        self.assertNotEqual(chosen(1, 500), chosen(2, 500))

    def test_each_choice_is_understood(self) -> None:
        kinds = set()
        for action in chosen(3, 20_000):
            name, *words = action.split()
            kinds.add(name)
            if name == "rest":
                does = player_lines if words != ["gone"] else list
                words = words if words != ["gone"] else []
            else:
                does = getattr(Hand, "do_" + name.replace("-", "_"))
                words = [None, *words]
            inspect.signature(does).bind(*words)
        self.assertGreater(len(kinds), len(ACTIONS) - 2)

    def test_each_place_is_used(self) -> None:
        words = {word for action in chosen(3, 20_000) for word in action.split()}
        self.assertEqual(set(PLACES) - words, set())


class FindingTest(unittest.TestCase):
    def test_a_difference_is_named_after_the_smallest_control_that_is_shown_there(self) -> None:
        seen = picture((200, 120), (201, 120), (300, 120), (5, 5), light=9)
        self.assertFalse(look_alike(seen, picture()))
        self.assertEqual(named_differences(seen, picture(), [WINDOW]),
                         ["push button Next (2 pixels)", "the desktop (1 pixels)", "frame Tunedeck (1 pixels)"])

    def test_what_is_rounded_otherwise_is_no_difference(self) -> None:
        self.assertTrue(look_alike(picture((200, 120), light=6), picture()))
        self.assertFalse(look_alike(picture((200, 120), light=7), picture()))

    def test_what_grows_by_more_than_it_may_is_named(self) -> None:
        growth = Held(files=2, threads=2, memory=100, on_server=2)
        before = Held(files=10, threads=5, memory=1000, on_server=40)
        self.assertEqual(Held(12, 7, 1100, 42).exceeded(before, growth), [])
        self.assertEqual(Held(13, 5, 1000, 43).exceeded(before, growth),
                         ["files grew from 10 to 13", "on server grew from 40 to 43"])

    def test_the_least_of_several_readings_leaves_out_what_is_kept_for_a_while(self) -> None:
        self.assertEqual(least([Held(16, 7, 30000, 66), Held(17, 6, 40000, 59)]), Held(16, 6, 30000, 59))


if __name__ == "__main__":
    unittest.main()
