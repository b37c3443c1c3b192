// SPDX-License-Identifier: MIT
#pragma once

#include <QWindow>

namespace tunedeck {

/// Whether any part of `window` is on a screen. Expose events and changes of the window's state may change it.
[[nodiscard]] inline bool canBeSeen(const QWindow &window)
{
    return window.isExposed() && !window.windowStates().testFlag(Qt::WindowMinimized);
}

} // namespace tunedeck
