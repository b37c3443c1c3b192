#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Checks the rules of this project that no compiler checks, and names each breach as file:line: rule.

Usage: rules.py [the project's folder]
"""

import re
import sys
from collections.abc import Iterator
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]

SKIN = {"skin/drawing", "skin/cells", "skin/looks", "skin/views"}

# What each folder of src/ may include beside itself.
MAY_INCLUDE = {
    "platform/settings": set(),
    "platform/bus": set(),
    "platform": {"platform/settings", "platform/bus"},
    "widgets": set(),
    "above": {"platform"},
    "x11": {"platform", "widgets"},
    "music": {"platform"},
    "music/mpris/bus": {"platform", "platform/bus"},
    "music/mpris/choice": {"platform", "music"},
    "music/mpris/desktop": {"platform", "music/mpris/bus"},
    "music/mpris/report": {"music", "music/mpris/bus"},
    "music/mpris": {"platform", "music", "music/mpris/bus", "music/mpris/choice", "music/mpris/desktop",
        "music/mpris/report"},
    # Drawing code keeps no state and knows neither the user's settings nor the window's.
    "skin/drawing": {"platform"},
    "skin/cells": {"platform", "skin/drawing"},
    "skin/looks": {"platform", "skin/drawing"},
    "skin/views": {"platform", "widgets", "skin/drawing", "skin/cells", "skin/looks"},
    "player": {"platform", "widgets", "music", *SKIN},
    "drawer": {"platform", "widgets", "music", *SKIN},
    "audio": {"platform", "music"},
    "help": {"platform", "widgets"},
    "preferences": {"platform", "widgets", "music"},
    "portal": {"platform", "platform/bus", "preferences"},
    "updates/feed": {"platform"},
    "updates": {"platform", "widgets", "updates/feed"},
    "window": {"platform", "widgets", "above", "x11", "music", "player", *SKIN},
    "dock": {"platform", "platform/bus", "widgets", "above", "music"},
    "app/sound": {"platform", "music", "audio", "dock"},
    "app": {"app/sound", "platform", "platform/bus", "widgets", "above", "x11", "music", "music/mpris", *SKIN, "player",
        "drawer", "help", "preferences", "portal", "updates", "window", "dock"},
}

# In a folder with more files than a screen has lines, nobody finds one by looking.
MOST_FILES = 40

# A player that hangs must not be felt in the window: nothing in src/ may wait for another process. Lines of what may
# wait, since it runs on a thread of its own, end in this comment.
MAY_WAIT = "// waits on a worker thread"
WAITING = {
    r"\bQDBus(Abstract)?Interface\b": "introspects, and waits for it",
    r"(\.|->|\bQDBusConnection::)(call|callWithArgumentList)\s*\(": "waits for the answer: use asyncCall()",
    r"\bwaitFor(Finished|Reply|Started|ReadyRead|BytesWritten|Connected|Disconnected)\s*\(": "waits",
    r"(\.|->)(isServiceRegistered|registeredServiceNames|serviceOwner|servicePid|serviceUid|startService)\s*\(":
        "asks the bus, and waits for it",
    r"\bQThread::(m|u)?sleep\s*\(|\bsleep_(for|until)\s*\(": "sleeps",
    r"\bQEventLoop\b": "waits in an event loop of its own",
}
# Properties of D-Bus objects are read by a blocking call; those of other objects are not.
WAITING_ON_THE_BUS = {r"(\.|->)property\s*\(": "waits, if it is a D-Bus property"}

EVERYWHERE = {
    r"\bsetStyleSheet\s*\(": "style sheets are slow to start: draw it",
    r"[<\"/](QtQml|QtQuick|QtWebEngine|QQml|QQuick)|\bQt6?::(Qml|Quick|WebEngine)": "no QML, no web engine",
}
# Music is known without a window and without a bus.
IN_MUSIC = {
    r"#\s*include\s*<(Qt(Gui|Widgets|DBus|Svg|Network)/|QDBus|Q(Gui)?Application\b|QWidget|QWindow|QAction|QMenu"
    r"|QPainter|QPixmap|QImage|QIcon|QColor|QFont|QScreen|QClipboard|QDesktopServices|QKeyEvent|QMouseEvent)":
        "music/ includes QtCore alone",
    r"\bQt6::(Gui|Widgets|DBus|Svg|Network)\b": "music/ links QtCore alone",
}
OUTSIDE_MPRIS = {r"\borg[./]mpris\b": "only music/mpris/ knows the players' D-Bus names"}

# A test that sleeps is slow where the machine is fast, and fails where it is slow: it waits for a signal or a state, or
# ends a timer's wait by hand. How often a file may sleep all the same, and why.
SLEEPING = re.compile(
    r"\b(qWait|qSleep|msleep|sleep_for)\s*\(|\btime\.sleep\s*\(|\bqWaitFor\(\[[^]]*\]\s*\{\s*return \w+\.elapsed\(\)")
MAY_SLEEP = {
    "tests/music/mpris/PlayerEnduranceTest.cpp": (7, "what is tested is half a minute in real time"),
    "tests/music/mpris/StormEnduranceTest.cpp": (1, "what is tested is an event loop that stands still"),
    "tests/real-players/PlayerWitness.cpp": (1, "a player is quiet when it has reported nothing for a while"),
    "tests/real-players/RealPlayerTest.cpp": (1, "what is tested is that no later sample of the position changes it"),
    "tools/benchmarks/cost": (2, "measures what the program costs over a time"),
    "tools/benchmarks/memory": (3, "measures what the program keeps after a time"),
    "tools/benchmarks/playlistsWatch.cpp": (2, "measures what the program costs over a time"),
    "tools/benchmarks/scoreboard": (1, "measures what programs cost over a time"),
    "tools/benchmarks/startWatch.cpp": (1, "looks at the screen many times a second"),
    "tools/random_use/hand.py": (1, "uses the program at the pace of a hand"),
    "tools/random_use/rest.py": (1, "counts how often the program wakes up in a time"),
    "tools/storm/Watch.cpp": (1, "reads the memory again when the program has rested"),
    "tools/running_cost.py": (1, "measures what a program costs over a time"),
    "tools/session.py": (1, "asks again, within a deadline, where nothing reports what is awaited"),
}
# They name what is forbidden.
ABOUT_SLEEPING = {"tools/checks/rules.py", "tools/checks/rules_test.py"}

# The program and its papers name no address that nobody is known to own: a home page and a mail address are settings of
# the build. These are others', and those that are reserved for examples.
ADDRESS = re.compile(r"(?:https?://|[\w.+-]@)(?=[A-Za-z])([A-Za-z0-9-]+(?:\.[A-Za-z0-9-]+)+)")
OTHERS_HOSTS = {"curl.se", "deb.debian.org", "doc.libsodium.org", "docs.gtk.org", "snapshot.debian.org",
    "specifications.freedesktop.org", "www.andymatuschak.org", "www.debian.org", "www.freedesktop.org", "www.qt.io",
    "www.w3.org", "xcb.freedesktop.org"}
RESERVED_HOST = re.compile(r"(^|\.)(example|invalid|test|example\.(com|net|org))$")

CODE = {".h", ".cpp"}
SPDX = "SPDX-License-Identifier: MIT"


def without_comments(text: str) -> str:
    """The same lines, but comments are gone. Strings stay: a name of D-Bus is a string."""
    pattern = r'"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'|//[^\n]*|/\*.*?\*/'

    def kept(match: re.Match[str]) -> str:
        found = match.group()
        return "\n" * found.count("\n") if found.startswith("/") else found

    return re.sub(pattern, kept, text, flags=re.DOTALL)


def files_below(folder: Path) -> Iterator[Path]:
    return (path for path in sorted(folder.rglob("*")) if path.is_file())


def folder_of(path: Path, src: Path) -> str:
    return path.parent.relative_to(src).as_posix()


def breaches_of_licence(root: Path) -> Iterator[str]:
    beside = [path for path in [root / "CMakeLists.txt", root / "run", root / "test"] if path.exists()]
    below = [path for name in ("src", "tests", "tools", "cmake", ".ci") for path in files_below(root / name)]
    for path in beside + below:
        text = path.read_bytes().decode(errors="replace")
        is_source = path.suffix in CODE | {".cmake", ".py", ".sh"} or path.name == "CMakeLists.txt"
        if (is_source or text.startswith("#!")) and SPDX not in "".join(text.splitlines(True)[:2]):
            yield f"{path.relative_to(root)}:1: the line \"{SPDX}\" is missing"


def breaches_of_addresses(root: Path) -> Iterator[str]:
    beside = [path for path in sorted(root.iterdir()) if path.is_file()]
    below = [path for name in ("cmake", "packaging", "resources", "src", "tests", "tools") for path in
        files_below(root / name)]
    # Inputs of the fuzz targets promise nothing.
    for path in (path for path in beside + below if path.suffix != ".png" and "corpus" not in path.parts):
        for number, line in enumerate(path.read_bytes().decode(errors="ignore").splitlines(), 1):
            for host in ADDRESS.findall(line):
                if host not in OTHERS_HOSTS and not RESERVED_HOST.search(host):
                    yield f"{path.relative_to(root)}:{number}: {host} -- promises an address"


def rules_for(path: Path, src: Path, code: str) -> dict[str, str]:
    folder = folder_of(path, src)
    rules = WAITING | EVERYWHERE
    if "QDBus" in code:
        rules = rules | WAITING_ON_THE_BUS
    if folder == "music":
        rules = rules | IN_MUSIC
    if not folder.startswith("music/mpris"):
        rules = rules | OUTSIDE_MPRIS
    return rules


def breaches_of_words(root: Path) -> Iterator[str]:
    src = root / "src"
    for path in files_below(src):
        where = path.relative_to(root)
        if path.suffix == ".qml":
            yield f"{where}:1: no QML, no web engine"
        if path.suffix not in CODE and path.name != "CMakeLists.txt":
            continue
        text = path.read_text()
        code = without_comments(text) if path.suffix in CODE else text
        rules = rules_for(path, src, code)
        for number, (line, as_written) in enumerate(zip(code.splitlines(), text.splitlines()), 1):
            for pattern, why in rules.items():
                may_wait = pattern in WAITING and as_written.endswith(MAY_WAIT)
                if re.search(pattern, line) and not may_wait:
                    yield f"{where}:{number}: {line.strip()} -- {why}"


def breaches_of_layers(root: Path) -> Iterator[str]:
    src = root / "src"
    for path in (path for path in files_below(src) if path.suffix in CODE):
        folder = folder_of(path, src)
        where = path.relative_to(root)
        if folder not in MAY_INCLUDE:
            yield f"{where}:1: {folder}/ has no place among the layers of tools/checks/rules.py"
            continue
        for number, line in enumerate(without_comments(path.read_text()).splitlines(), 1):
            include = re.match(r'\s*#\s*include\s*"(.+)"', line)
            if not include or include[1] == f"{path.stem}.moc":
                continue
            other = Path(include[1]).parent.as_posix()
            if other not in MAY_INCLUDE:
                yield f"{where}:{number}: {line.strip()} -- headers are included by their path below src/"
            elif other not in MAY_INCLUDE[folder] | {folder}:
                yield f"{where}:{number}: {line.strip()} -- {folder}/ may not include {other}/"


def sleeps_in(path: Path) -> list[int]:
    """The numbers of the lines that sleep."""
    text = path.read_bytes().decode(errors="replace")
    code = without_comments(text) if path.suffix in CODE else text
    return [number for number, line in enumerate(code.splitlines(), 1) for _ in SLEEPING.finditer(line)]


def breaches_of_sleep(root: Path) -> Iterator[str]:
    sleeps = {
        path.relative_to(root).as_posix(): found for folder in ("tests", "tools") for path in files_below(root / folder)
        if (found := sleeps_in(path))
    }
    for where in sorted((sleeps.keys() | MAY_SLEEP.keys()) - ABOUT_SLEEPING):
        lines = sleeps.get(where, [])
        most, _ = MAY_SLEEP.get(where, (0, ""))
        if len(lines) > most:
            yield f"{where}:{lines[-1]}: sleeps {len(lines)} times, and may {most} times: wait for the event"
        elif len(lines) < most:
            yield f"{where}:1: sleeps {len(lines)} times: let MAY_SLEEP in tools/checks/rules.py say so instead of {most}"


def breaches_of_size(root: Path) -> Iterator[str]:
    src = root / "src"
    for folder in sorted(path for path in src.rglob("*") if path.is_dir()):
        files = sum(path.is_file() for path in folder.iterdir())
        if files > MOST_FILES:
            yield f"{folder.relative_to(root)}:1: {files} files are more than {MOST_FILES}: divide the folder"


def breaches_of_order() -> Iterator[str]:
    """A folder may include only what is above it in MAY_INCLUDE, so the folders form no circle."""
    above: set[str] = set()
    for folder, others in MAY_INCLUDE.items():
        for other in sorted(others - above):
            yield f"tools/checks/rules.py:1: {folder}/ may include {other}/, which is not above it"
        above.add(folder)


def breaches(root: Path) -> list[str]:
    return [*breaches_of_licence(root), *breaches_of_words(root), *breaches_of_layers(root), *breaches_of_size(root),
        *breaches_of_sleep(root), *breaches_of_addresses(root), *breaches_of_order()]


def main() -> int:
    root = Path(sys.argv[1]) if len(sys.argv) > 1 else ROOT
    if not any((root / "src").rglob("*.cpp")):
        print(f"There is no source in {root / 'src'}.", file=sys.stderr)
        return 2
    found = breaches(root)
    print("\n".join(found) or "The sources keep the rules.")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
