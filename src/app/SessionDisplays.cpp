// SPDX-License-Identifier: MIT
#include "app/SessionDisplays.h"

#include "platform/windowSystem.h"

#include <QtGlobal>

namespace tunedeck {

SessionDisplays SessionDisplays::fromEnvironment()
{
    return {!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"), !qEnvironmentVariableIsEmpty("DISPLAY"),
        qEnvironmentVariable("QT_QPA_PLATFORM")};
}

bool SessionDisplays::canChooseXWayland() const
{
    return hasWayland && hasX11 && chosenPlatform.isEmpty();
}

bool SessionDisplays::leadToX11(bool isXWaylandWanted) const
{
    if (!chosenPlatform.isEmpty()) {
        return hasX11 && chosenPlatform.startsWith(u"xcb");
    }
    return hasX11 && (!hasWayland || isXWaylandWanted);
}

bool SessionDisplays::offersXWayland(const QString &platformName, bool isXWaylandWanted) const
{
    return canChooseXWayland() && (isWayland(platformName) || isXWaylandWanted);
}

} // namespace tunedeck
