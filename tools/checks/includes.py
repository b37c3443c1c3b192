#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks that the program's and the tools' sources include what they name, and names each breach as file: what is missing.

Usage: includes.py <build folder> [the project's folder]

The precompiled headers hide a header that a source forgets. The build folder must be configured, but not built. A header
counts as included if any header that the source includes does so.
"""

import re
import sys
from collections.abc import Iterator
from pathlib import Path

import compilation
from compilation import Source
from rules import without_comments

ROOT = Path(__file__).resolve().parents[2]

# What the sources use most of the library's headers that are precompiled.
OF_THE_LIBRARY = {
    "algorithm": r"ranges|sort|find_if|any_of|all_of|clamp",
    "array": r"array",
    "chrono": r"chrono",
    "cmath": r"round|lround|floor|ceil|abs|isfinite|pow|sqrt|hypot",
    "functional": r"function|less|greater",
    "memory": r"(unique|shared|weak)_ptr|make_(unique|shared)",
    "optional": r"optional|nullopt",
    "vector": r"vector",
}


def headers_of_qt(sources: list[Source]) -> dict[str, set[str]]:
    """The headers that Qt's header for a class includes, by the name of the class."""
    found: dict[str, set[str]] = {}
    folders = {Path(folder) for source in sources for word, folder in zip(source.arguments, source.arguments[1:])
               if word == "-isystem" and re.match(r"Qt[A-Z]\w+$", Path(folder).name)}
    folders |= {Path(word[2:]) for source in sources for word in source.arguments
                if word.startswith("-I") and re.match(r"Qt[A-Z]\w+$", Path(word).name)}
    for header in (header for folder in sorted(folders) for header in folder.glob("Q[A-Z]*") if header.is_file()):
        included = re.findall(r'^#include ["<](?:.*/)?([\w.]+)[">]', header.read_text(), flags=re.MULTILINE)
        found.setdefault(header.name, {header.name}).update(included)
    return found


def code_of(file: Path) -> str:
    without_strings = re.sub(r'"(?:\\.|[^"\\\n])*"', '""', without_comments(file.read_text()))
    return re.sub(r"^\s*#\s*include.*", "", without_strings, flags=re.MULTILINE)


def missing(source: Source, read: list[str], qt: dict[str, set[str]], own: Path) -> Iterator[str]:
    """What the source names although none of the files that are read for it declares it."""
    names = {Path(file).name for file in read}
    code = code_of(source.file)
    declared = {name for file in read if (source.directory / file).is_relative_to(own)
                for name in re.findall(r"\bclass (Q\w+);", (source.directory / file).read_text())}
    for used in sorted(set(re.findall(r"\bQ[A-Z]\w+", code)) & qt.keys() - declared):
        if not qt[used] & names:
            yield f"<{used}>"
    for header, used in OF_THE_LIBRARY.items():
        if header not in names and re.search(rf"\bstd::({used})\b", code):
            yield f"<{header}>"


def main() -> int:
    build = Path(sys.argv[1]).resolve()
    root = Path(sys.argv[2]).resolve() if len(sys.argv) > 2 else ROOT
    sources = compilation.sources(build, [root / "src", root / "tools"], [])
    read = compilation.files_read(sources)
    if not read:
        print("Nothing can be checked: no source is compiled, or Clang's scanner is not installed.", file=sys.stderr)
        return 2
    qt = headers_of_qt(sources)
    found = [f"{source.file.relative_to(root)}: {header} is not included"
             for source, files in read.items() for header in missing(source, files, qt, root)]
    print("\n".join(found) or f"{len(read)} sources include what they name.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
