// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/bus/Instant.h"

#include <optional>

namespace tunedeck {

/// The position in a track, computed from the last known one and the time since. Players do not announce their
/// position, and to ask all the time would wake both sides.
class PositionClock {
public:
    /// A certain position in seconds, such as the start of a track.
    void setPosition(double seconds, Instant at);
    /// The target of a seek, in seconds. Samples are ignored for the next 1.5 s: Audacious still reports the old
    /// position for 0.2 s, Elisa for 1.2 s.
    void trustTarget(double seconds, Instant at);
    [[nodiscard]] bool trustsTarget(Instant at) const;

    /// A position, in seconds, that the player has answered. It moves the clock if it is more than 1.2 s off, because
    /// Rhythmbox, cmus and mpDris2 count whole seconds, or after trustNextSample().
    void sample(double seconds, Instant at);
    void trustNextSample();

    void setRunning(bool running, Instant at);
    /// Seconds of the track per second; 0 to 100.
    void setRate(double rate, Instant at);

    /// Seconds, at least 0.
    [[nodiscard]] double position(Instant at) const;

private:
    double m_position = 0;
    Instant m_at{};
    double m_rate = 1;
    bool m_running = false;
    bool m_trustsNextSample = true;
    std::optional<Instant> m_trustedUntil;
};

} // namespace tunedeck
