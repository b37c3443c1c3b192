// SPDX-License-Identifier: MIT
#include "x11/setFloatingType.h"

#include "x11/x11.h"

#include <QWindow>

#include <cstdint>
#include <span>
#include <vector>

namespace tunedeck {

void setFloatingType(const QWindow &window)
{
    if (!x11Connection()) {
        return;
    }
    // Stacking window managers use the first type that they know, and treat the window like any other. Tiling ones look
    // in the whole list for a type that floats.
    static const std::vector<xcb_atom_t> atoms = x11Atoms({"_NET_WM_WINDOW_TYPE", "_KDE_NET_WM_WINDOW_TYPE_OVERRIDE",
        "_NET_WM_WINDOW_TYPE_NORMAL", "_NET_WM_WINDOW_TYPE_DIALOG"});
    const std::span types = std::span(atoms).subspan(1);
    xcb_change_property(x11Connection(), XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
        atoms.front(), XCB_ATOM_ATOM, 32, static_cast<std::uint32_t>(types.size()), types.data());
}

} // namespace tunedeck
