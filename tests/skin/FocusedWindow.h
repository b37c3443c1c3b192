// SPDX-License-Identifier: MIT
#pragma once

#include <QGuiApplication>
#include <QWindow>

namespace tunedeck {

/// Gives the keyboard to `window`, as the window system does; null is another program.
inline void focus(QWindow *window)
{
    Q_EMIT qGuiApp->focusWindowChanged(window);
}

} // namespace tunedeck
