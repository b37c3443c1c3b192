// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck {

/// The displays that a session has for its programs. Most Wayland sessions also have XWayland, a display for X11
/// programs. Through it, a program can do what X11 allows, such as keeping a window above all others.
struct SessionDisplays {
    bool hasWayland = false;
    bool hasX11 = false;
    /// Whether the user has chosen a platform for all Qt programs.
    bool isChosen = false;

    [[nodiscard]] static SessionDisplays fromEnvironment();

    /// Whether XWayland exists and this program may choose it.
    [[nodiscard]] bool canChooseXWayland() const;
    /// Whether to let the user change between Wayland and XWayland. `platformName` is Qt's platform now,
    /// `isXWaylandWanted` the stored setting. A program that is on X11 for another reason could not be brought to
    /// Wayland by the setting.
    [[nodiscard]] bool offersXWayland(const QString &platformName, bool isXWaylandWanted) const;
};

} // namespace tunedeck
