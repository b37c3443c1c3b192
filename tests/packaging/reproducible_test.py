# SPDX-License-Identifier: MIT
"""The same commit gives the same package: what of it can be compared without two builds. packaging/reproducible compares
two whole builds.

Usage: reproducible_test.py BUILD-FOLDER [TEST...]

Exits with 77 if a program that makes packages is not installed.
"""

import contextlib
import json
import os
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
SKIPPED = 77
# It includes the place in the source where an impossible value is found.
SOURCE = "src/music/obstacles.cpp"
RESOURCES = "qrc_player.cpp"  # each version of Qt has another folder for it
COMMIT_TIME = 1_700_000_000


def output(*command: str | Path, **options: object) -> str:
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True, **options).stdout


class ReproducibleTest(unittest.TestCase):
    build: Path

    def setUp(self) -> None:
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        self.folder = Path(stack.enter_context(tempfile.TemporaryDirectory()))

    def package(self, name: str, **variables: str) -> Path:
        folder = self.folder / name
        environment = {key: value for key, value in os.environ.items() if key != "SOURCE_DATE_EPOCH"} | variables
        output("cpack", "--config", self.build / "CPackConfig.cmake", "-B", folder, umask=0o022,
               env=environment, stderr=subprocess.DEVNULL)
        made, = folder.glob("tunedeck_*.deb")
        return made

    def test_two_packages_of_one_build_are_the_same_byte_for_byte(self) -> None:
        first = self.package("first", TZ="UTC")
        second = self.package("the second", TZ="Pacific/Auckland")
        self.assertEqual(output("dpkg-deb", "--contents", first), output("dpkg-deb", "--contents", second))
        self.assertTrue(first.read_bytes() == second.read_bytes(), "Two packages of one build differ.")

    def test_a_time_from_outside_is_the_time_of_every_file(self) -> None:
        made = self.package("first", SOURCE_DATE_EPOCH=str(COMMIT_TIME))
        listed = output("dpkg-deb", "--contents", made, env=os.environ | {"TZ": "UTC"}).splitlines()
        self.assertEqual({line.split()[3] + " " + line.split()[4] for line in listed}, {"2023-11-14 22:13"})

    def copied(self, name: str, time: int) -> Path:
        """A copy of the sources, whose files are of this time."""
        top = self.folder / name
        shutil.copytree(ROOT, top, symlinks=True, ignore=shutil.ignore_patterns("build", ".git", "__pycache__"))
        for path in top.rglob("*"):
            os.utime(path, (time, time))
        return top

    def compiled(self, top: Path) -> tuple[bytes, list[str]]:
        """An object of a release, and the source of resources without its comments."""
        build = top / "build/release"
        output("cmake", "--preset", "release", "-DCMAKE_INTERPROCEDURAL_OPTIMIZATION=OFF", cwd=top)
        commands = json.loads((build / "compile_commands.json").read_text())
        command, = (entry["command"] for entry in commands if entry["file"] == str(top / SOURCE))
        product = build / shlex.split(command)[shlex.split(command).index("-o") + 1]
        product.parent.mkdir(parents=True, exist_ok=True)
        without_cache = os.environ | {"CCACHE_DISABLE": "1"}
        output(*shlex.split(command), cwd=build, env=without_cache)
        resources, = (Path(entry["file"]) for entry in commands if Path(entry["file"]).name == RESOURCES)
        # Ninja of Debian 13 would compile much of the program first.
        make_resources = output("ninja", "-C", build, "-t", "commands", "-s", resources.relative_to(build))
        resources.parent.mkdir(parents=True, exist_ok=True)
        output("sh", "-c", make_resources, cwd=build)
        lines = resources.read_text().splitlines()
        return product.read_bytes(), [line for line in lines if not line.strip().startswith("//")]

    def test_a_release_names_neither_its_folder_nor_the_times_of_its_sources(self) -> None:
        first_object, first_resources = self.compiled(self.copied("a", COMMIT_TIME))
        second_object, second_resources = self.compiled(self.copied("another-folder", COMMIT_TIME + 9))
        self.assertIn(SOURCE.encode(), first_object)
        self.assertNotIn(str(self.folder).encode(), first_object)
        self.assertTrue(first_object == second_object, "Two objects of one source differ.")
        self.assertEqual(first_resources, second_resources)


if __name__ == "__main__":
    ReproducibleTest.build = Path(sys.argv.pop(1))
    for program in ("dpkg-deb", "dpkg-shlibdeps", "file"):
        if not shutil.which(program):
            print(f"{program} is not installed.")
            sys.exit(SKIPPED)
    unittest.main()
