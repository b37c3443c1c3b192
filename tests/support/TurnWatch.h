// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QFile>
#include <QObject>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <utility>

namespace tunedeck {

/// Measures the longest turn of this thread's event loop while it lives, without the time that a busy machine kept it
/// waiting.
class TurnWatch : public QObject {
public:
    TurnWatch()
    {
        m_timer.setTimerType(Qt::PreciseTimer);
        connect(&m_timer, &QTimer::timeout, this, &TurnWatch::endTurn);
        m_clock.start();
        m_timer.start(std::chrono::milliseconds(1));
    }

    /// In milliseconds, with the turn that lasts.
    [[nodiscard]] qint64 longest()
    {
        endTurn();
        return m_longest / 1'000'000;
    }
    /// The processor time of this thread's busiest turn, in milliseconds. Unlike the time of the clock,
    /// it does not grow while a thread that holds a lock is kept waiting by other programs.
    [[nodiscard]] qint64 mostWork()
    {
        endTurn();
        return m_mostWork / 1'000'000;
    }

private:
    /// How long this thread has been ready to run while others ran, in nanoseconds; 0 where the system does not tell.
    [[nodiscard]] static qint64 waitForProcessor()
    {
        QFile statistics(QStringLiteral("/proc/thread-self/schedstat"));
        return statistics.open(QIODevice::ReadOnly) ? statistics.readAll().split(' ').value(1).toLongLong() : 0;
    }

    /// In nanoseconds.
    [[nodiscard]] static qint64 work()
    {
        timespec used = {};
        ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &used);
        return qint64(used.tv_sec) * 1'000'000'000 + used.tv_nsec;
    }

    void endTurn()
    {
        const qint64 used = work();
        m_mostWork = std::max(m_mostWork, used - std::exchange(m_workBefore, used));
        const qint64 wait = waitForProcessor();
        const qint64 now = m_clock.nsecsElapsed();
        const qint64 turn = now - std::exchange(m_turnBegan, now);
        m_longest = std::max(m_longest, turn - (wait - std::exchange(m_waitBefore, wait)));
    }

    QTimer m_timer;
    QElapsedTimer m_clock;
    // In nanoseconds: what is rounded before it is subtracted is up to a millisecond off.
    qint64 m_turnBegan = 0;
    qint64 m_waitBefore = waitForProcessor();
    qint64 m_longest = 0;
    qint64 m_workBefore = work();
    qint64 m_mostWork = 0;
};

} // namespace tunedeck
