// SPDX-License-Identifier: MIT
#include "isIconic.h"

#include "x11.h"

#include <QWindow>

namespace tunedeck {

bool isIconic(const QWindow &window)
{
    if (!x11Connection()) {
        return true;
    }
    constexpr std::uint32_t iconicState = 3;
    static const xcb_atom_t state = x11Atom("WM_STATE");
    return x11Number(static_cast<xcb_window_t>(window.winId()), state) == iconicState;
}

} // namespace tunedeck
