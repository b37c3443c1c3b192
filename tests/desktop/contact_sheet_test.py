# SPDX-License-Identifier: MIT
"""The contact sheet's pictures.

Usage: contact_sheet_test.py BUILD-FOLDER
"""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

TOOL = Path(__file__).resolve().parents[2] / "tools/contact-sheet"
FILMED = 6  # frames
CHOSEN = ("released shuffle", "pressed shuffle", "moved, no compositor", "drawer opens, light, scale 1.5",
          "drawer, dark, scale 1, inactive", "menu, dark, scale 1", "Preferences, Updates, light, scale 1")


def picture_of(name: str) -> str:
    return name.replace(", ", "-").replace(" ", "-") + ".png"


class ContactSheetTest(unittest.TestCase):
    build: str

    @classmethod
    def setUpClass(cls) -> None:
        cls.folder = Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        only = f"^({'|'.join(CHOSEN)})$"
        subprocess.run([TOOL, cls.folder, "--build", cls.build, "--only", only], check=True, stdout=subprocess.DEVNULL)

    def size(self, name: str) -> tuple[int, ...]:
        return tuple(map(int, self.ask(name, "%w %h").split()))

    def colors(self, name: str, area: str) -> int:
        """How many colors a part of the picture has."""
        return int(self.ask(name, "%k", "-crop", area))

    def ask(self, name: str, question: str, *options: str) -> str:
        command = ("convert", self.folder / name, *options, "-format", question, "info:")
        return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout

    def test_there_is_a_picture_of_each_state_and_there_are_sheets_of_them(self) -> None:
        expected = {"contact-sheet.png", "films.png", "windows.png", *map(picture_of, CHOSEN)}
        self.assertEqual({picture.name for picture in self.folder.iterdir()}, expected)

    def test_a_button_that_is_held_looks_otherwise_than_one_that_was_let_go(self) -> None:
        pressed, released = (self.ask(picture_of(f"{name} shuffle"), "%#", "-crop", "60x40+760+190")
                             for name in ("pressed", "released"))
        self.assertNotEqual(pressed, released)

    def test_a_move_is_filmed_from_its_start_to_its_end(self) -> None:
        name = picture_of("moved, no compositor")
        width, height = self.size(name)
        self.assertEqual(width % FILMED, 0)
        width //= FILMED
        frames = {self.ask(name, "%#", "-crop", f"{width}x{height}+{width * frame}+0") for frame in range(FILMED)}
        # The pointer goes a while before it is a drag.
        self.assertGreaterEqual(len(frames), FILMED - 2)

    def test_the_drawer_is_closed_in_the_first_frame_and_open_in_the_last(self) -> None:
        name = picture_of("drawer opens, light, scale 1.5")
        width, height = self.size(name)
        frame = round((450 + 28 + 2 * 12) * 1.5)
        below = f"300x40+{{}}+{height - 90}"
        self.assertLess(self.colors(name, below.format(150)), 40)
        self.assertGreater(self.colors(name, below.format(width - frame + 150)), 80)

    def test_the_drawer_is_open_also_while_another_window_is_active(self) -> None:
        _, height = self.size(picture_of("drawer, dark, scale 1, inactive"))
        self.assertEqual(height, 64 + 60 + 28 + 2 * 12)

    def test_another_window_is_seen_below_the_player(self) -> None:
        width, height = self.size(picture_of("Preferences, Updates, light, scale 1"))
        self.assertGreater(height, 300)
        self.assertGreater(width, 450)


if __name__ == "__main__":
    ContactSheetTest.build = sys.argv.pop(1)
    unittest.main()
