// SPDX-License-Identifier: MIT
#pragma once

#include <pulse/mainloop-api.h>

#include <chrono>
#include <functional>

namespace tunedeck {

/// Fires once after each start(), on the thread of libpulse's loop, to which all calls belong. A timer that is not
/// active wakes nobody.
class LoopTimer {
public:
    /// `api` must outlive the timer.
    LoopTimer(pa_mainloop_api &api, std::function<void()> handler);
    ~LoopTimer() { stop(); }
    LoopTimer(const LoopTimer &) = delete;
    LoopTimer &operator=(const LoopTimer &) = delete;

    /// Starts it again if it is active.
    void start(std::chrono::milliseconds time);
    void stop();
    [[nodiscard]] bool isActive() const { return m_event != nullptr; }

private:
    pa_mainloop_api &m_api;
    std::function<void()> m_handler;
    pa_time_event *m_event = nullptr;
};

} // namespace tunedeck
