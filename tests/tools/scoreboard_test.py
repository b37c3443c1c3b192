# SPDX-License-Identifier: MIT
"""Tests what tools/benchmarks/scoreboard makes of its measurements."""

import importlib.machinery
import importlib.util
import json
import sys
import tempfile
import unittest
from pathlib import Path
from xml.etree import ElementTree

TOOLS = Path(__file__).resolve().parents[2] / "tools"
TOOL = TOOLS / "benchmarks/scoreboard"
SPECIFICATION = importlib.util.spec_from_loader(
    "scoreboard", importlib.machinery.SourceFileLoader("scoreboard", str(TOOL)))
scoreboard = importlib.util.module_from_spec(SPECIFICATION)
sys.modules["scoreboard"] = scoreboard
SPECIFICATION.loader.exec_module(scoreboard)
sys.path.insert(0, str(TOOLS))
import scoresheet  # noqa: E402
from running_cost import Reading, Use, between  # noqa: E402
from scoresheet import Program, Score  # noqa: E402

SVG = "{http://www.w3.org/2000/svg}"


def use(switches: float, load: float = 0.25) -> Use:
    return Use(switches=switches, load=load, server_load=0.1)


OURS = Program("Tunedeck", scoresheet.OURS)
PLAYER = Program("a <player>", scoresheet.PLAYER)
SCORES = {
    OURS: Score(window=20, pixel=30, private=6, resident=50, playing=use(8), paused=use(5), hidden=use(0), messages=30,
                longest_turn=12.4),
    PLAYER: Score(window=200, pixel=300, private=24, resident=100, playing=None, paused=use(10, 0), hidden=use(1),
                  messages=None, longest_turn=None),
}


class TableTest(unittest.TestCase):
    def test_each_program_has_a_row_with_dashes_for_what_is_not_measured(self) -> None:
        rows = scoresheet.table(SCORES).splitlines()[2:]
        self.assertEqual(rows, [
            "| **Tunedeck** | 20 | 30 | 6.0 | 50.0 | 8.0 | 5.0 | 0.0 | 0.25 | 0.25 | 0.25 | 30 | 12 |",
            "| a <player> | 200 | 300 | 24.0 | 100.0 | – | 10.0 | 1.0 | – | 0.00 | 0.25 | – | – |"])

    def test_all_rows_have_as_many_columns(self) -> None:
        self.assertEqual({row.count("|") for row in scoresheet.table(SCORES).splitlines()}, {14})


class ChartTest(unittest.TestCase):
    def setUp(self) -> None:
        self.chart = ElementTree.fromstring(scoresheet.chart(SCORES, "today, a machine"))
        self.texts = [text.text for text in self.chart.iter(f"{SVG}text")]
        self.bars = [bar for bar in self.chart.iter(f"{SVG}rect") if bar.get("class").startswith("bar")]

    def test_it_names_the_day_the_machine_and_the_programs(self) -> None:
        for expected in ("today, a machine", "Tunedeck", "a <player>"):
            self.assertIn(expected, self.texts)

    def test_a_bar_is_as_long_as_its_value(self) -> None:
        bar = scoresheet.BAR
        widths = [float(drawn.get("width")) for drawn in self.bars][:8]
        self.assertEqual(widths, [bar / 10, bar, bar / 4, bar, bar / 2, bar, bar, 0])

    def test_what_is_not_nothing_has_a_bar_that_can_be_seen(self) -> None:
        scores = {OURS: SCORES[OURS], PLAYER: Score(**(vars(SCORES[PLAYER]) | {"pixel": 1_000_000}))}
        first = next(bar for bar in ElementTree.fromstring(scoresheet.chart(scores, "")).iter(f"{SVG}rect")
                     if bar.get("class") == "bar ours")
        self.assertEqual(float(first.get("width")), scoresheet.LEAST_BAR)

    def test_the_kinds_that_are_there_are_explained(self) -> None:
        self.assertIn(scoresheet.WORDS[scoresheet.PLAYER], self.texts)
        self.assertNotIn(scoresheet.WORDS[scoresheet.FLOOR], self.texts)

    def test_nothing_lies_outside_it(self) -> None:
        for part in (*self.chart.iter(f"{SVG}rect"), *self.chart.iter(f"{SVG}text")):
            self.assertLess(float(part.get("x")) + float(part.get("width", 0)), float(self.chart.get("width")))
            self.assertLess(float(part.get("y")) + float(part.get("height", 0)), float(self.chart.get("height")))


class UseTest(unittest.TestCase):
    def test_it_is_what_threads_old_and_new_used_meanwhile(self) -> None:
        before = {"1": Reading(1.0, 10), "2": Reading(2.0, 20)}
        after = {"1": Reading(1.5, 14), "2": Reading(2.0, 20), "3": Reading(0.25, 2)}
        self.assertEqual(between(before, after), Reading(0.75, 6))

    def test_a_thread_that_has_ended_does_not_count_against_the_others(self) -> None:
        self.assertEqual(between({"1": Reading(1.0, 10), "2": Reading(9.0, 90)}, {"1": Reading(1.5, 14)}), Reading(0.5, 4))


class ProgramsTest(unittest.TestCase):
    def test_a_program_that_is_not_installed_is_skipped_by_name(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            peers = Path(folder) / "peers.json"
            peers.write_text(json.dumps([{"name": "Absent", "kind": "player", "command": ["no-such-program"]},
                                         {"name": "Shell", "kind": "remote control", "command": ["sh", "-c"]}]))
            programs, skipped = scoreboard.installed(scoreboard.Build(Path(folder)), peers)
        self.assertEqual([(program.name, program.command[1:], program.shows_another_player) for program in programs],
                         [("Shell", ("-c",), True)])
        self.assertEqual(skipped, ["Absent is not installed"])

    def test_the_kinds_of_all_listed_programs_are_known(self) -> None:
        listed = json.loads((TOOL.parent / "peers.json").read_text())
        self.assertLessEqual({entry["kind"] for entry in listed}, set(scoresheet.KINDS))

    def test_programs_are_ordered_by_kind_and_then_by_their_first_pixel(self) -> None:
        slower = Program("slower", scoresheet.PLAYER)
        scores = {slower: Score(**(vars(SCORES[PLAYER]) | {"pixel": 400})), PLAYER: SCORES[PLAYER], OURS: SCORES[OURS]}
        self.assertEqual(list(scoreboard.in_order(scores)), [OURS, PLAYER, slower])


class PageTest(unittest.TestCase):
    def test_a_block_replaces_what_is_between_the_marks(self) -> None:
        page = f"before\n{scoresheet.BEGIN}\nold\n{scoresheet.END}\nafter\n"
        self.assertEqual(scoresheet.with_block(page, "new\n"),
                         f"before\n{scoresheet.BEGIN}\nnew\n{scoresheet.END}\nafter\n")

    def test_a_page_without_marks_is_refused(self) -> None:
        with self.assertRaises(ValueError):
            scoresheet.with_block(f"{scoresheet.BEGIN} alone", "new")

    def test_the_readme_has_the_marks(self) -> None:
        self.assertIn("\nnew\n", scoresheet.with_block((TOOLS.parent / "README.md").read_text(), "new"))


if __name__ == "__main__":
    unittest.main()
