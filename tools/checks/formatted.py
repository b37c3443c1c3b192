#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Fails where clang-format would write a source otherwise; --fix lets it.

Usage: formatted.py [--fix] [the project's folder]
"""

import shutil
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]


def main() -> int:
    arguments = sys.argv[1:]
    how = ["-i"] if "--fix" in arguments else ["--dry-run", "-Werror"]
    root = Path(next((argument for argument in arguments if argument != "--fix"), ROOT))
    sources = sorted(
        str(path) for folder in ("src", "tests", "tools") for kind in ("*.h", "*.cpp")
        for path in (root / folder).rglob(kind))
    if not shutil.which("clang-format"):
        print("clang-format is not installed.", file=sys.stderr)
        return 2
    if not sources:
        print(f"There are no sources in {root}.", file=sys.stderr)
        return 2
    return 1 if subprocess.run(["clang-format", *how, *sources]).returncode else 0


if __name__ == "__main__":
    sys.exit(main())
