// SPDX-License-Identifier: MIT
#include "portal/PortalAnswer.h"

#include <QDBusError>
#include <QLatin1String>

namespace tunedeck {

std::optional<PortalAnswer> answerWithoutPortal(const QDBusError &error)
{
    // The bus says so of a service that it cannot start.
    if (error.name().startsWith(QLatin1String("org.freedesktop.DBus.Error.Spawn."))) {
        return PortalAnswer::Missing;
    }
    switch (error.type()) {
    case QDBusError::ServiceUnknown:
        return PortalAnswer::Missing;
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
    case QDBusError::Disconnected:
        return PortalAnswer::Failed;
    default:
        return std::nullopt;
    }
}

} // namespace tunedeck
