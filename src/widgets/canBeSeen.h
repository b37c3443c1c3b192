// SPDX-License-Identifier: MIT
#pragma once

#include <QWindow>

namespace tunedeck {

/// Whether any of `window` is on a screen. It may change with an Expose event and with the window's state.
[[nodiscard]] inline bool canBeSeen(const QWindow &window)
{
    return window.isExposed() && !window.windowStates().testFlag(Qt::WindowMinimized);
}

} // namespace tunedeck
