// SPDX-License-Identifier: MIT
#include "music/mpris/bus/playersLog.h"

#include "music/mpris/bus/BusValue.h"
#include "platform/shortened.h"

namespace tunedeck {

Q_LOGGING_CATEGORY(playersLog, "tunedeck.players", QtWarningMsg)

QString loggable(const QString &text)
{
    return shortened(bus::text(text).value_or(QString()));
}

} // namespace tunedeck
