// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace tunedeck {

/// While an object of this class exists, bringToFront() only shows windows: it neither raises them nor gives them the
/// keyboard focus.
class ShowOnly {
public:
    ShowOnly() { s_isInForce = true; }
    ~ShowOnly() { s_isInForce = false; }
    ShowOnly(const ShowOnly &) = delete;
    ShowOnly &operator=(const ShowOnly &) = delete;

    [[nodiscard]] static bool isInForce() { return s_isInForce; }

private:
    static inline bool s_isInForce = false;
};

/// Shows `window` above the others, even if it is minimised, and gives it the keyboard focus.
inline void bringToFront(QWidget &window)
{
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    if (!ShowOnly::isInForce()) {
        window.raise();
        window.activateWindow();
    }
}

} // namespace tunedeck
