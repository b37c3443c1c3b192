// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck {

/// The displays that a session has for its programs. Beside a Wayland desktop there mostly is one for X11's programs
/// too, XWayland: a program that runs through it can do what X11 allows, such as to keep a window above all others.
struct SessionDisplays {
    bool hasWayland = false;
    bool hasX11 = false;
    /// Whether the user says, for all programs of the toolkit, which one to use.
    bool isChosen = false;

    [[nodiscard]] static SessionDisplays fromEnvironment();

    /// Whether XWayland is there, and this program may choose it.
    [[nodiscard]] bool canChooseXWayland() const;
    /// Whether to let the user change between Wayland and XWayland. `platformName` is what the program runs on,
    /// `isXWaylandWanted` what the user said before. Who is on X11 without having wanted it would not come back to
    /// Wayland by not wanting it.
    [[nodiscard]] bool offersXWayland(const QString &platformName, bool isXWaylandWanted) const;
};

} // namespace tunedeck
