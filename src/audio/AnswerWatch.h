// SPDX-License-Identifier: MIT
#pragma once

#include "audio/LoopTimer.h"

#include <chrono>
#include <functional>

namespace tunedeck {

/// Notices when the sound server leaves questions unanswered: libpulse itself waits for 30 s. All calls belong to the
/// loop's thread.
class AnswerWatch {
public:
    static constexpr std::chrono::milliseconds deadline{1'000};

    /// `changed` is called when isResponding() has changed. `api` must outlive this object.
    AnswerWatch(pa_mainloop_api &api, std::function<void()> changed);

    /// For each question one of answered() and gaveUp() must follow, or reset() for all.
    void asked();
    void answered();
    /// libpulse waits for the answer no longer.
    void gaveUp();
    /// The questions went with their connection.
    void reset();
    [[nodiscard]] bool isResponding() const { return m_isResponding; }

private:
    void setResponding(bool isResponding);
    void wait();

    std::function<void()> m_changed;
    LoopTimer m_timer;
    int m_unanswered = 0;
    bool m_isResponding = true;
};

} // namespace tunedeck
