# SPDX-License-Identifier: MIT
"""A desktop's settings portal. Each line on its input, a group, a key and a value in GVariant's text form, is a setting
that the user changes. It prints "ready" when it has its name, and the line when it has announced the change."""

import sys

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

NAME, PATH = "org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop"
INTERFACE = "org.freedesktop.portal.Settings"
DESCRIPTION = f"""<node><interface name="{INTERFACE}">
<method name="ReadOne">
<arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
<signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal></interface></node>"""


class Portal:
    def __init__(self) -> None:
        self.values: dict[tuple[str, str], GLib.Variant] = {}
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        description = Gio.DBusNodeInfo.new_for_xml(DESCRIPTION).interfaces[0]
        self.bus.register_object(PATH, description, self.answer, None, None)

    def answer(self, _bus: object, _sender: str, _path: str, _interface: str, _method: str, asked: GLib.Variant,
               call: Gio.DBusMethodInvocation) -> None:
        if value := self.values.get(asked.unpack()):
            call.return_value(GLib.Variant("(v)", (value,)))
        else:
            call.return_dbus_error("org.freedesktop.portal.Error.NotFound", "there is no such setting")

    def change(self, group: str, key: str, value: str) -> None:
        self.values[group, key] = GLib.Variant.parse(None, value)
        changed = GLib.Variant("(ssv)", (group, key, self.values[group, key]))
        self.bus.emit_signal(None, PATH, INTERFACE, "SettingChanged", changed)
        self.bus.flush_sync()


def main() -> int:
    portal = Portal()
    loop = GLib.MainLoop()
    Gio.bus_own_name_on_connection(portal.bus, NAME, Gio.BusNameOwnerFlags.NONE,
                                   lambda *_: print("ready", flush=True), lambda *_: loop.quit())

    def read(*_: object) -> bool:
        line = sys.stdin.readline()
        if not line:
            loop.quit()
            return False
        portal.change(*line.split(maxsplit=2))
        print(line, end="", flush=True)
        return True

    GLib.io_add_watch(sys.stdin.fileno(), GLib.PRIORITY_DEFAULT, GLib.IOCondition.IN | GLib.IOCondition.HUP, read)
    loop.run()
    return 0


if __name__ == "__main__":
    sys.exit(main())
