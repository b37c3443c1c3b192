// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace tunedeck {

/// Shows `window` above the others, even if it is minimised, and gives it the keyboard focus.
inline void bringToFront(QWidget &window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
}

} // namespace tunedeck
