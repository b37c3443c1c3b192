// SPDX-License-Identifier: MIT
#include "audio/LoopTimer.h"

#include <pulse/timeval.h>

#include <utility>

namespace tunedeck {

LoopTimer::LoopTimer(pa_mainloop_api &api, std::function<void()> handler)
    : m_api(api)
    , m_handler(std::move(handler))
{
}

void LoopTimer::start(std::chrono::milliseconds time)
{
    stop();
    struct timeval due = {};
    pa_timeval_add(pa_gettimeofday(&due), pa_usec_t(std::chrono::microseconds(time).count()));
    const auto fire = [](pa_mainloop_api *, pa_time_event *, const struct timeval *, void *timer) {
        auto *self = static_cast<LoopTimer *>(timer);
        self->stop();
        self->m_handler();
    };
    m_event = m_api.time_new(&m_api, &due, fire, this);
}

void LoopTimer::stop()
{
    if (m_event) {
        m_api.time_free(std::exchange(m_event, nullptr));
    }
}

} // namespace tunedeck
