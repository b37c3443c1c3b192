#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs clang-tidy or clazy over the program's and the tools' sources, and fails if it finds anything.

Usage: analyse.py (clang-tidy | clazy) <build folder> [the project's folder]

The build folder must be built: generated headers are part of what is read.
"""

import json
import os
import re
import shutil
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]

CLAZY_CHECKS = [
    "level0",
    "level1",
    # Our strings are UTF-16 literals already; and Qt has no view for every place that wants a string.
    "no-qstring-arg",
    # Rules of libraries that others build on.
    "no-overridden-signal",
]


def command_for(tool: str, build: Path, root: Path) -> list[str]:
    # The sources are compiled with GCC. What Clang's compiler would warn of beyond that is not asked, and what Clang 14
    # lacks of C++20's library is given to it.
    arguments = ["-Wno-everything", "-Wno-unknown-warning-option", f"-include{ROOT / 'tools/checks/clang14.h'}"]
    common = ["-p", str(build), f"--header-filter=^{re.escape(str(root))}/(src|tools)/"]
    common += [f"--extra-arg={argument}" for argument in arguments]
    if tool == "clang-tidy":
        return ["clang-tidy", "--quiet", *common]
    return ["clazy-standalone", f"--checks={','.join(CLAZY_CHECKS)}", *common]


def sources(build: Path, root: Path) -> list[str]:
    entries = json.loads((build / "compile_commands.json").read_text())
    files = {Path(entry["file"]) for entry in entries}
    return sorted(str(file) for file in files
                  if file.is_relative_to(root / "src") or file.is_relative_to(root / "tools"))


def findings(command: list[str], source: str) -> str:
    """What the tool found in one source; empty if nothing."""
    done = subprocess.run([*command, source], capture_output=True, text=True)
    said = done.stdout + done.stderr
    if done.returncode == 0 and not re.search(r"(warning|error): ", said):
        return ""
    said = re.sub(r"^\d+ warnings?( and \d+ errors?)? generated\.\n", "", said, flags=re.MULTILINE)
    return said or f"{source}: {command[0]} ended with status {done.returncode}"


def main() -> int:
    tool, build = sys.argv[1], Path(sys.argv[2]).resolve()
    root = Path(sys.argv[3]).resolve() if len(sys.argv) > 3 else ROOT
    command = command_for(tool, build, root)
    if not shutil.which(command[0]):
        print(f"{command[0]} is not installed.", file=sys.stderr)
        return 2
    files = sources(build, root)
    if not files:
        print(f"{build} compiles none of the project's sources.", file=sys.stderr)
        return 2
    with ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
        found = [text for text in pool.map(lambda file: findings(command, file), files) if text]
    print("\n".join(found) or f"{tool} finds nothing in {len(files)} sources.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
