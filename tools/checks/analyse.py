#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs clang-tidy or clazy over the program's and the tools' sources, and fails if it finds anything.

Usage: analyse.py (clang-tidy | clazy) <build folder> [the project's folder]

The build folder must be configured, but not built. Its folder "analysis" remembers in which sources
nothing was found, so that only what changed is analysed again.
"""

import os
import re
import shutil
import subprocess
import sys
import tempfile
from concurrent.futures import ThreadPoolExecutor
from dataclasses import dataclass
from pathlib import Path

import compilation
from compilation import Source

ROOT = Path(__file__).resolve().parents[2]

CLAZY_CHECKS = [
    "level0",
    "level1",
    # Our strings are UTF-16 literals already; and Qt has no view for every place that wants a string.
    "no-qstring-arg",
    # Rules of libraries that others build on.
    "no-overridden-signal",
]
# The sources are compiled with GCC. Clang's own warnings are switched off, and clang14.h gives Clang 14 what it lacks of
# C++20's library.
EXTRA_ARGUMENTS = ["-Wno-everything", "-Wno-unknown-warning-option", "-include", str(ROOT / "tools/checks/clang14.h")]

# The tools spend nearly all their time on the headers of Qt and of the library, so they read them once for several
# sources, with all that their targets pass to the compiler. They miss the header that a source forgets: includes.py
# finds it.
SOURCES_AT_ONCE = 16
# Some branches' worth of sources.
RESULTS_KEPT = 2000


class Unit:
    """Sources that are read as if they were one."""

    def __init__(self, first: Source) -> None:
        self.sources = [first]
        self.directory = first.directory
        self.arguments = first.arguments
        self._names = own_names(first)

    def add_if_joinable(self, source: Source) -> bool:
        """Whether the source could be added: it can be read as one with those that are there."""
        names = own_names(source)
        arguments = compilation.joined(self.arguments, source.arguments)
        if arguments is None or source.directory != self.directory or self._names & names:
            return False
        self.sources.append(source)
        self.arguments = arguments
        self._names |= names
        return True

    def size(self) -> int:
        """In bytes, without the headers."""
        return sum(source.file.stat().st_size for source in self.sources)


@dataclass(frozen=True)
class Analysis:
    """A tool with its settings."""

    tool: str
    root: Path

    @property
    def program(self) -> str:
        # Debian 12 and 13 both have this clang-tidy, and find the same. Clazy is whichever they have.
        return {"clang-tidy": "clang-tidy-19", "clazy": "clazy-standalone"}[self.tool]

    def command(self) -> list[str]:
        header_filter = f"--header-filter=^{re.escape(str(self.root))}/(src|tools)/"
        if self.tool == "clang-tidy":
            return [self.program, "--quiet", f"--config-file={self.root / '.clang-tidy'}", header_filter]
        return [self.program, f"--checks={','.join(CLAZY_CHECKS)}", header_filter]

    def fingerprint(self) -> str:
        """Changes with the tool, its settings and this script."""
        program = Path(shutil.which(self.program)).resolve()
        version = subprocess.run([program, "--version"], capture_output=True, text=True).stdout
        built = program.stat()
        parts = [*self.command(), version, str((built.st_size, built.st_mtime_ns))]
        files = [Path(__file__), Path(compilation.__file__), self.root / ".clang-tidy"]
        return compilation.digest(*parts, *(compilation.content_digest(file) for file in files))

    def findings(self, unit: Unit) -> str:
        """The tool's findings in the sources, which are read one after the other; empty if none."""
        if len(unit.sources) == 1:
            return self._findings_in(unit.sources[0].file, unit)
        with tempfile.NamedTemporaryFile(prefix="unit-", suffix=".cpp") as file:
            file.write(b"\n".join(source.file.read_bytes() for source in unit.sources))
            file.flush()
            own_folders = dict.fromkeys(f"-iquote{source.file.parent}" for source in unit.sources)
            return self._findings_in(Path(file.name), unit, *own_folders)

    def _findings_in(self, file: Path, unit: Unit, *arguments: str) -> str:
        done = subprocess.run(
            [*self.command(), str(file), "--", *arguments, *unit.arguments],
            cwd=unit.directory, capture_output=True, text=True)
        said = done.stdout + done.stderr
        if done.returncode == 0 and not re.search(r"(warning|error): ", said):
            return ""
        said = re.sub(r"^\d+ warnings?( and \d+ errors?)? generated\.\n", "", said, flags=re.MULTILINE)
        return said or f"{file}: {self.program} ended with status {done.returncode}"


class Results:
    """The fingerprints of the sources in which nothing was found, as names of empty files in a folder."""

    def __init__(self, folder: Path) -> None:
        self._folder = folder
        folder.mkdir(parents=True, exist_ok=True)

    def __contains__(self, fingerprint: str) -> bool:
        try:
            os.utime(self._folder / fingerprint)
        except FileNotFoundError:
            return False
        return True

    def keep(self, fingerprint: str) -> None:
        (self._folder / fingerprint).touch()

    def drop_oldest(self) -> None:
        by_use = sorted(self._folder.iterdir(), key=lambda file: file.stat().st_mtime_ns, reverse=True)
        for file in by_use[RESULTS_KEPT:]:
            file.unlink(missing_ok=True)


def own_names(source: Source) -> set[str]:
    """The names at the beginning of a line in the source's anonymous namespaces, and main. Two sources that share one
    cannot be read as one."""
    text = source.file.read_text()
    bodies = re.findall(r"^namespace \{\n(.*?)(?:^\} // namespace$|\Z)", text, flags=re.MULTILINE | re.DOTALL)
    names = (re.search(r"(\w+)\s*(?:[({=;[]|:(?!:)|$)", line)
             for body in bodies for line in body.splitlines() if re.match(r"\w", line))
    programs = re.findall(r"^int (main)\(", text, flags=re.MULTILINE)
    return {name[1] for name in names if name} | set(programs)


def must_be_read_alone(source: Source) -> bool:
    """Whether the source has a declaration such as "using tunedeck::Shadow;", which another source could seem to need, or
    a line such as "#ifdef FEATURE", which another target's macro could answer."""
    return bool(re.search(r"^\s*(using\s+[\w:]+::\w+;|#\s*if)", source.file.read_text(), flags=re.MULTILINE))


def units(sources: list[Source], at_once: int) -> list[Unit]:
    """All the sources, in units of at most so many, the longest first."""
    alone: list[Unit] = []
    together: list[Unit] = []
    for source in sources:
        if must_be_read_alone(source):
            alone.append(Unit(source))
            continue
        for unit in together:
            if len(unit.sources) < at_once and unit.add_if_joinable(source):
                break
        else:
            together.append(Unit(source))
    return sorted(alone + together, key=Unit.size, reverse=True)


def analyse(analysis: Analysis, sources: list[Source]) -> tuple[list[str], list[Source]]:
    """The findings, and the sources without any."""
    found: list[str] = []
    clean: list[Source] = []
    with ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
        waiting = units(sources, SOURCES_AT_ONCE)
        while waiting:
            examined = list(zip(waiting, pool.map(analysis.findings, waiting)))
            clean += [source for unit, said in examined if not said for source in unit.sources]
            found += [said for unit, said in examined if said and len(unit.sources) == 1]
            # What is found in several sources may come of reading them as one: each alone has the last word.
            doubtful = [unit for unit, said in examined if said and len(unit.sources) > 1]
            waiting = [Unit(source) for unit in doubtful for source in unit.sources]
    return found, clean


def main() -> int:
    tool, build = sys.argv[1], Path(sys.argv[2]).resolve()
    root = Path(sys.argv[3]).resolve() if len(sys.argv) > 3 else ROOT
    analysis = Analysis(tool, root)
    if not shutil.which(analysis.program):
        print(f"{analysis.program} is not installed.", file=sys.stderr)
        return 2
    sources = compilation.sources(build, [root / "src", root / "tools"], EXTRA_ARGUMENTS)
    if not sources:
        print(f"{build} compiles none of the project's sources.", file=sys.stderr)
        return 2

    # Tests that run beside it come first.
    os.nice(19)
    results = Results(build / "analysis" / tool)
    settings = analysis.fingerprint()
    before = compilation.fingerprints(sources)
    unknown = [source for source in sources
               if source not in before or compilation.digest(settings, before[source]) not in results]
    found, clean = analyse(analysis, unknown)
    # A source or a setting that changed meanwhile was perhaps another one in the analysis than in its fingerprint.
    are_settings_unchanged = analysis.fingerprint() == settings
    for source, fingerprint in compilation.fingerprints(clean).items():
        if are_settings_unchanged and fingerprint == before.get(source):
            results.keep(compilation.digest(settings, fingerprint))
    results.drop_oldest()

    print("\n".join(found) or f"{tool} finds nothing in {len(sources)} sources, of which {len(unknown)} are new to it.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
