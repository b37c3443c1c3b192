// SPDX-License-Identifier: MIT
#pragma once

#include <QGuiApplication>

namespace tunedeck {

// The abilities of the window system. `platformName` is the name of Qt's platform plugin, such as "xcb" or
// "wayland-egl".

[[nodiscard]] inline bool isWayland(const QString &platformName = QGuiApplication::platformName())
{
    return platformName.startsWith(QLatin1String("wayland"));
}

/// Whether a window can ask to stay above all others. On Wayland no window can: there the user tells the desktop, for
/// instance in the window's menu.
[[nodiscard]] inline bool canKeepAbove(const QString &platformName = QGuiApplication::platformName())
{
    return !isWayland(platformName);
}

} // namespace tunedeck
