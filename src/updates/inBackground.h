// SPDX-License-Identifier: MIT
#pragma once

#include <QFuture>
#include <QPromise>

#include <thread>
#include <type_traits>
#include <utility>

namespace tunedeck {

/// What `work` answers, which is done on a thread of its own. Nobody waits for it, not even the end of the program:
/// what it needs it must own.
template <typename Work> [[nodiscard]] QFuture<std::invoke_result_t<Work>> inBackground(Work work)
{
    QPromise<std::invoke_result_t<Work>> promise;
    promise.start();
    auto future = promise.future();
    std::thread([promise = std::move(promise), work = std::move(work)]() mutable {
        promise.addResult(work());
        promise.finish();
    }).detach();
    return future;
}

} // namespace tunedeck
