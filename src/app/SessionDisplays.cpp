// SPDX-License-Identifier: MIT
#include "app/SessionDisplays.h"

#include "platform/windowSystem.h"

#include <QtGlobal>

namespace tunedeck {

SessionDisplays SessionDisplays::fromEnvironment()
{
    return {!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"), !qEnvironmentVariableIsEmpty("DISPLAY"),
        !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")};
}

bool SessionDisplays::canChooseXWayland() const
{
    return hasWayland && hasX11 && !isChosen;
}

bool SessionDisplays::offersXWayland(const QString &platformName, bool isXWaylandWanted) const
{
    return canChooseXWayland() && (isWayland(platformName) || isXWaylandWanted);
}

} // namespace tunedeck
