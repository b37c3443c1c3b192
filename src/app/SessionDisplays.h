// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck {

/// The displays that a session has for its programs. Most Wayland sessions also have XWayland, a display for X11
/// programs. Through it, a program can do what X11 allows, such as keeping a window above all others.
struct SessionDisplays {
    bool hasWayland = false;
    bool hasX11 = false;
    /// Qt's platform that the user has chosen for all Qt programs, such as "wayland;xcb". Empty for none.
    QString chosenPlatform;

    [[nodiscard]] static SessionDisplays fromEnvironment();

    /// Whether XWayland exists and this program may choose it.
    [[nodiscard]] bool canChooseXWayland() const;
    /// Whether Qt will use X11. `isXWaylandWanted` is the stored setting.
    [[nodiscard]] bool leadToX11(bool isXWaylandWanted) const;
    /// Whether to let the user change between Wayland and XWayland. `platformName` is Qt's platform now,
    /// `isXWaylandWanted` the stored setting. A program that is on X11 for another reason could not be brought to
    /// Wayland by the setting.
    [[nodiscard]] bool offersXWayland(const QString &platformName, bool isXWaylandWanted) const;
};

} // namespace tunedeck
