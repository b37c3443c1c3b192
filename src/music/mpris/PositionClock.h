// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/bus/Instant.h"

#include <optional>

namespace tunedeck {

/// Where a track is, told from the last known position and the time since: players do not announce their position, and
/// asking them all the time would wake both sides.
class PositionClock {
public:
    /// What is known for certain: the start of a track, the place a player was found at.
    void setPosition(double seconds, Instant at);
    /// A target that was sought. What players say of their position in the next 1.5 s is often still the old place, so
    /// samples are not looked at until then.
    void trustTarget(double seconds, Instant at);
    [[nodiscard]] bool trustsTarget(Instant at) const;

    /// What a player said on being asked. Moves the clock only when it is more than 1.2 s off, because some players
    /// count in whole seconds, or when takeNextSample() was called before.
    void sample(double seconds, Instant at);
    void takeNextSample();

    void setRunning(bool running, Instant at);
    /// Seconds of the track a second; 0 to 100.
    void setRate(double rate, Instant at);

    /// Seconds, at least 0.
    [[nodiscard]] double position(Instant at) const;

private:
    double m_position = 0;
    Instant m_at{};
    double m_rate = 1;
    bool m_running = false;
    bool m_takesNextSample = true;
    std::optional<Instant> m_trustedUntil;
};

} // namespace tunedeck
