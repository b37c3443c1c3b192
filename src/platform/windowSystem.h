// SPDX-License-Identifier: MIT
#pragma once

#include <QGuiApplication>

namespace tunedeck {

/// Whether the toolkit's platform is one of those for Wayland, such as "wayland-egl".
[[nodiscard]] inline bool isWayland(const QString &platformName = QGuiApplication::platformName())
{
    return platformName.startsWith(QLatin1String("wayland"));
}

} // namespace tunedeck
