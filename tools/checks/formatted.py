#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Fails where clang-format 19 would write a source otherwise; --fix lets it.

Usage: formatted.py [--fix] [the project's folder]
"""

import shutil
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
# Versions format differently. Debian 12 and 13 both have this one.
PROGRAM = "clang-format-19"


def main() -> int:
    arguments = sys.argv[1:]
    how = ["-i"] if "--fix" in arguments else ["--dry-run", "-Werror"]
    root = Path(next((argument for argument in arguments if argument != "--fix"), ROOT))
    sources = sorted(
        str(path) for folder in ("src", "tests", "tools") for kind in ("*.h", "*.cpp")
        for path in (root / folder).rglob(kind))
    if not shutil.which(PROGRAM):
        print(f"{PROGRAM} is not installed.", file=sys.stderr)
        return 2
    if not sources:
        print(f"There are no sources in {root}.", file=sys.stderr)
        return 2
    return 1 if subprocess.run([PROGRAM, *how, *sources]).returncode else 0


if __name__ == "__main__":
    sys.exit(main())
