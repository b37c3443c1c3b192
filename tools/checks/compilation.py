# SPDX-License-Identifier: MIT
"""How the sources are compiled, and fingerprints of all that a compiler reads for them."""

import hashlib
import itertools
import json
import re
import shlex
import shutil
import subprocess
import tempfile
from dataclasses import dataclass
from pathlib import Path


@dataclass(frozen=True)
class Source:
    """A source, and the arguments for a compiler that reads it in the directory; they do not name the source."""

    file: Path
    directory: Path
    arguments: tuple[str, ...]


def joined(first: tuple[str, ...], second: tuple[str, ...]) -> tuple[str, ...] | None:
    """The arguments for a compiler that reads sources with these two as if they were one. None if the two define a macro
    differently."""
    words = words_of(first)
    definitions = dict(definition_in(word) for word in words)
    for word in words_of(second):
        macro, value = definition_in(word)
        if definitions.setdefault(macro, value) != value:
            return None
        if word not in words:
            words.append(word)
    return tuple(itertools.chain.from_iterable(words))


def words_of(arguments: tuple[str, ...]) -> list[tuple[str, ...]]:
    """The arguments. An option and its separate value are one word."""
    words: list[tuple[str, ...]] = []
    remaining = iter(arguments)
    for word in remaining:
        words.append((word, next(remaining)) if word in ("-isystem", "-include") else (word,))
    return words


def definition_in(word: tuple[str, ...]) -> tuple[str, str]:
    """The macro's name and its value, with an empty name for a word that defines none."""
    if not word[0].startswith("-D"):
        return "", ""
    macro, _, value = word[0][2:].partition("=")
    return macro, value


def bare_arguments(command: list[str], file: Path, directory: Path) -> tuple[str, ...]:
    """The arguments without the launcher, the compiler, the source and the output; and without precompiled headers, for
    another compiler cannot read them, and they hide the header that a source forgets to include."""
    def is_empty(folder: str) -> bool:
        return not any((directory / folder).glob("*"))

    arguments: list[str] = []
    remaining = itertools.dropwhile(lambda word: not word.startswith("-"), command)
    for word in remaining:
        if word == "-o":
            next(remaining)
        elif word == "-isystem":
            folder = next(remaining)
            arguments += [] if is_empty(folder) else [word, folder]
        elif word.startswith("-I") and is_empty(word[2:]):
            # Each target has such a folder for generated headers.
            continue
        elif word == "-include":
            header = next(remaining)
            if Path(header).name != "cmake_pch.hxx":
                arguments += [word, header]
        elif word not in ("-c", "-Winvalid-pch") and directory / word != file:
            arguments.append(word)
    return tuple(arguments)


def sources(build: Path, folders: list[Path], extra_arguments: list[str]) -> list[Source]:
    """The sources in the folders that the build folder compiles."""
    found = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        file, directory = Path(entry["file"]), Path(entry["directory"])
        if any(file.is_relative_to(folder) for folder in folders):
            command = entry.get("arguments") or shlex.split(entry["command"])
            arguments = bare_arguments(command, file, directory)
            found[file] = Source(file, directory, (*arguments, *extra_arguments))
    return [found[file] for file in sorted(found)]


def digest(*parts: str) -> str:
    return hashlib.sha256("\0".join(parts).encode()).hexdigest()


def content_digest(file: Path) -> str:
    return hashlib.sha256(file.read_bytes()).hexdigest()


def files_read(sources: list[Source]) -> dict[Source, list[str]]:
    """The files that the preprocessor reads for each source, or asks for with __has_include. A source that includes what
    does not exist is left out; all are left out where Clang's scanner is not installed."""
    clang_tidy = shutil.which("clang-tidy-19")
    scanner = Path(clang_tidy).resolve().with_name("clang-scan-deps") if clang_tidy else None
    if not sources or not scanner or not scanner.exists():
        return {}
    commands = [{
        "directory": str(source.directory),
        "file": str(source.file),
        "arguments": [str(scanner.with_name("clang++")), *source.arguments, "-c", str(source.file), "-o", f"{number}.o"],
    } for number, source in enumerate(sources)]
    with tempfile.NamedTemporaryFile("w", suffix=".json") as database:
        json.dump(commands, database)
        database.flush()
        rules = subprocess.run(
            [scanner, f"--compilation-database={database.name}", "--format=make"], capture_output=True, text=True).stdout
    return {
        sources[int(number)]: [unescaped(file) for file in re.split(r"(?<!\\)\s+", files.strip())]
        for number, files in re.findall(r"^(\d+)\.o:(.*)$", rules.replace("\\\n", " "), flags=re.MULTILINE)}


def unescaped(file: str) -> str:
    """A file's name as it is, not as make writes it."""
    return re.sub(r"\\([ #])", r"\1", file).replace("$$", "$")


def fingerprints(sources: list[Source]) -> dict[Source, str]:
    """A digest for each source that can be preprocessed. It changes with the arguments, and with the path or content of
    any file that is read for the source. The contents count whole, for a comment can silence a check."""
    digests: dict[Path, str] = {}

    def digest_of(file: Path) -> str:
        if file not in digests:
            digests[file] = content_digest(file)
        return digests[file]

    return {
        source: digest(str(source.file), *source.arguments,
                       *(part for file in files for part in (file, digest_of(source.directory / file))))
        for source, files in files_read(sources).items()}
