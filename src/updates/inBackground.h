// SPDX-License-Identifier: MIT
#pragma once

#include <QFuture>
#include <QPromise>

#include <thread>
#include <type_traits>
#include <utility>

namespace tunedeck {

/// Runs `work` on a thread of its own and returns its result. The program may end before the thread does, so `work`
/// must own everything that it uses.
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
