#!/usr/bin/env -S python3 -B
# SPDX-License-Identifier: MIT
"""Each tool is shown a source it must not pass, and one it must: a check that cannot fail checks nothing."""

import json
import subprocess
import tempfile
import unittest
from pathlib import Path

import analyse
import compilation

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
        self.compiler = ["c++"]
        self.macros: dict[str, list[str]] = {}
        (self.root / "src").mkdir()
        for settings in (".clang-format", ".clang-tidy"):
            (self.root / settings).write_text((CHECKS.parents[1] / settings).read_text())

    def write(self, name: str, text: str) -> None:
        (self.root / "src" / name).write_text(text)
        (self.root / "compile_commands.json").write_text(json.dumps([{
            "directory": str(self.root), "file": str(path),
            "arguments": [*self.compiler, *self.macros.get(path.name, []), *FLAGS, "-c", str(path)],
        } for path in (self.root / "src").glob("*.cpp")]))

    def analysis(self, tool: str) -> tuple[str, ...]:
        return ("analyse.py", tool, str(self.root), str(self.root))

    def check(self, *command: str) -> subprocess.CompletedProcess[str]:
        return subprocess.run([CHECKS / command[0], *command[1:]], capture_output=True, text=True)

    def assert_finds(self, what: str, *command: str) -> None:
        done = self.check(*command)
        self.assertEqual(done.returncode, 1, done)
        self.assertIn(what, done.stdout + done.stderr)

    def assert_passes(self, *command: str) -> None:
        done = self.check(*command)
        self.assertEqual(done.returncode, 0, done)

    def assert_says(self, what: str, *command: str) -> None:
        done = self.check(*command)
        self.assertEqual(done.returncode, 0, done)
        self.assertIn(what, done.stdout)

    def test_a_badly_formatted_source_is_found(self) -> None:
        self.write("Good.cpp", GOOD)
        self.assert_passes("formatted.py", str(self.root))
        self.write("Bad.cpp", GOOD.replace("    ", "  "))
        self.assert_finds("Bad.cpp:3", "formatted.py", str(self.root))

    def test_clang_tidy_finds_a_null_that_is_a_number(self) -> None:
        clang_tidy = self.analysis("clang-tidy")
        self.write("Good.cpp", GOOD)
        self.assert_passes(*clang_tidy)
        self.write("Bad.cpp", GOOD.replace("int one", "int *none").replace("1", "0"))
        self.assert_finds("modernize-use-nullptr", *clang_tidy)

    def test_clazy_finds_a_loop_that_copies(self) -> None:
        clazy = self.analysis("clazy")
        self.write("Good.cpp", GOOD)
        self.assert_passes(*clazy)
        self.write("Bad.cpp", COPYING_LOOP)
        self.assert_finds("clazy-range-loop-reference", *clazy)

    def test_clazy_finds_the_loop_in_one_of_several_sources(self) -> None:
        self.write("First.cpp", GOOD)
        self.write("Second.cpp", COPYING_LOOP)
        self.write("Third.cpp", GOOD.replace("one", "three"))
        self.assert_finds("Second.cpp:6", *self.analysis("clazy"))

    def test_a_header_s_faults_are_found_from_the_source_that_includes_it(self) -> None:
        self.write("Bad.h", "inline int *none()\n{\n    return 0;\n}\n")
        self.write("Bad.cpp", '#include "Bad.h"\n')
        self.assert_finds("Bad.h:3", *self.analysis("clang-tidy"))

    def test_what_did_not_change_is_not_analysed_again(self) -> None:
        for tool in ("clang-tidy", "clazy"):
            self.write("Good.cpp", GOOD)
            self.assert_says("finds nothing in 1 sources, of which 1 are new", *self.analysis(tool))
            self.assert_says("finds nothing in 1 sources, of which 0 are new", *self.analysis(tool))

    def test_a_changed_header_is_analysed_again(self) -> None:
        header = "inline int *none()\n{\n    return nullptr;\n}\n"
        clang_tidy = self.analysis("clang-tidy")
        self.write("Changing.h", header)
        self.write("Same.cpp", '#include "Changing.h"\n')
        self.assert_passes(*clang_tidy)
        self.write("Changing.h", header.replace("nullptr", "0"))
        self.assert_finds("Changing.h:3", *clang_tidy)

    def test_a_header_that_appears_is_analysed(self) -> None:
        clang_tidy = self.analysis("clang-tidy")
        self.write("Same.cpp", '#if __has_include("New.h")\nint *none()\n{\n    return 0;\n}\n#endif\n')
        self.assert_passes(*clang_tidy)
        self.write("New.h", "")
        self.assert_finds("Same.cpp:4", *clang_tidy)

    def test_all_is_analysed_again_with_a_changed_configuration(self) -> None:
        clang_tidy = self.analysis("clang-tidy")
        configuration = (self.root / ".clang-tidy").read_text()
        (self.root / ".clang-tidy").write_text("Checks: '-*,bugprone-use-after-move'\nWarningsAsErrors: '*'\n")
        self.write("Same.cpp", GOOD.replace("int one", "int *none").replace("1", "0"))
        self.assert_passes(*clang_tidy)
        (self.root / ".clang-tidy").write_text(configuration)
        self.assert_finds("modernize-use-nullptr", *clang_tidy)

    def test_all_is_analysed_again_with_other_arguments(self) -> None:
        clang_tidy = self.analysis("clang-tidy")
        self.write("Same.cpp", "#ifdef OTHER\nint *none()\n{\n    return 0;\n}\n#endif\n")
        self.assert_passes(*clang_tidy)
        self.compiler = ["c++", "-DOTHER"]
        self.write("Same.cpp", (self.root / "src/Same.cpp").read_text())
        self.assert_finds("Same.cpp:4", *clang_tidy)

    def test_a_finding_is_reported_until_it_is_mended(self) -> None:
        clang_tidy = self.analysis("clang-tidy")
        self.write("Bad.cpp", GOOD.replace("int one", "int *none").replace("1", "0"))
        self.assert_finds("Bad.cpp:4", *clang_tidy)
        self.assert_finds("Bad.cpp:4", *clang_tidy)

    def test_the_fault_is_found_in_one_of_several_sources_of_a_folder(self) -> None:
        self.write("First.cpp", GOOD)
        self.write("Second.cpp", GOOD.replace("int one", "int *none").replace("1", "0"))
        self.write("Third.cpp", GOOD.replace("one", "three"))
        self.assert_finds("Second.cpp:4", *self.analysis("clang-tidy"))

    def test_sources_that_cannot_be_read_as_one_are_read_alone(self) -> None:
        self.write("First.cpp", GOOD.replace("int one", "static int one"))
        self.write("Second.cpp", GOOD.replace("int one", "static int one"))
        self.assert_passes(*self.analysis("clang-tidy"))

    def test_sources_of_two_targets_are_read_with_the_arguments_of_both(self) -> None:
        first = ("-DONE=1", "-isystem", "/one", "-std=c++20")
        second = ("-DONE=1", "-DTWO", "-isystem", "/two", "-isystem", "/one")
        both = ("-DONE=1", "-isystem", "/one", "-std=c++20", "-DTWO", "-isystem", "/two")
        self.assertEqual(compilation.joined(first, second), both)

    def test_sources_of_two_targets_that_define_a_macro_differently_are_not_read_as_one(self) -> None:
        self.assertIsNone(compilation.joined(("-DONE=1",), ("-DONE=2",)))

    def test_another_target_s_macro_hides_nothing(self) -> None:
        self.macros = {"Second.cpp": ["-DFEATURE"]}
        self.write("First.cpp", "#ifndef FEATURE\nint *none()\n{\n    return 0;\n}\n#endif\n")
        self.write("Second.cpp", GOOD)
        self.assert_finds("First.cpp:4", *self.analysis("clang-tidy"))

    def test_two_programs_are_not_read_as_one(self) -> None:
        self.write("First.cpp", GOOD.replace("int one", "int main"))
        self.write("Second.cpp", GOOD.replace("int one", "int main"))
        sources = compilation.sources(self.root, [self.root / "src"], [])
        self.assertEqual([len(unit.sources) for unit in analyse.units(sources, 2)], [1, 1])

    def test_a_declaration_that_only_another_source_uses_is_found(self) -> None:
        self.write("Names.h", "#pragma once\nnamespace names {\ninline int one() { return 1; }\n}\n")
        self.write("A.cpp", '#include "Names.h"\nusing names::one;\n')
        self.write("B.cpp", '#include "Names.h"\nusing names::one;\nint two()\n{\n    return one() + one();\n}\n')
        self.assert_finds("misc-unused-using-decls", "analyse.py", "clang-tidy", str(self.root), str(self.root))

    def test_a_header_that_only_the_precompiled_headers_include_is_missed(self) -> None:
        includes = ("includes.py", str(self.root), str(self.root))
        precompiled = self.root / "CMakeFiles/program.dir/cmake_pch.hxx"
        precompiled.parent.mkdir(parents=True)
        precompiled.write_text("#include <QStringList>\n")
        self.compiler = ["/usr/bin/ccache", "/usr/bin/c++", "-Winvalid-pch", "-include", str(precompiled)]
        source = "qsizetype length(const QStringList &names)\n{\n    return names.size();\n}\n"
        self.write("A.cpp", f"#include <QStringList>\n\n{source}")
        self.assert_passes(*includes)
        self.write("B.cpp", source.replace("length", "count"))
        self.assert_finds("src/B.cpp: <QStringList> is not included", *includes)

    def test_a_header_of_the_library_that_a_source_forgets_is_missed(self) -> None:
        includes = ("includes.py", str(self.root), str(self.root))
        self.write("A.cpp", "std::optional<int> none()\n{\n    return {};\n}\n")
        self.assert_finds("src/A.cpp: <optional> is not included", *includes)

    def test_a_class_that_is_declared_needs_no_header(self) -> None:
        includes = ("includes.py", str(self.root), str(self.root))
        self.write("A.cpp", "class QString;\nQString *none()\n{\n    return nullptr;\n}\n")
        self.assert_passes(*includes)

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
        self.assertEqual(self.check(*self.analysis("clazy")).returncode, 2)
        self.assertEqual(self.check("includes.py", str(self.root), str(self.root)).returncode, 2)
        self.assertEqual(self.check("rules.py", str(self.root)).returncode, 2)


if __name__ == "__main__":
    unittest.main()
