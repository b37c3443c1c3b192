// SPDX-License-Identifier: MIT
#include "audio/AnswerWatch.h"

#include "audio/audioLog.h"

#include <utility>

namespace tunedeck {

AnswerWatch::AnswerWatch(pa_mainloop_api &api, std::function<void()> changed)
    : m_changed(std::move(changed))
    , m_timer(api, [this] { setResponding(false); })
{
}

void AnswerWatch::asked()
{
    ++m_unanswered;
    if (m_isResponding && !m_timer.isActive()) {
        m_timer.start(deadline);
    }
}

void AnswerWatch::answered()
{
    --m_unanswered;
    // The answers come in the order of the questions, so the next one has its whole time from now on at least.
    wait();
    setResponding(true);
}

void AnswerWatch::gaveUp()
{
    --m_unanswered;
    setResponding(false);
}

void AnswerWatch::reset()
{
    m_unanswered = 0;
    m_timer.stop();
    m_isResponding = true;
}

void AnswerWatch::wait()
{
    if (m_unanswered > 0) {
        m_timer.start(deadline);
    } else {
        m_timer.stop();
    }
}

void AnswerWatch::setResponding(bool isResponding)
{
    if (m_isResponding != isResponding) {
        m_isResponding = isResponding;
        qCDebug(audioLog) << "the sound server is" << (isResponding ? "responding" : "not responding");
        m_changed();
    }
}

} // namespace tunedeck
