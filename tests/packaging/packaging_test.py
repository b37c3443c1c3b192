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
import signal
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
    "share/bash-completion/completions/tunedeck",
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


def actions_told_by(help_text: str) -> list[str]:
    return re.search(r"is one of:([a-z,\s-]+)\.", help_text)[1].replace(",", " ").split()


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
        self.assertEqual(self.entry["Actions"],
                         "show-or-hide;play-pause;next;previous;playlists;raise-player;keep-above;")
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
        # Version 1.0 prefers a tag that version 0.16 does not know, and misses a home page, which this build has none of.
        accepted = ("developer-name-tag-deprecated", "developer-info-missing", "url-homepage-missing")
        said = complaints("appstreamcli", "validate", "--no-net", "--no-color", self.path)
        findings = re.findall(r"^[EWI]: .*$", said, re.MULTILINE)
        self.assertEqual([finding for finding in findings if not finding.endswith(accepted)], [])
        self.assertRegex(said, "Validation (was successful|failed: warnings: 1)")

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

    def test_it_tells_every_action_that_the_program_has(self) -> None:
        told = subprocess.run([self.installed("bin/tunedeck"), "--help"], stdout=subprocess.PIPE, text=True, check=True)
        names = actions_told_by(told.stdout)
        self.assertIn("show-or-hide", names)
        for name in names:
            self.assertRegex(self.text.replace("\\-", "-"), rf"(?m)^\.BR? ([a-z-]+ \", \" )?{name}\b")

    def test_texts_about_messages_list_every_category(self) -> None:
        sources = "".join(path.read_text() for path in (ROOT / "src").rglob("*.cpp"))
        categories = re.findall(r'Q_LOGGING_CATEGORY\(\w+, "(.+?)"', sources)
        self.assertIn("tunedeck.players", categories)
        texts = [self.text, (ROOT / "README.md").read_text()]
        texts += [page.read_text() for page in ROOT.glob("resources/help/*/11-troubleshooting.html")]
        self.assertEqual(len(texts), 2 + len(LANGUAGES) + 1)
        self.assertEqual([[name for name in categories if name not in text] for text in texts], [[]] * len(texts))

    def test_it_is_of_this_version(self) -> None:
        self.assertIn(f'"Tunedeck {self.version}"', self.text)


class CompletionTest(PackagingTest):
    def completed(self, *words: str) -> list[str]:
        """What bash offers for the last of these words, divided as bash divides them."""
        script = self.installed("share/bash-completion/completions/tunedeck")
        done = subprocess.run(
            ["bash", "-c", 'source "$0"; COMP_WORDS=(tunedeck "$@"); COMP_CWORD=$#; _tunedeck; echo "${COMPREPLY[@]}"',
             script, *words], capture_output=True, text=True, check=True)
        self.assertEqual(done.stderr, "")
        return done.stdout.split()

    def test_it_offers_the_options_and_actions_that_the_program_has(self) -> None:
        told = subprocess.run([self.installed("bin/tunedeck"), "--help"], stdout=subprocess.PIPE, text=True, check=True)
        self.assertEqual(set(self.completed("--")), set(re.findall(r"(?<=[ ,])--[a-z-]+", told.stdout)))
        names = actions_told_by(told.stdout)
        self.assertIn("show-or-hide", names)
        for words in (("--action", ""), ("--action", "="), ("--action", "=", "")):
            self.assertEqual(self.completed(*words), names)

    def test_it_offers_what_begins_like_the_word(self) -> None:
        self.assertEqual(self.completed("--ac"), ["--action"])
        self.assertEqual(self.completed("--action", "pl"), ["play-pause", "playlists"])
        self.assertEqual(self.completed("--action", "=", "vol"), ["volume-up", "volume-down"])
        self.assertEqual(self.completed("--action", "x"), [])


class ChangelogTest(PackagingTest):
    def test_the_newest_entry_is_of_the_package_that_would_be_made(self) -> None:
        text = gzip.decompress(self.installed("share/doc/tunedeck/changelog.Debian.gz").read_bytes()).decode()
        package = (self.build / "CPackConfig.cmake").read_text()
        release = re.search(r'set\(CPACK_DEBIAN_PACKAGE_RELEASE "(\d+)"\)', package)[1]
        self.assertRegex(text, rf"\Atunedeck \({re.escape(self.version)}-{release}\) \S+; urgency=\w+\n")


class AddressesTest(unittest.TestCase):
    homepage = "https://tunedeck.example/a-b"
    contact = "music@tunedeck.example"
    papers = ("copyright", "changelog", "tunedeck.1", f"{ID}.metainfo.xml")

    def setUp(self) -> None:
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        self.folder = Path(stack.enter_context(tempfile.TemporaryDirectory()))

    def configure(self, homepage: str = "", contact: str = "") -> str:
        return complaints("cmake", "-S", ROOT, "-B", self.folder, "-DBUILD_TESTING=OFF",
            "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON", f"-DTUNEDECK_HOMEPAGE={homepage}", f"-DTUNEDECK_CONTACT={contact}")

    def built(self) -> dict[str, str]:
        """What a build would contain: its papers, the package's description, and how the program is compiled."""
        files = [self.folder / "CPackConfig.cmake", self.folder / "compile_commands.json",
            *(self.folder / "packaging" / paper for paper in self.papers)]
        return {path.name: path.read_text() for path in files}

    def test_a_build_without_addresses_names_none(self) -> None:
        self.assertNotIn("exit status", self.configure())
        for name, text in self.built().items():
            self.assertNotRegex(text, r"tunedeck\.(org|example)|\w@\w|\{/?(homepage|contact)\}", name)
        self.assertIn('set(CPACK_PACKAGE_CONTACT "The Tunedeck founders")', self.built()["CPackConfig.cmake"])
        self.assertNotIn("screenshot", self.built()[f"{ID}.metainfo.xml"])

    def test_a_build_with_addresses_names_them_everywhere(self) -> None:
        self.assertNotIn("exit status", self.configure(self.homepage, self.contact))
        built = self.built()
        self.assertIn(f"\nUpstream-Contact: The Tunedeck founders <{self.contact}>\n", built["copyright"])
        self.assertIn(f"\nSource: {self.homepage}\n", built["copyright"])
        self.assertIn(f" -- The Tunedeck founders <{self.contact}>  ", built["changelog"])
        self.assertIn("\nhttps://tunedeck.example/a\\-b,\n", built["tunedeck.1"])
        self.assertIn(f'_CONTACT "The Tunedeck founders <{self.contact}>"', built["CPackConfig.cmake"])
        self.assertIn(f'_HOMEPAGE "{self.homepage}"', built["CPackConfig.cmake"])
        self.assertIn(self.homepage, built["compile_commands.json"])
        self.assertIn(self.contact, built["compile_commands.json"])
        for name, text in built.items():
            self.assertNotRegex(text, r"tunedeck\.org\b|\{/?(homepage|contact)\}", name)

    def test_each_screenshot_is_a_picture_of_the_size_that_is_told(self) -> None:
        self.configure(self.homepage)
        component = ElementTree.parse(self.folder / "packaging" / f"{ID}.metainfo.xml").getroot()
        self.assertEqual(component.findtext("url"), self.homepage)
        pictures = {"player.png": ROOT / "packaging/screenshots/player.png",
                    "playlists.png": ROOT / "resources/screenshot.png"}
        images = component.findall("screenshots/screenshot/image")
        self.assertEqual([image.text for image in images], [f"{self.homepage}/screenshots/{name}" for name in pictures])
        for image, picture in zip(images, pictures.values()):
            self.assertEqual((int(image.get("width")), int(image.get("height"))), png_size(picture), image.text)

    def test_what_is_no_plain_address_is_refused(self) -> None:
        for homepage in ("http://tunedeck.example", "tunedeck.example", "https://a.example/", 'https://a.example/"',
                         "https://a.example/?a&b", "https://a.example/a;b"):
            with self.subTest(homepage):
                self.assertIn("TUNEDECK_HOMEPAGE is not a plain https address", self.configure(homepage))
        for contact in ("music", "a b@tunedeck.example", "<a@tunedeck.example>", "@tunedeck.example", "a@"):
            with self.subTest(contact):
                self.assertIn("TUNEDECK_CONTACT is not a plain mail address", self.configure(contact=contact))


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
    """The script that tries the project in a fresh system, as root of a namespace, and with a debootstrap that says what
    it got, leaves a mounted folder and fails."""

    def setUp(self) -> None:
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        self.folder = Path(stack.enter_context(tempfile.TemporaryDirectory()))
        self.temporary = self.folder / "temporary files"
        self.temporary.mkdir()
        self.told = self.folder / "told"
        self.programs = self.folder / "programs"
        self.programs.mkdir()
        self.debootstrap("echo 'It went wrong.'\nexit 1")

    def debootstrap(self, lines: str) -> None:
        program = self.programs / "debootstrap"
        program.write_text(f"""#!/bin/sh
            set -e
            for argument; do [ ! -d "$argument" ] || system=$argument; done
            mkdir "$system/proc"
            mount -t tmpfs none "$system/proc"
            touch "$system/proc/file"
            printf '%s\\n' "$@" >"{self.told}.next"
            stat --format '%a %u' "$system" "$system/.." >>"{self.told}.next"
            mv "{self.told}.next" "{self.told}"
            {lines}
            """)
        program.chmod(0o755)

    def start_script(self, *arguments: str) -> subprocess.Popen:
        return subprocess.Popen(
            ["unshare", "--map-root-user", "--mount", ROOT / "packaging/try-in-chroot", *arguments],
            env=os.environ | {"PATH": f"{self.programs}:{os.environ['PATH']}", "TMPDIR": str(self.temporary)},
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    def run_script(self, *arguments: str) -> tuple[int, str]:
        with self.start_script(*(arguments or ("--suite", "trixie"))) as script:
            said, _ = script.communicate()
        return script.returncode, said

    def test_the_signatures_are_verified_with_a_keyring(self) -> None:
        self.run_script()
        told = self.told.read_text().splitlines()
        self.assertIn("--force-check-gpg", told)
        self.assertIn("--keyring=/usr/share/keyrings/debian-archive-keyring.gpg", told)

    def test_the_suite_is_the_given_one_and_no_other_than_these_two(self) -> None:
        for suite in ("bookworm", "trixie"):
            self.run_script("--suite", suite)
            self.assertIn(suite, self.told.read_text().splitlines())
            self.told.unlink()
        for arguments in (("--suite", "sid"), ("--suite", "trixie/../sid"), ("--suite",), ("--run",), ("--surprise",)):
            status, said = self.run_script(*arguments)
            self.assertEqual(status, 2)
            self.assertIn("Usage: packaging/try-in-chroot", said)
        self.assertFalse(self.told.exists())

    def test_a_missing_folder_for_ccache_is_refused_at_once(self) -> None:
        status, said = self.run_script("--suite", "trixie", "--ccache", str(self.folder / "missing"))
        self.assertEqual(status, 2, said)
        self.assertIn("Usage: packaging/try-in-chroot", said)
        self.assertFalse(self.told.exists())

    def test_nobody_else_may_enter_the_folder(self) -> None:
        self.run_script()
        self.assertEqual(self.told.read_text().splitlines()[-2:], ["755 0", "700 0"])

    def test_nothing_remains_when_it_fails_and_the_log_says_why(self) -> None:
        status, said = self.run_script()
        self.assertEqual(status, 1)
        self.assertIn("It went wrong.\nCreating it failed.\n", said)
        self.assertEqual(list(self.temporary.iterdir()), [])

    def test_nothing_remains_when_the_user_ends_it(self) -> None:
        # A program in the system goes on, and keeps a folder there in use.
        ready = self.folder / "ready"
        os.mkfifo(ready)
        self.debootstrap(f'cd "$system/proc"\necho >"{ready}"\nexec tail --follow /dev/null')
        for number in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            with self.start_script("--suite", "bookworm") as script:
                ready.read_text()
                self.assertNotEqual(list(self.temporary.iterdir()), [])
                script.send_signal(number)
                script.communicate()
            self.assertEqual(script.returncode, 128 + number)
            self.assertEqual(list(self.temporary.iterdir()), [])

    def test_two_runs_have_folders_of_their_own(self) -> None:
        folders = set()
        for _ in range(2):
            self.run_script()
            folders.update(line for line in self.told.read_text().splitlines() if line.startswith(str(self.temporary)))
        self.assertEqual(len(folders), 2)


class InstallationTest(PackagingTest):
    def setUp(self) -> None:
        super().setUp()
        self.expected = INSTALLED | {f"{self.libraries}/tunedeck/tunedeck-{module}.so" for module in ("audio", "updates")}

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
