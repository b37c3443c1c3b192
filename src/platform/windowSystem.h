// SPDX-License-Identifier: MIT
#pragma once

#include <QGuiApplication>
#include <QStringList>

#include <algorithm>
#include <array>

namespace tunedeck {

// The abilities of the window system. `platformName` is the name of Qt's platform plugin, such as "xcb" or
// "wayland-egl".

[[nodiscard]] inline bool isWayland(const QString &platformName = QGuiApplication::platformName())
{
    return platformName.startsWith(QLatin1String("wayland"));
}

/// Whether a window can ask to stay above all others. On Wayland no window can.
[[nodiscard]] inline bool canKeepAbove(const QString &platformName = QGuiApplication::platformName())
{
    return !isWayland(platformName);
}

/// Whether a dock or task bar shows the icon that a window sets. On Wayland no window can set one, and these desktops
/// show the icon of the program's desktop entry instead. `desktops` are the names in $XDG_CURRENT_DESKTOP.
[[nodiscard]] inline bool showsWindowIcons(const QString &platformName = QGuiApplication::platformName(),
    const QStringList &desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':'))
{
    static constexpr std::array withEntriesIcons{QLatin1String("GNOME"), QLatin1String("KDE"), QLatin1String("Unity"),
        QLatin1String("X-Cinnamon"), QLatin1String("Budgie"), QLatin1String("Pantheon")};
    return platformName == QLatin1String("xcb")
        && std::ranges::none_of(withEntriesIcons,
            [&desktops](QLatin1String desktop) { return desktops.contains(desktop, Qt::CaseInsensitive); });
}

} // namespace tunedeck
