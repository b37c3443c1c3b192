// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/bus/Instant.h"

#include <optional>

namespace tunedeck {

/// A value that the user asked a player for. It is believed until the player has been read once it had the time to
/// take it over, but no longer than 1.25 s without an answer, or after it.
template <typename Value> class AskedValue {
public:
    void ask(Value value, Instant now)
    {
        m_value = value;
        m_until = now + longest;
        m_readableFrom.reset();
    }
    void answered(Instant now)
    {
        m_until = now + longest;
        m_readableFrom = now + slowness;
    }
    /// The player was read.
    void read(Instant now)
    {
        if (m_readableFrom && now >= *m_readableFrom) {
            m_value.reset();
        }
    }
    void settle(Instant now)
    {
        if (now >= m_until) {
            m_value.reset();
        }
    }

    [[nodiscard]] std::optional<Value> value() const { return m_value; }
    /// The time to call settle(), while there is a value.
    [[nodiscard]] Instant until() const { return m_until; }

private:
    static constexpr Milliseconds longest{1'250};
    /// Elisa, Chromium, Celluloid and mpv change their state up to 170 ms after they have answered a command.
    static constexpr Milliseconds slowness{180};

    std::optional<Value> m_value;
    Instant m_until{};
    std::optional<Instant> m_readableFrom;
};

} // namespace tunedeck
