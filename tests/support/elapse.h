// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QTimer>
#include <QTimerEvent>

namespace tunedeck {

/// Lets a running timer's time be over. False where it does not run.
inline bool elapse(QTimer &timer)
{
    if (!timer.isActive()) {
        return false;
    }
    QTimerEvent timeIsOver(timer.timerId());
    return QCoreApplication::sendEvent(&timer, &timeIsOver);
}

} // namespace tunedeck
