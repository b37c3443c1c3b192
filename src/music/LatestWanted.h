// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <utility>

namespace tunedeck {

/// Sends one value at a time. Of the values wanted while one is unanswered only the last is kept, and sent next unless
/// it is the unanswered one.
template <typename Value> class LatestWanted {
public:
    using Send = std::function<void(Value value)>;

    /// `send` sends a value; answered() must be called when that value is answered, in whatever way.
    explicit LatestWanted(Send send)
        : m_send(std::move(send))
    {
    }

    void want(Value value)
    {
        m_waiting = value == m_unanswered ? std::nullopt : std::optional(value);
        sendNext();
    }

    /// Whether the value wanted meanwhile was sent.
    bool answered()
    {
        m_unanswered.reset();
        return sendNext();
    }

    /// Drops the value that waits. The one that was sent stays unanswered.
    void forget() { m_waiting.reset(); }

private:
    bool sendNext()
    {
        if (m_unanswered || !m_waiting) {
            return false;
        }
        m_unanswered = std::exchange(m_waiting, std::nullopt);
        m_send(*m_unanswered);
        return true;
    }

    Send m_send;
    std::optional<Value> m_waiting;
    std::optional<Value> m_unanswered;
};

} // namespace tunedeck
