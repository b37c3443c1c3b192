// SPDX-License-Identifier: MIT
#include "x11/setFloatingType.h"

#include "x11/x11.h"

#include <QWindow>

#include <array>

namespace tunedeck {

void setFloatingType(const QWindow &window)
{
    if (!x11Connection()) {
        return;
    }
    // Stacking window managers use the first type that they know, and treat the window like any other. Tiling ones look
    // in the whole list for a type that floats.
    static const std::array types{x11Atom("_KDE_NET_WM_WINDOW_TYPE_OVERRIDE"), x11Atom("_NET_WM_WINDOW_TYPE_NORMAL"),
        x11Atom("_NET_WM_WINDOW_TYPE_DIALOG")};
    static const xcb_atom_t property = x11Atom("_NET_WM_WINDOW_TYPE");
    xcb_change_property(x11Connection(), XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()), property,
        XCB_ATOM_ATOM, 32, types.size(), types.data());
}

} // namespace tunedeck
