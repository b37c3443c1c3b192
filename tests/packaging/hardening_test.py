# SPDX-License-Identifier: MIT
"""Reads the built program and its two modules: whether they have what makes a mistake in them hard to exploit.

Usage: hardening_test.py PROGRAM MODULE MODULE [TEST...]
"""

import platform
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

LANDING_PAD = bytes.fromhex("f30f1efa")  # endbr64, which begins each function that may be the target of a jump
# The compiler's own start files have fewer.
FEWEST_LANDING_PADS = 100
INTEL = platform.machine() == "x86_64"

SOFT = """#include <vector>
int main(int count, char **)
{
    volatile char buffer[64];
    buffer[count] = 0;
    return std::vector<int>(4)[count] + buffer[count];
}
"""
SOFT_FLAGS = ["-O0", "-no-pie", "-fno-stack-protector", "-fcf-protection=none",
              "-Wl,-z,norelro,-z,lazy,-z,execstack"]


def read(option: str, file: Path) -> str:
    return subprocess.run(["readelf", "--wide", option, file], stdout=subprocess.PIPE, text=True, check=True).stdout


def has_landing_pads(file: Path) -> bool:
    section = re.search(r"\.text +PROGBITS +\w+ (\w+) (\w+)", read("--section-headers", file))
    start, size = (int(number, 16) for number in section.groups())
    return file.read_bytes()[start:start + size].count(LANDING_PAD) >= FEWEST_LANDING_PADS


def faults(file: Path) -> list[str]:
    """What `file` lacks, one word each."""
    segments, dynamic, symbols = read("--segments", file), read("--dynamic", file), read("--dyn-syms", file)
    stack = re.search(r"GNU_STACK( +\w+){5} +(?P<flags>[RWE ]+?) +0x", segments)
    has = {
        "PIE": "Elf file type is DYN" in segments,
        "RELRO": "GNU_RELRO" in segments,
        "NOW": re.search(r"\(FLAGS(_1)?\).*\b(BIND_)?NOW\b", dynamic) is not None,
        "NX": stack is not None and "E" not in stack["flags"],
        "TEXTREL": "(TEXTREL)" not in dynamic,
        "canary": "__stack_chk_fail" in symbols,
        "assertions": "__glibcxx_assert_fail" in symbols,
        "CET": not INTEL or has_landing_pads(file),
    }
    return [name for name, is_there in has.items() if not is_there]


class HardeningTest(unittest.TestCase):
    files: list[Path]

    def test_the_program_and_its_modules_are_hardened(self) -> None:
        self.assertEqual({file.name: faults(file) for file in self.files}, {file.name: [] for file in self.files})

    def test_the_check_finds_what_is_missing(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            source = Path(folder) / "soft.cpp"
            source.write_text(SOFT)
            program = source.with_suffix("")
            subprocess.run(["c++", *SOFT_FLAGS, source, "-o", program], check=True)
            expected = ["PIE", "RELRO", "NOW", "NX", "canary", "assertions"] + ["CET"] * INTEL
            self.assertEqual(faults(program), expected)


if __name__ == "__main__":
    HardeningTest.files = [Path(sys.argv.pop(1)) for _ in range(3)]
    unittest.main()
