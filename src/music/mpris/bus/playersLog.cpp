// SPDX-License-Identifier: MIT
#include "music/mpris/bus/playersLog.h"

#include "music/mpris/bus/BusValue.h"

namespace tunedeck {

Q_LOGGING_CATEGORY(playersLog, "tunedeck.players", QtWarningMsg)

QString loggable(const QString &text)
{
    return bus::text(text).value_or(QString()).left(maximumLoggedLength);
}

} // namespace tunedeck
