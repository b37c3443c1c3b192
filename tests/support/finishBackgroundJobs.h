// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QThreadPool>

namespace tunedeck {

/// Waits until `owner`'s thread pool has no more to do, and lets this thread take the results. False if `owner` has no
/// pool or a job takes longer than ten seconds.
inline bool finishBackgroundJobs(const QObject &owner)
{
    auto *pool = owner.findChild<QThreadPool *>();
    bool isDone = pool;
    while (isDone) {
        isDone = pool->waitForDone(10'000);
        // A result can begin another job.
        QCoreApplication::sendPostedEvents();
        if (pool->activeThreadCount() == 0) {
            break;
        }
    }
    return isDone;
}

} // namespace tunedeck
