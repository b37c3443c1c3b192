// SPDX-License-Identifier: MIT
#pragma once

#include "above/AboveRoad.h"

#include <QSignalSpy>

namespace tunedeck {

/// The road's answer, once it has come. Warns and returns Refused if none comes in 5 s.
inline AboveAnswer answerTo(AboveRoad &road, bool isAbove)
{
    AboveAnswer result = AboveAnswer::Refused;
    QSignalSpy answered(&road, &AboveRoad::answered);
    const auto connection =
        QObject::connect(&road, &AboveRoad::answered, &road, [&result](AboveAnswer answer) { result = answer; });
    road.ask(isAbove);
    if (answered.isEmpty() && !answered.wait()) {
        qWarning("Nothing answers.");
    }
    QObject::disconnect(connection);
    return result;
}

} // namespace tunedeck
