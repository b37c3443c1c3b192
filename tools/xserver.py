# SPDX-License-Identifier: MIT
"""A connection to the X server for the questions that xdotool and xprop cannot ask."""

import ctypes
import itertools
import os
import select
import time

DEADLINE = 30  # seconds

FOCUS_IN, CONFIGURE_NOTIFY, CLIENT_MESSAGE = 9, 22, 33
STRUCTURE_NOTIFY, SUBSTRUCTURE_NOTIFY, SUBSTRUCTURE_REDIRECT = 1 << 17, 1 << 19, 1 << 20
FOCUS_CHANGE, PROPERTY_CHANGE = 1 << 21, 1 << 22


class ClientMessage(ctypes.Structure):
    _fields_ = (("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                ("format", ctypes.c_int), ("data", ctypes.c_long * 5))


class ConfigureNotify(ctypes.Structure):
    _fields_ = (("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("parent", ctypes.c_ulong), ("window", ctypes.c_ulong))


class WindowAttributes(ctypes.Structure):
    _fields_ = (("x", ctypes.c_int), ("y", ctypes.c_int), ("width", ctypes.c_int), ("height", ctypes.c_int),
                ("border_width", ctypes.c_int), ("depth", ctypes.c_int), ("visual", ctypes.c_void_p),
                ("root", ctypes.c_ulong), ("window_class", ctypes.c_int), ("bit_gravity", ctypes.c_int),
                ("win_gravity", ctypes.c_int), ("backing_store", ctypes.c_int), ("backing_planes", ctypes.c_ulong),
                ("backing_pixel", ctypes.c_ulong), ("save_under", ctypes.c_int), ("colormap", ctypes.c_ulong),
                ("map_installed", ctypes.c_int), ("map_state", ctypes.c_int), ("all_event_masks", ctypes.c_long),
                ("your_event_mask", ctypes.c_long), ("do_not_propagate_mask", ctypes.c_long),
                ("override_redirect", ctypes.c_int), ("screen", ctypes.c_void_p))


class Rectangle(ctypes.Structure):
    _fields_ = (("x", ctypes.c_short), ("y", ctypes.c_short), ("width", ctypes.c_ushort), ("height", ctypes.c_ushort))


class Image(ctypes.Structure):
    _fields_ = (("width", ctypes.c_int), ("height", ctypes.c_int), ("xoffset", ctypes.c_int), ("format", ctypes.c_int),
                ("data", ctypes.POINTER(ctypes.c_char)), ("byte_order", ctypes.c_int), ("bitmap_unit", ctypes.c_int),
                ("bitmap_bit_order", ctypes.c_int), ("bitmap_pad", ctypes.c_int), ("depth", ctypes.c_int),
                ("bytes_per_line", ctypes.c_int))


class Event(ctypes.Union):
    _fields_ = (("type", ctypes.c_int), ("message", ClientMessage), ("configured", ConfigureNotify),
                ("pad", ctypes.c_long * 24))


X11 = ctypes.CDLL("libX11.so.6")
for name in ("XOpenDisplay", "XInternAtom", "XDefaultRootWindow", "XGetSelectionOwner", "XCreateSimpleWindow"):
    getattr(X11, name).restype = ctypes.c_void_p if name == "XOpenDisplay" else ctypes.c_ulong
X11.XGetImage.restype = ctypes.POINTER(Image)
EXTENSIONS = ctypes.CDLL("libXext.so.6")
EXTENSIONS.XShapeGetRectangles.restype = ctypes.POINTER(Rectangle)
SHAPE_BOUNDING = 0
ALL_PLANES, Z_PIXMAP = ctypes.c_ulong(-1), 2
ERROR_HANDLER = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p)
# A window may end while it is asked. By default, Xlib would end this process.
IGNORE_ERRORS = ERROR_HANDLER(lambda _display, _error: 0)
X11.XSetErrorHandler(IGNORE_ERRORS)


class XServer:
    def __init__(self, name: str | None = None) -> None:
        """`name` is a display's; without one, it is the environment's."""
        display = X11.XOpenDisplay(name and name.encode())
        if not display:
            raise ConnectionError(f"No X server on display {name or os.environ.get('DISPLAY')}")
        self.display = ctypes.c_void_p(display)
        self.root = X11.XDefaultRootWindow(self.display)
        # The messages that programs send to the root reach the clients that watch it: Qt's answers to pings those that
        # watch its structure, requests to the window manager its children, messages about starts its properties.
        self.watch(self.root, STRUCTURE_NOTIFY | SUBSTRUCTURE_NOTIFY | PROPERTY_CHANGE)

    def close(self) -> None:
        X11.XCloseDisplay(self.display)

    def __enter__(self) -> "XServer":
        return self

    def __exit__(self, *_: object) -> None:
        self.close()

    def atom(self, name: str) -> int:
        return X11.XInternAtom(self.display, name.encode(), False)

    def watch(self, window: int, events: int) -> None:
        X11.XSelectInput(self.display, ctypes.c_ulong(window), ctypes.c_long(events))
        X11.XSync(self.display, False)

    def has_compositor(self) -> bool:
        return X11.XGetSelectionOwner(self.display, ctypes.c_ulong(self.atom("_NET_WM_CM_S0"))) != 0

    def has_window_manager(self) -> bool:
        attributes = WindowAttributes()
        X11.XGetWindowAttributes(self.display, ctypes.c_ulong(self.root), ctypes.byref(attributes))
        return attributes.all_event_masks & SUBSTRUCTURE_REDIRECT != 0

    def outline(self, window: int) -> list[tuple[int, int, int, int]]:
        """The rectangles (x, y, width, height) of the window that can be seen, from top to bottom."""
        count, order = ctypes.c_int(), ctypes.c_int()
        rectangles = EXTENSIONS.XShapeGetRectangles(
            self.display, ctypes.c_ulong(window), SHAPE_BOUNDING, ctypes.byref(count), ctypes.byref(order))
        outline = [(part.x, part.y, part.width, part.height) for part in rectangles[:count.value]]
        X11.XFree(rectangles)
        return sorted(outline, key=lambda part: part[1])

    def picture(self, x: int, y: int, width: int, height: int) -> bytes:
        """A part of the screen: four bytes a pixel (blue, green, red and one without a meaning), row by row."""
        image = X11.XGetImage(self.display, ctypes.c_ulong(self.root), x, y, width, height, ALL_PLANES, Z_PIXMAP)
        if not image:
            raise ValueError(f"{width}x{height}+{x}+{y} is not on the screen")
        pixels = image.contents.data[:image.contents.bytes_per_line * height]
        X11.XDestroyImage(image)
        return pixels

    def next_event(self, deadline: float = 0) -> Event | None:
        """None if no event comes until `deadline`, in seconds of time.monotonic()."""
        if not X11.XPending(self.display):
            seconds = max(0, deadline - time.monotonic())
            select.select([X11.XConnectionNumber(self.display)], [], [], seconds)
            if not X11.XPending(self.display):
                return None
        event = Event()
        X11.XNextEvent(self.display, ctypes.byref(event))
        return event

    def await_message(self, message: str, seconds: float = DEADLINE) -> None:
        """Returns when a program has sent `message` to the window manager."""
        expected = self.atom(message)
        deadline = time.monotonic() + seconds
        while event := self.next_event(deadline):
            if event.type == CLIENT_MESSAGE and event.message.message_type == expected:
                return
        raise TimeoutError(f"No {message} within {seconds} s")

    def send(self, to: int, window: int, message: str, *data: int, events: int = 0) -> None:
        event = Event()
        event.message = ClientMessage(type=CLIENT_MESSAGE, window=window, message_type=self.atom(message), format=32,
                                      data=(ctypes.c_long * 5)(*data))
        X11.XSendEvent(self.display, ctypes.c_ulong(to), False, ctypes.c_long(events), ctypes.byref(event))
        X11.XFlush(self.display)

    def await_window_manager(self, seconds: float = DEADLINE) -> None:
        """Returns when the window manager has handled all earlier requests.

        The X server leaves it to the window manager to move another program's window, also one that is not shown.
        """
        deadline = time.monotonic() + seconds
        window = self.small_window(STRUCTURE_NOTIFY)
        for place in itertools.count(1):
            is_asked = self.has_window_manager()
            if is_asked:
                X11.XMoveWindow(self.display, ctypes.c_ulong(window), place, 0)
            # A request can be lost while the window manager starts.
            next_request = min(deadline, time.monotonic() + (0.5 if is_asked else 0.05))
            while event := self.next_event(next_request):
                if event.type == CONFIGURE_NOTIFY and event.configured.window == window:
                    X11.XDestroyWindow(self.display, ctypes.c_ulong(window))
                    return
            if time.monotonic() >= deadline:
                raise TimeoutError(f"The window manager does not answer within {seconds} s")

    def await_focus(self, seconds: float = DEADLINE) -> None:
        """Returns when the window manager has given the keyboard to a window.

        xfwm4 can leave a window without it that is the first one after its start.
        """
        deadline = time.monotonic() + seconds
        while time.monotonic() < deadline:
            window = self.small_window(FOCUS_CHANGE)
            X11.XMapWindow(self.display, ctypes.c_ulong(window))
            has_focus = self.has_event(FOCUS_IN, min(deadline, time.monotonic() + 1))
            X11.XDestroyWindow(self.display, ctypes.c_ulong(window))
            if has_focus:
                self.await_window_manager()
                return
        raise TimeoutError(f"No window has the keyboard within {seconds} s")

    def small_window(self, events: int) -> int:
        """A window that is not shown, and whose `events` are watched."""
        window = X11.XCreateSimpleWindow(self.display, ctypes.c_ulong(self.root), 0, 0, 1, 1, 0, 0, 0)
        self.watch(window, events)
        return window

    def has_event(self, kind: int, deadline: float) -> bool:
        """Whether an event of this kind comes until `deadline`, in seconds of time.monotonic()."""
        while event := self.next_event(deadline):
            if event.type == kind:
                return True
        return False

    def await_program(self, window: int, seconds: float = DEADLINE) -> None:
        """Returns when the program that owns `window` has handled all earlier mouse and key events.

        The program answers the first ping when it has read the events, and the second one when it has handled them.
        """
        for _ in range(2):
            self.ping(window, seconds)

    def ping(self, window: int, seconds: float) -> None:
        ping = self.atom("_NET_WM_PING")
        number = time.monotonic_ns() // 1000 % 2**31
        self.send(window, window, "WM_PROTOCOLS", ping, number, window)
        deadline = time.monotonic() + seconds
        while event := self.next_event(deadline):
            if event.type == CLIENT_MESSAGE and tuple(event.message.data[:3]) == (ping, number, window):
                return
        raise TimeoutError(f"The owner of window {window} does not answer within {seconds} s")
