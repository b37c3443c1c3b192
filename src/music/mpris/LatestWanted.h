// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>

namespace tunedeck {

/// Sends one value at a time. Of the values wanted while one is unanswered only the last is kept, and sent next.
class LatestWanted {
public:
    using Send = std::function<void(double value)>;

    /// `send` sends a value; answered() must be called when that value is answered, in whatever way.
    explicit LatestWanted(Send send);

    void want(double value);
    /// Whether the value wanted meanwhile was sent.
    bool answered();
    /// Drops the value that waits. The one that was sent stays unanswered.
    void forget() { m_waiting.reset(); }

private:
    bool sendNext();

    Send m_send;
    std::optional<double> m_waiting;
    bool m_isUnanswered = false;
};

} // namespace tunedeck
