// SPDX-License-Identifier: MIT
#include "x11/isIconic.h"

#include "x11/x11.h"

#include <QWindow>

namespace tunedeck {

namespace {
bool hasIconicState(xcb_window_t window)
{
    constexpr std::uint32_t iconicState = 3;
    static const xcb_atom_t state = x11Atom("WM_STATE");
    return x11Number(window, state) == iconicState;
}

/// Window managers that keep minimised windows mapped, to show previews of them, set only this state.
bool isHidden(xcb_window_t window)
{
    static const xcb_atom_t states = x11Atom("_NET_WM_STATE");
    static const xcb_atom_t hidden = x11Atom("_NET_WM_STATE_HIDDEN");
    return x11HasAtom(window, states, hidden);
}
} // namespace

bool isIconic(const QWindow &window)
{
    if (!x11Connection()) {
        return true;
    }
    const auto own = static_cast<xcb_window_t>(window.winId());
    return hasIconicState(own) || isHidden(own);
}

} // namespace tunedeck
