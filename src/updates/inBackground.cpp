// SPDX-License-Identifier: MIT
#include "updates/inBackground.h"

#include <condition_variable>
#include <mutex>

namespace tunedeck {

namespace {
struct Count {
    std::mutex mutex;
    std::condition_variable changed;
    int underWay = 0;
};

/// Never destroyed: work that hangs may end after the program's static objects.
Count &count()
{
    static auto *const count = new Count;
    return *count;
}
} // namespace

BackgroundWork::BackgroundWork()
{
    const std::lock_guard lock(count().mutex);
    ++count().underWay;
}

BackgroundWork::~BackgroundWork()
{
    const std::lock_guard lock(count().mutex);
    --count().underWay;
    count().changed.notify_all();
}

bool BackgroundWork::awaitEnd(std::chrono::milliseconds patience)
{
    std::unique_lock lock(count().mutex);
    return count().changed.wait_for(lock, patience, [] { return count().underWay == 0; });
}

} // namespace tunedeck
