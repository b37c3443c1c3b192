// SPDX-License-Identifier: MIT
#pragma once

#include "platform/windowSystem.h"

namespace tunedeck {

/// Whether a window can ask to stay above all others. On Wayland none can: there it is the user who says so to the
/// desktop, for instance in the window's menu.
[[nodiscard]] inline bool canKeepAbove(const QString &platformName = QGuiApplication::platformName())
{
    return !isWayland(platformName);
}

} // namespace tunedeck
