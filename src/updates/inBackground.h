// SPDX-License-Identifier: MIT
#pragma once

#include <QFuture>
#include <QPromise>

#include <chrono>
#include <memory>
#include <thread>
#include <type_traits>
#include <utility>

namespace tunedeck {

/// Work that is under way, while this object exists: what runs on a thread of inBackground(), or a file that is open.
class BackgroundWork {
public:
    BackgroundWork();
    ~BackgroundWork();
    BackgroundWork(const BackgroundWork &) = delete;
    BackgroundWork &operator=(const BackgroundWork &) = delete;

    /// Waits until no work is under way, or `patience` is over. The program calls this before it ends: the libraries
    /// that the work uses are taken down then. Returns whether no work is left.
    static bool awaitEnd(std::chrono::milliseconds patience);
};

/// Runs `work` on a thread of its own and returns its result. The program may end before the thread does, so `work`
/// must own everything that it uses.
template <typename Work> [[nodiscard]] QFuture<std::invoke_result_t<Work>> inBackground(Work work)
{
    QPromise<std::invoke_result_t<Work>> promise;
    promise.start();
    auto future = promise.future();
    auto isUnderWay = std::make_unique<BackgroundWork>();
    std::thread([promise = std::move(promise), isUnderWay = std::move(isUnderWay), work = std::move(work)]() mutable {
        {
            const Work own = std::move(work);
            promise.addResult(own());
        }
        promise.finish();
        isUnderWay.reset();
    }).detach();
    return future;
}

} // namespace tunedeck
