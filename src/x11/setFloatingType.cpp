// SPDX-License-Identifier: MIT
#include "setFloatingType.h"

#include "x11.h"

#include <QWindow>

namespace tunedeck {

void setFloatingType(const QWindow &window)
{
    if (!x11Connection()) {
        return;
    }
    // A stacking window manager takes the first type that it knows and treats the window like any other; a tiling one
    // looks for a type that it lets float, wherever in the list that is.
    static const auto atoms = x11AtomsNamed<4>({"_NET_WM_WINDOW_TYPE", "_KDE_NET_WM_WINDOW_TYPE_OVERRIDE",
        "_NET_WM_WINDOW_TYPE_NORMAL", "_NET_WM_WINDOW_TYPE_DIALOG"});
    xcb_change_property(x11Connection(), XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()), atoms[0],
        XCB_ATOM_ATOM, 32, atoms.size() - 1, &atoms[1]);
}

} // namespace tunedeck
