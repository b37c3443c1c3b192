// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractEventDispatcher>
#include <QTimer>

namespace tunedeck {

/// Tells whether a coarse timer has been started, also while it ran.
class StartWatch {
public:
    explicit StartWatch(QTimer &timer)
        : m_timer(timer)
    {
        // A timer that runs keeps its type, and takes another one at its next start.
        timer.setTimerType(Qt::PreciseTimer);
    }

    [[nodiscard]] bool wasStarted() const
    {
        const auto running = QAbstractEventDispatcher::instance()->registeredTimers(&m_timer);
        return running.size() == 1 && running.constFirst().timerType == Qt::PreciseTimer;
    }

private:
    QTimer &m_timer;
};

} // namespace tunedeck
