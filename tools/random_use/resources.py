# SPDX-License-Identifier: MIT
"""What a program holds, and how often it wakes up."""

import contextlib
import ctypes
import re
from dataclasses import dataclass, fields
from pathlib import Path

from xserver import X11, XServer

RESOURCES = ctypes.CDLL("libXRes.so.1")


class ResourceType(ctypes.Structure):
    _fields_ = (("type", ctypes.c_ulong), ("count", ctypes.c_uint))


@dataclass
class Held:
    files: int
    threads: int
    memory: int  # KiB, shared memory in proportion
    on_server: int  # windows, pictures, cursors and so on, of all types

    def exceeded(self, earlier: "Held", growth: "Held") -> list[str]:
        """What has grown by more than `growth` since `earlier`."""
        values = {field.name: (getattr(earlier, field.name), getattr(self, field.name)) for field in fields(self)}
        return [f"{name.replace('_', ' ')} grew from {before} to {now}" for name, (before, now) in values.items()
                if now - before > getattr(growth, name)]


def least(readings: list[Held]) -> Held:
    """Of each, the least that was held at any of several times."""
    return Held(*(min(getattr(reading, field.name) for reading in readings) for field in fields(Held)))


def held(process: int, window: int) -> Held:
    at = Path(f"/proc/{process}")
    memory = re.search(r"^Pss:\s+(\d+)", (at / "smaps_rollup").read_text(), re.MULTILINE)
    return Held(len(list((at / "fd").iterdir())), len(list((at / "task").iterdir())), int(memory[1]), on_server(window))


def on_server(window: int) -> int:
    with XServer() as server:
        count, types = ctypes.c_int(), ctypes.POINTER(ResourceType)()
        RESOURCES.XResQueryClientResources(server.display, ctypes.c_ulong(window), ctypes.byref(count),
                                           ctypes.byref(types))
        total = sum(found.count for found in types[:count.value])
        X11.XFree(types)
        return total


def wake_ups(process: int) -> int:
    """How often the program's threads have gone to sleep so far. A thread that has ended counts no more."""
    count = 0
    for task in Path(f"/proc/{process}/task").iterdir():
        with contextlib.suppress(FileNotFoundError, ProcessLookupError):
            status = (task / "status").read_text()
            count += int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", status, re.MULTILINE)[1])
    return count


def has_sanitizers(process: int) -> bool:
    """The address sanitizer keeps freed memory for a while, and itself finds what is never freed."""
    return "libasan" in Path(f"/proc/{process}/maps").read_text()
