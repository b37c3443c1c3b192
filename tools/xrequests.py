# SPDX-License-Identifier: MIT
"""Counts the requests that a program sends to the X server, by the server's own record of them."""

import ctypes
import select
import time

from xserver import X11

RECORD = ctypes.CDLL("libXtst.so.6")
FROM_CLIENT = 1  # category of a record


class Range(ctypes.Structure):
    """The first and last number of each kind of message that is recorded."""

    _fields_ = (("core_requests", ctypes.c_ubyte * 2), ("core_replies", ctypes.c_ubyte * 2),
                ("extensions", ctypes.c_ubyte * 2), ("extension_requests", ctypes.c_ushort * 2),
                ("extension_replies", ctypes.c_ubyte * 2), ("extension_reply_numbers", ctypes.c_ushort * 2),
                ("delivered_events", ctypes.c_ubyte * 2), ("device_events", ctypes.c_ubyte * 2),
                ("errors", ctypes.c_ubyte * 2), ("client_started", ctypes.c_int), ("client_died", ctypes.c_int))


class Recorded(ctypes.Structure):
    _fields_ = (("id_base", ctypes.c_ulong), ("server_time", ctypes.c_ulong), ("client_sequence", ctypes.c_ulong),
                ("category", ctypes.c_int), ("client_swapped", ctypes.c_int), ("data", ctypes.c_void_p),
                ("data_length", ctypes.c_ulong))


HANDLER = ctypes.CFUNCTYPE(None, ctypes.c_void_p, ctypes.POINTER(Recorded))
X11.XOpenDisplay.restype = ctypes.c_void_p
RECORD.XRecordAllocRange.restype = ctypes.POINTER(Range)
RECORD.XRecordCreateContext.restype = ctypes.c_ulong


def requests_of(window: int, seconds: float) -> int:
    """How many requests the program that made `window` sends in so many seconds."""
    control, records = (ctypes.c_void_p(X11.XOpenDisplay(None)) for _ in range(2))
    count = 0

    @HANDLER
    def handle(_closure: int, recorded: ctypes.Array) -> None:
        nonlocal count
        count += recorded.contents.category == FROM_CLIENT
        RECORD.XRecordFreeData(recorded)

    all_requests = RECORD.XRecordAllocRange()
    all_requests.contents.core_requests[:] = 0, 127
    all_requests.contents.extensions[:] = 128, 255
    all_requests.contents.extension_requests[:] = 0, 0xffff
    client = ctypes.c_ulong(window)
    context = ctypes.c_ulong(RECORD.XRecordCreateContext(
        control, 0, ctypes.byref(client), 1, ctypes.byref(all_requests), 1))
    X11.XSync(control, False)
    if not context or not RECORD.XRecordEnableContextAsync(records, context, handle, None):
        raise RuntimeError("The X server records nothing.")
    deadline = time.monotonic() + seconds
    while (left := deadline - time.monotonic()) > 0:
        select.select([X11.XConnectionNumber(records)], [], [], left)
        RECORD.XRecordProcessReplies(records)
    RECORD.XRecordDisableContext(control, context)
    X11.XSync(control, False)
    RECORD.XRecordProcessReplies(records)
    for display in (records, control):
        X11.XCloseDisplay(display)
    return count
