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
    if (!pool) {
        return false;
    }
    // A result can begin another job, which can end before this thread looks at the pool again. Its result is then
    // taken in the second of two idle passes.
    for (int idlePasses = 0; idlePasses < 2;) {
        idlePasses = pool->activeThreadCount() == 0 ? idlePasses + 1 : 0;
        if (!pool->waitForDone(10'000)) {
            return false;
        }
        QCoreApplication::sendPostedEvents();
    }
    return true;
}

} // namespace tunedeck
