# SPDX-License-Identifier: MIT
"""What a program with a window uses while it runs: of the processor, of the X server and of the bus."""

import contextlib
import os
import signal
import subprocess
import time
from dataclasses import dataclass
from pathlib import Path

from xrequests import requests_of


def xdotool(*words: str) -> str:
    return subprocess.run(["xdotool", *words], stdout=subprocess.PIPE, text=True, check=True).stdout


def minimise(window: str) -> None:
    xdotool("windowminimize", "--sync", window)


def window_of(process: subprocess.Popen) -> str:
    return xdotool("search", "--sync", "--onlyvisible", "--pid", str(process.pid)).split()[0]


@dataclass
class Use:
    """Of one second."""

    switches: float
    load: float  # percent of a core
    server_load: float


@dataclass
class Cost(Use):
    requests: float
    messages: float


@dataclass(frozen=True)
class Reading:
    """Of a thread, since it began."""

    seconds: float  # on a core
    switches: int  # how often it went to sleep


def readings(process: int) -> dict[str, Reading]:
    """All threads, by their numbers."""
    threads = {}
    for task in Path(f"/proc/{process}/task").iterdir():
        with contextlib.suppress(FileNotFoundError, ProcessLookupError):
            seconds = int((task / "schedstat").read_text().split()[0]) / 1e9
            status = dict(line.split(":", 1) for line in (task / "status").read_text().splitlines())
            threads[task.name] = Reading(seconds, int(status["voluntary_ctxt_switches"]))
    return threads


def between(before: dict[str, Reading], after: dict[str, Reading]) -> Reading:
    """A thread that has ended takes what it used along. It must not count against the others."""
    begun = Reading(0, 0)
    return Reading(sum(now.seconds - before.get(thread, begun).seconds for thread, now in after.items()),
                   sum(now.switches - before.get(thread, begun).switches for thread, now in after.items()))


def x_server() -> int:
    return int(subprocess.run(["pgrep", "--parent", str(os.getpid()), "Xvfb"], stdout=subprocess.PIPE, text=True,
                              check=True).stdout)


def used(process: int, seconds: float) -> Use:
    server = x_server()
    begin, before, server_before = time.monotonic(), readings(process), readings(server)
    time.sleep(seconds)
    elapsed = time.monotonic() - begin
    use, server_use = between(before, readings(process)), between(server_before, readings(server))
    return Use(use.switches / elapsed, use.seconds / elapsed * 100, server_use.seconds / elapsed * 100)


def observed(process: int, window: str, seconds: float) -> Cost:
    use = used(process, seconds)
    # Recording costs the server and the bus something, so it follows.
    requests, messages = recorded(window, seconds)
    return Cost(use.switches, use.load, use.server_load, requests / seconds, messages / seconds)


def recorded(window: str, seconds: float) -> tuple[int, int]:
    """X requests of the window's program, and messages of all programs on the bus."""
    with subprocess.Popen(["dbus-monitor", "--profile"], stdout=subprocess.PIPE, text=True) as monitor:
        requests = requests_of(int(window), seconds)
        monitor.send_signal(signal.SIGTERM)
        lines = monitor.communicate()[0].splitlines()
    # The monitor's own connection causes signals about names.
    return requests, sum(line.startswith(("mc", "mr", "sig", "err")) and "NameAcquired" not in line
                         and "NameLost" not in line for line in lines)
