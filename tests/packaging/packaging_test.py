# SPDX-License-Identifier: MIT
"""The files that are installed with the program, as desktops and distributions read them.

Usage: packaging_test.py BUILD-FOLDER VERSION FOLDER-OF-LIBRARIES [TEST...]
"""

import configparser
import contextlib
import gzip
import os
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
ID = "org.tunedeck.Tunedeck"
LANGUAGES = {"de", "es", "fi", "pl"}
SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)
XML_LANGUAGE = "{http://www.w3.org/XML/1998/namespace}lang"

INSTALLED = {
    "bin/tunedeck",
    f"share/applications/{ID}.desktop",
    f"share/dbus-1/services/{ID}.service",
    "share/doc/tunedeck/changelog.Debian.gz",
    "share/doc/tunedeck/copyright",
    f"share/icons/hicolor/scalable/apps/{ID}.svg",
    f"share/icons/hicolor/symbolic/apps/{ID}-symbolic.svg",
    *(f"share/icons/hicolor/{size}x{size}/apps/{ID}.png" for size in SIZES),
    "share/man/man1/tunedeck.1.gz",
    f"share/metainfo/{ID}.metainfo.xml",
}


def needs(program: str) -> object:
    return unittest.skipUnless(shutil.which(program), f"{program} is not installed")


def complaints(*command: str | Path) -> str:
    """The output of a command, and its exit status if that is not 0."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    return done.stdout + (f"exit status {done.returncode}\n" if done.returncode else "")


def groups_of(path: Path) -> configparser.ConfigParser:
    groups = configparser.ConfigParser(interpolation=None, delimiters=("=",), comment_prefixes=("#",))
    groups.optionxform = str  # keys differ in case
    groups.read(path, encoding="utf-8")
    return groups


def png_size(path: Path) -> tuple[int, int]:
    start = path.read_bytes()[:24]
    if start[:8] != b"\x89PNG\r\n\x1a\n":
        raise ValueError(f"{path} is no PNG")
    return struct.unpack(">II", start[16:24])


class PackagingTest(unittest.TestCase):
    build: Path
    version: str
    libraries: str

    def setUp(self) -> None:
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        self.staged = Path(stack.enter_context(tempfile.TemporaryDirectory()))
        subprocess.run(["cmake", "--install", self.build, "--prefix", "/usr"], env=os.environ | {"DESTDIR": self.staged},
                       stdout=subprocess.DEVNULL, check=True)

    def installed(self, path: str) -> Path:
        return self.staged / "usr" / path


class DesktopEntryTest(PackagingTest):
    def setUp(self) -> None:
        super().setUp()
        self.path = self.installed(f"share/applications/{ID}.desktop")
        self.groups = groups_of(self.path)
        self.entry = self.groups["Desktop Entry"]

    @needs("desktop-file-validate")
    def test_the_validator_finds_nothing(self) -> None:
        self.assertEqual(complaints("desktop-file-validate", "--warn-kde", self.path), "")

    def test_every_text_is_there_in_every_language(self) -> None:
        for name in self.groups.sections():
            group = self.groups[name]
            for key in {"Name", "GenericName", "Comment", "Keywords"} & set(group):
                languages = {match[1] for other in group if (match := re.fullmatch(rf"{key}\[(\w+)\]", other))}
                self.assertEqual(languages, LANGUAGES, f"{key} of {name}")

    def test_every_language_has_as_many_keywords_as_the_others(self) -> None:
        self.assertEqual({key: value.count(";") for key, value in self.entry.items() if key.startswith("Keywords")},
                         {"Keywords": 7} | {f"Keywords[{language}]": 7 for language in LANGUAGES})

    def test_the_actions_are_those_that_are_described(self) -> None:
        self.assertEqual(self.entry["Actions"], "play-pause;next;previous;raise-player;keep-above;")
        described = [name for name in self.groups.sections() if name.startswith("Desktop Action ")]
        self.assertEqual([name.removeprefix("Desktop Action ") + ";" for name in described],
                         re.findall(r"[^;]+;", self.entry["Actions"]))
        for name in described:
            action = name.removeprefix("Desktop Action ")
            self.assertEqual(self.groups[name]["Exec"], f"tunedeck --action {action}")

    def test_it_starts_the_program_that_is_installed_with_it(self) -> None:
        self.assertTrue(self.installed("bin/" + self.entry["Exec"]).is_file())
        self.assertEqual(self.entry["TryExec"], self.entry["Exec"])

    def test_its_icon_is_installed_with_it(self) -> None:
        icon = self.installed("share/icons/hicolor/scalable/apps/" + self.entry["Icon"] + ".svg")
        self.assertTrue(icon.is_file())

    def test_what_the_bus_can_activate_has_a_service(self) -> None:
        self.assertEqual(self.entry["DBusActivatable"], "true")
        self.assertTrue(self.installed(f"share/dbus-1/services/{self.path.stem}.service").is_file())


class MetainfoTest(PackagingTest):
    def setUp(self) -> None:
        super().setUp()
        self.path = self.installed(f"share/metainfo/{ID}.metainfo.xml")
        self.component = ElementTree.parse(self.path).getroot()

    @needs("appstreamcli")
    def test_the_validator_finds_nothing(self) -> None:
        said = complaints("appstreamcli", "validate", "--no-net", "--no-color", self.path)
        self.assertRegex(said, r"\A\W*Validation was successful[^\n]*\n*\Z")

    def test_every_text_is_there_in_every_language(self) -> None:
        for parent in self.component.iter():
            texts = [child for child in parent if child.tag in {"summary", "p", "li", "caption"}]
            for index, text in enumerate(texts):
                if XML_LANGUAGE in text.attrib:
                    continue
                following = [other.get(XML_LANGUAGE) for other in texts[index + 1:index + 1 + len(LANGUAGES)]]
                self.assertEqual(set(following), LANGUAGES, text.text)

    def test_the_newest_release_is_this_version(self) -> None:
        self.assertEqual(self.component.find("releases/release").get("version"), self.version)

    def test_it_says_what_the_desktop_entry_says(self) -> None:
        entry = groups_of(self.installed(f"share/applications/{ID}.desktop"))["Desktop Entry"]
        self.assertEqual(self.component.findtext("launchable"), f"{ID}.desktop")
        for summary in self.component.findall("summary"):
            language = summary.get(XML_LANGUAGE)
            self.assertEqual(summary.text, entry[f"Comment[{language}]" if language else "Comment"])
        for category in self.component.findall("categories/category"):
            self.assertIn(category.text, entry["Categories"].split(";"))

    def test_each_screenshot_is_a_picture_of_the_size_that_is_told(self) -> None:
        pictures = {"player.png": ROOT / "packaging/screenshots/player.png",
                    "playlists.png": ROOT / "resources/screenshot.png"}
        images = self.component.findall("screenshots/screenshot/image")
        self.assertEqual([image.text.rpartition("/")[2] for image in images], list(pictures))
        for image, picture in zip(images, pictures.values()):
            self.assertEqual((int(image.get("width")), int(image.get("height"))), png_size(picture), image.text)


class BusServiceTest(PackagingTest):
    def test_it_names_the_program_where_it_is_installed(self) -> None:
        service = groups_of(self.installed(f"share/dbus-1/services/{ID}.service"))["D-BUS Service"]
        self.assertEqual(dict(service), {"Name": ID, "Exec": "/usr/bin/tunedeck"})
        self.assertTrue(self.installed("bin/tunedeck").is_file())


class ManPageTest(PackagingTest):
    def setUp(self) -> None:
        super().setUp()
        self.text = gzip.decompress(self.installed("share/man/man1/tunedeck.1.gz").read_bytes()).decode()

    @needs("man")
    def test_it_is_set_without_a_warning(self) -> None:
        page = self.staged / "tunedeck.1"
        page.write_text(self.text)
        done = subprocess.run(["man", "--warnings", "--encoding=UTF-8", "--local-file", page], capture_output=True,
                              text=True, env=os.environ | {"MANWIDTH": "80", "MANROFFSEQ": ""})
        self.assertEqual((done.stderr, done.returncode), ("", 0))
        self.assertIn("tunedeck - small window that controls the running music player", done.stdout)

    def test_it_tells_every_option_that_the_program_has(self) -> None:
        told = subprocess.run([self.installed("bin/tunedeck"), "--help"], stdout=subprocess.PIPE, text=True, check=True)
        options = re.findall(r"(?<=[ ,])--?[a-z-]+", told.stdout)
        self.assertIn("--version", options)
        page = self.text.replace("\\-", "-")
        for option in options:
            self.assertRegex(page, rf"(?m)^\.BR?.*{option}\b")

    def test_it_is_of_this_version(self) -> None:
        self.assertIn(f'"Tunedeck {self.version}"', self.text)


class ChangelogTest(PackagingTest):
    def test_the_newest_entry_is_of_the_package_that_would_be_made(self) -> None:
        text = gzip.decompress(self.installed("share/doc/tunedeck/changelog.Debian.gz").read_bytes()).decode()
        package = (self.build / "CPackConfig.cmake").read_text()
        release = re.search(r'set\(CPACK_DEBIAN_PACKAGE_RELEASE "(\d+)"\)', package)[1]
        self.assertRegex(text, rf"\Atunedeck \({re.escape(self.version)}-{release}\) \S+; urgency=\w+\n")


class BuildNumberTest(unittest.TestCase):
    def configure(self, number: str) -> str:
        with tempfile.TemporaryDirectory() as folder:
            return complaints("cmake", "-S", ROOT, "-B", folder, f"-DTUNEDECK_BUILD_NUMBER={number}")

    def test_what_is_no_number_is_refused(self) -> None:
        for number in ("", " ", "latest", "1.2", "-1", "0", "07", "1;2", "12a", "9" * 19):
            with self.subTest(number):
                said = self.configure(number)
                self.assertIn("TUNEDECK_BUILD_NUMBER is not a whole number from 1 on", said)
                self.assertIn("exit status", said)


class UpdateKeysTest(unittest.TestCase):
    first = "D3VWmAGE16c0ttkWbnGkqPbSHkTzTLxIvYFWZLYVcFI="
    second = "PUAXw+hDiVqStwqnTRt+vJyYLM8uxJaMwM1V8Sr0Zgw="

    def configure(self, first: str, second: str) -> str:
        with tempfile.TemporaryDirectory() as folder:
            return complaints("cmake", "-S", ROOT, "-B", folder, "-DTUNEDECK_BUILD_NUMBER=2", "-DBUILD_TESTING=OFF",
                "-DTUNEDECK_FEED_URL=https://tunedeck.example/feed.xml",
                f"-DTUNEDECK_UPDATE_PUBLIC_KEY={first}", f"-DTUNEDECK_UPDATE_NEXT_PUBLIC_KEY={second}")

    def test_a_copy_that_looks_for_updates_has_two_keys(self) -> None:
        self.assertNotIn("exit status", self.configure(self.first, self.second))
        self.assertIn("TUNEDECK_UPDATE_PUBLIC_KEY is not the Base64", self.configure("", self.second))
        self.assertIn("TUNEDECK_UPDATE_NEXT_PUBLIC_KEY is not the Base64", self.configure(self.first, ""))
        self.assertIn("is the first key again", self.configure(self.first, self.first))


def can_be_root_by_itself() -> bool:
    return shutil.which("unshare") is not None and complaints("unshare", "--map-root-user", "--mount", "true") == ""


@unittest.skipUnless(can_be_root_by_itself(), "this user may not make namespaces")
class ChrootTest(unittest.TestCase):
    """The script that installs the package in a fresh system, as root of a namespace, and with a debootstrap that says
    what it got, leaves a mounted folder and fails."""

    def setUp(self) -> None:
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        self.folder = Path(stack.enter_context(tempfile.TemporaryDirectory()))
        self.temporary = self.folder / "temporary files"
        self.temporary.mkdir()
        self.told = self.folder / "told"
        self.programs = self.folder / "programs"
        self.programs.mkdir()
        self.debootstrap(f"""
            printf '%s\\n' "$@" >"{self.told}"
            for argument; do [ ! -d "$argument" ] || system=$argument; done
            stat --format '%a %u' "$system" "$system/.." >>"{self.told}"
            mkdir "$system/proc"
            mount -t tmpfs none "$system/proc"
            touch "$system/proc/file"
            echo "It went wrong."
            """)
        self.package = self.folder / "tunedeck.deb"
        self.package.touch()

    def debootstrap(self, lines: str, status: int = 1) -> None:
        program = self.programs / "debootstrap"
        program.write_text(f"#!/bin/sh\nset -e\n{lines}\nexit {status}\n")
        program.chmod(0o755)

    def run_script(self, *arguments: Path) -> subprocess.CompletedProcess:
        return subprocess.run(
            ["unshare", "--map-root-user", "--mount", ROOT / "packaging/try-in-chroot", self.package, *arguments],
            env=os.environ | {"PATH": f"{self.programs}:{os.environ['PATH']}", "TMPDIR": str(self.temporary)},
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    def test_the_signatures_are_verified_with_a_keyring(self) -> None:
        self.run_script()
        told = self.told.read_text().splitlines()
        self.assertIn("--force-check-gpg", told)
        self.assertIn("--keyring=/usr/share/keyrings/debian-archive-keyring.gpg", told)

    def test_nobody_else_may_enter_the_folder(self) -> None:
        self.run_script()
        self.assertEqual(self.told.read_text().splitlines()[-2:], ["755 0", "700 0"])

    def test_nothing_remains_when_it_fails_and_the_log_says_why(self) -> None:
        done = self.run_script()
        self.assertEqual(done.returncode, 1)
        self.assertIn("It went wrong.\nCreating it failed.\n", done.stdout)
        self.assertEqual(list(self.temporary.iterdir()), [])

    def test_nothing_remains_when_it_is_ended(self) -> None:
        self.debootstrap('kill -TERM "$PPID"')
        self.assertNotEqual(self.run_script().returncode, 0)
        self.assertEqual(list(self.temporary.iterdir()), [])

    def test_two_runs_have_folders_of_their_own(self) -> None:
        folders = set()
        for _ in range(2):
            self.run_script()
            folders.update(line for line in self.told.read_text().splitlines() if line.startswith(str(self.temporary)))
        self.assertEqual(len(folders), 2)

    def test_a_folder_that_exists_is_not_touched(self) -> None:
        for make in (lambda path: path.mkdir(), lambda path: path.symlink_to(self.folder / "elsewhere")):
            given = self.folder / "given"
            make(given)
            self.assertNotEqual(self.run_script(given).returncode, 0)
            self.assertTrue(given.is_symlink() or given.is_dir())
            self.assertFalse(self.told.exists() or (self.folder / "elsewhere").exists())
            given.unlink() if given.is_symlink() else given.rmdir()

    def test_a_given_folder_is_removed_at_the_end(self) -> None:
        given = self.folder / "given folder"
        self.run_script(given)
        self.assertTrue(self.told.exists())
        self.assertFalse(given.exists())


class InstallationTest(PackagingTest):
    def setUp(self) -> None:
        super().setUp()
        self.expected = INSTALLED | {f"{self.libraries}/tunedeck/tunedeck-updates.so"}

    def test_these_files_are_installed_and_no_others(self) -> None:
        found = {path.relative_to(self.installed("")).as_posix() for path in self.staged.rglob("*") if not path.is_dir()}
        self.assertEqual(found, self.expected)

    def test_everyone_may_read_the_files_and_nobody_may_run_what_is_not_a_program(self) -> None:
        for name in self.expected:
            mode = self.installed(name).stat().st_mode & 0o777
            self.assertEqual(f"{mode:o}", "755" if name.startswith("bin/") else "644", name)

    def test_each_icon_has_the_size_of_its_folder(self) -> None:
        for size in SIZES:
            icon = self.installed(f"share/icons/hicolor/{size}x{size}/apps/{ID}.png")
            self.assertEqual(png_size(icon), (size, size))

    def test_the_compressed_files_have_no_time_in_them(self) -> None:
        for name in self.expected:
            if name.endswith(".gz"):
                self.assertEqual(self.installed(name).read_bytes()[4:8], bytes(4), name)


if __name__ == "__main__":
    PackagingTest.build = Path(sys.argv.pop(1))
    PackagingTest.version = sys.argv.pop(1)
    PackagingTest.libraries = sys.argv.pop(1)
    unittest.main()
