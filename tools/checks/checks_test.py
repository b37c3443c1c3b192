#!/usr/bin/env -S python3 -B
# SPDX-License-Identifier: MIT
"""Each tool is shown a source it must not pass, and one it must: a check that cannot fail checks nothing."""

import json
import subprocess
import tempfile
import unittest
from pathlib import Path

CHECKS = Path(__file__).resolve().parent
QT = subprocess.run(["pkg-config", "--cflags", "Qt6Core"], capture_output=True, text=True, check=True).stdout.split()
FLAGS = ["-std=c++20", "-fPIC", *QT]
GOOD = "// SPDX-License-Identifier: MIT\nint one()\n{\n    return 1;\n}\n"
COPYING_LOOP = """#include <QStringList>

qsizetype length(const QStringList &names)
{
    qsizetype sum = 0;
    for (QString name : names) {
        sum += name.size();
    }
    return sum;
}
"""


class ChecksTest(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)
        (self.root / "src").mkdir()
        for settings in (".clang-format", ".clang-tidy"):
            (self.root / settings).write_text((CHECKS.parents[1] / settings).read_text())

    def write(self, name: str, text: str) -> None:
        (self.root / "src" / name).write_text(text)
        (self.root / "compile_commands.json").write_text(json.dumps([{
            "directory": str(self.root), "file": str(path), "arguments": ["c++", *FLAGS, "-c", str(path)],
        } for path in (self.root / "src").glob("*.cpp")]))

    def check(self, *command: str) -> subprocess.CompletedProcess[str]:
        return subprocess.run([CHECKS / command[0], *command[1:]], capture_output=True, text=True)

    def assert_finds(self, what: str, *command: str) -> None:
        done = self.check(*command)
        self.assertEqual(done.returncode, 1, done)
        self.assertIn(what, done.stdout + done.stderr)

    def assert_passes(self, *command: str) -> None:
        done = self.check(*command)
        self.assertEqual(done.returncode, 0, done)

    def test_a_badly_formatted_source_is_found(self) -> None:
        self.write("Good.cpp", GOOD)
        self.assert_passes("formatted.py", str(self.root))
        self.write("Bad.cpp", GOOD.replace("    ", "  "))
        self.assert_finds("Bad.cpp:3", "formatted.py", str(self.root))

    def test_clang_tidy_finds_a_null_that_is_a_number(self) -> None:
        clang_tidy = ("analyse.py", "clang-tidy", str(self.root), str(self.root))
        self.write("Good.cpp", GOOD)
        self.assert_passes(*clang_tidy)
        self.write("Bad.cpp", GOOD.replace("int one", "int *none").replace("1", "0"))
        self.assert_finds("modernize-use-nullptr", *clang_tidy)

    def test_clazy_finds_a_loop_that_copies(self) -> None:
        clazy = ("analyse.py", "clazy", str(self.root), str(self.root))
        self.write("Good.cpp", GOOD)
        self.assert_passes(*clazy)
        self.write("Bad.cpp", COPYING_LOOP)
        self.assert_finds("clazy-range-loop-reference", *clazy)

    def test_a_header_s_faults_are_found_from_the_source_that_includes_it(self) -> None:
        self.write("Bad.h", "inline int *none()\n{\n    return 0;\n}\n")
        self.write("Bad.cpp", '#include "Bad.h"\n')
        self.assert_finds("Bad.h:3", "analyse.py", "clang-tidy", str(self.root), str(self.root))

    def test_a_text_without_a_translation_is_found(self) -> None:
        folder = self.root / "resources/translations"
        folder.mkdir(parents=True)
        ours = CHECKS.parents[1] / "resources/translations"
        empty = '<?xml version="1.0" encoding="utf-8"?><!DOCTYPE TS><TS version="2.1" language="{}"></TS>'
        for language in (file.stem.partition("_")[2] for file in ours.glob("*.ts")):
            (folder / f"tunedeck_{language}.ts").write_text(empty.format(language))
        self.write("Good.cpp", GOOD)
        self.assert_passes("translations.py", str(self.root))
        self.write("Bad.cpp", 'QString text()\n{\n    return QCoreApplication::translate("Context", "Text");\n}\n')
        self.assert_finds('tunedeck_fi.ts: Context: "Text" is unfinished', "translations.py", str(self.root))

    def test_a_text_that_is_no_more_is_found(self) -> None:
        folder = self.root / "resources/translations"
        folder.mkdir(parents=True)
        for file in (CHECKS.parents[1] / "resources/translations").glob("*.ts"):
            (folder / file.name).write_text(file.read_text())
        self.write("Good.cpp", GOOD)
        self.assert_finds("is vanished", "translations.py", str(self.root))

    def test_nothing_to_check_is_an_error(self) -> None:
        self.write("readme.txt", "")
        self.assertEqual(self.check("formatted.py", str(self.root)).returncode, 2)
        self.assertEqual(self.check("analyse.py", "clazy", str(self.root), str(self.root)).returncode, 2)
        self.assertEqual(self.check("rules.py", str(self.root)).returncode, 2)


if __name__ == "__main__":
    unittest.main()
