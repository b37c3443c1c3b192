# SPDX-License-Identifier: MIT
"""A sandbox with the permissions of the Flatpak manifest, made of what Flatpak itself is made of: bubblewrap, and a proxy
for each bus."""

import contextlib
import json
import os
import subprocess
from collections.abc import Iterator
from dataclasses import dataclass, field
from pathlib import Path

from session import ROOT

MANIFEST = ROOT / "packaging/org.tunedeck.Tunedeck.json"
PROGRAMS = ("bwrap", "xdg-dbus-proxy")
BUS, ACCESSIBILITY_BUS, WAYLAND = (Path("/run/flatpak", name) for name in ("bus", "at-spi-bus", "wayland-0"))
DISTRIBUTION = ("--ro-bind", "/usr", "/usr", "--symlink", "usr/lib", "/lib", "--symlink", "usr/lib64", "/lib64",
                "--symlink", "usr/bin", "/bin", "--ro-bind", "/etc", "/etc", "--proc", "/proc", "--dev", "/dev",
                "--tmpfs", "/tmp")
# Root needs no namespace of users, which containers and chroots refuse.
USERS = () if os.geteuid() == 0 else ("--unshare-user",)
NAMESPACES = ("--die-with-parent", "--new-session", "--cap-drop", "ALL", *USERS, "--unshare-pid", "--unshare-uts",
              "--unshare-cgroup-try")
# What Flatpak lets every application do on the accessibility bus.
REGISTRY = "org.a11y.atspi.Registry"
ROOT_OBJECT, REGISTRY_OBJECT, DEVICES = (f"/org/a11y/atspi/{name}" for name in (
    "accessible/root", "registry", "registry/deviceeventcontroller"))
ACCESSIBILITY_CALLS = (
    f"org.a11y.atspi.Socket.Embed@{ROOT_OBJECT}", f"org.a11y.atspi.Socket.Unembed@{ROOT_OBJECT}",
    f"org.a11y.atspi.Registry.GetRegisteredEvents@{REGISTRY_OBJECT}",
    *(f"org.a11y.atspi.DeviceEventController.{method}@{DEVICES}" for method in (
        "GetKeystrokeListeners", "GetDeviceEventListeners", "NotifyListenersSync", "NotifyListenersAsync")))


@dataclass
class Permissions:
    """Those that a manifest asks for."""
    application: str
    shared: set[str] = field(default_factory=set)
    sockets: set[str] = field(default_factory=set)
    devices: set[str] = field(default_factory=set)
    talk_names: list[str] = field(default_factory=list)
    filesystems: list[str] = field(default_factory=list)


def permissions_of(manifest: dict) -> Permissions:
    """Fails on a permission that Sandbox does not give: then the tests would try another sandbox than Flatpak's."""
    permissions = Permissions(manifest["id"])
    for argument in manifest["finish-args"]:
        option, _, value = argument.partition("=")
        match option, value:
            case "--share", "ipc":
                permissions.shared.add(value)
            case "--socket", "wayland" | "fallback-x11":
                permissions.sockets.add(value)
            case "--device", "dri":
                permissions.devices.add(value)
            case "--talk-name", "org.mpris.MediaPlayer2.*":
                permissions.talk_names.append(value)
            case "--filesystem", "xdg-music:ro":
                permissions.filesystems.append(value)
            case _:
                raise ValueError(f"unknown permission: {argument}")
    return permissions


def refusal() -> str:
    """Why this machine lets nobody make a sandbox; empty if it does."""
    done = subprocess.run(["bwrap", *NAMESPACES, "--unshare-net", *DISTRIBUTION, "true"], capture_output=True, text=True)
    return done.stderr.strip()


class Sandbox:
    """Runs programs in the session as the desktop runs a Flatpak."""

    def __init__(self, application: Path, home: Path, manifest: Path = MANIFEST) -> None:
        """`application` is the folder in which the program is installed, which it sees as /app."""
        self.permissions = permissions_of(json.loads(manifest.read_text()))
        self.application = application
        self.home = home
        self.own = home / ".var/app" / self.permissions.application
        for name in ("config", "data", "cache"):
            (self.own / name).mkdir(parents=True, exist_ok=True)
        self.information = home / "flatpak-info"
        self.information.write_text(f"[Application]\nname={self.permissions.application}\n")
        self.proxies = 0

    @property
    def settings(self) -> Path:
        return self.own / "config/tunedeck/tunedeck.conf"

    @contextlib.contextmanager
    def running(self, *command: str, accessibility_bus: str = "", **options: object) -> Iterator[subprocess.Popen]:
        """A sandbox, with proxies of its own. `accessibility_bus` is the address of that bus; without it there is none."""
        with contextlib.ExitStack() as stack:
            bus = stack.enter_context(self.proxy(os.environ["DBUS_SESSION_BUS_ADDRESS"], *self.bus_policy()))
            places = ["--ro-bind", str(bus), str(BUS)]
            variables = {"DBUS_SESSION_BUS_ADDRESS": f"unix:path={BUS}"}
            if accessibility_bus:
                calls = (f"--call={REGISTRY}={call}" for call in ACCESSIBILITY_CALLS)
                proxy = stack.enter_context(self.proxy(accessibility_bus, "--filter", "--sloppy-names", *calls))
                places += ["--ro-bind", str(proxy), str(ACCESSIBILITY_BUS)]
                variables["AT_SPI_BUS_ADDRESS"] = f"unix:path={ACCESSIBILITY_BUS}"
            wrapper = ["bwrap", *self.options(), *places, *command]
            process = stack.enter_context(subprocess.Popen(
                wrapper, text=True, env=self.environment() | variables, **({"stderr": subprocess.DEVNULL} | options)))
            stack.callback(process.terminate)
            yield process

    @contextlib.contextmanager
    def proxy(self, address: str, *policy: str) -> Iterator[Path]:
        """The socket of a proxy, which is ready."""
        self.proxies += 1
        socket = self.home / f"proxy-{self.proxies}"
        ready, told = os.pipe()
        with open(ready, "rb") as waiting:
            command = ("xdg-dbus-proxy", f"--fd={told}", address, str(socket), *policy)
            with subprocess.Popen(command, pass_fds=(told,)) as process:
                os.close(told)
                if not waiting.read(1):
                    raise ChildProcessError("The proxy of the bus did not start")
                yield socket
                process.terminate()

    def bus_policy(self) -> list[str]:
        """What the manifest asks for, and what Flatpak gives every application: its own names, and the portals."""
        own = self.permissions.application
        portals = "org.freedesktop.portal.*"
        return ["--filter", f"--own={own}", f"--own={own}.*", *(f"--talk={name}" for name in self.permissions.talk_names),
                f"--talk={portals}", f"--call={portals}=*", f"--broadcast={portals}=@/org/freedesktop/portal/*"]

    def options(self) -> list[str]:
        kept = self.permissions.shared
        options = [*NAMESPACES]
        options += [f"--unshare-{apart}" for apart, share in (("net", "network"), ("ipc", "ipc")) if share not in kept]
        options += [*DISTRIBUTION, "--ro-bind", str(self.application), "/app",
                    "--ro-bind", str(self.information), "/.flatpak-info",
                    "--perms", "0700", "--dir", self.runtime_folder(), "--bind", str(self.own), str(self.own)]
        if self.has_wayland():
            options += ["--ro-bind", os.environ["WAYLAND_DISPLAY"], str(WAYLAND)]
        # Where there is a Wayland socket, the fallback is none.
        elif "fallback-x11" in self.permissions.sockets:
            display = f"/tmp/.X11-unix/X{os.environ['DISPLAY'].removeprefix(':')}"
            options += ["--ro-bind", display, display]
        if "dri" in self.permissions.devices:
            options += ["--dev-bind-try", "/dev/dri", "/dev/dri"]
        if "xdg-music:ro" in self.permissions.filesystems:
            music = str(self.home / "Music")
            options += ["--ro-bind-try", music, music]
        return options

    def has_wayland(self) -> bool:
        return "wayland" in self.permissions.sockets and "WAYLAND_DISPLAY" in os.environ

    def runtime_folder(self) -> str:
        return f"/run/user/{os.getuid()}"

    def environment(self) -> dict[str, str]:
        own = {f"XDG_{name.upper()}_HOME": str(self.own / name) for name in ("config", "data", "cache")}
        variables = os.environ | own | {"XDG_RUNTIME_DIR": self.runtime_folder()}
        if self.has_wayland():
            del variables["DISPLAY"]
            variables["WAYLAND_DISPLAY"] = str(WAYLAND)
        return variables
