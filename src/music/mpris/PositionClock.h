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
    /// A place, in seconds, that the player says it jumped to by itself. Returns whether that is another one than the
    /// clock's. Sayonara announces one every second while it plays, and mpDris2 one that is up to 2 s old. A jump is
    /// trusted as a target is.
    bool jump(double seconds, Instant at);

    /// A position, in seconds, that the player has answered. It moves the clock if it is more than 1.2 s off, because
    /// Rhythmbox, cmus and mpDris2 count whole seconds, or after trustNextSample(). One that may be old moves a running
    /// clock back only if the two samples before it were behind as well.
    void sample(double seconds, Instant at);
    void trustNextSample();
    /// Whether the last samples were behind, so that only further ones show whether they were old.
    [[nodiscard]] bool isInDoubt() const { return m_samplesBehind > 0; }
    /// Whether `seconds` is within 1.2 s of the clock.
    [[nodiscard]] bool agreesWith(double seconds, Instant at) const;

    void setRunning(bool running, Instant at);
    /// Seconds of the track per second; 0 to 100.
    void setRate(double rate, Instant at);

    /// Seconds, at least 0.
    [[nodiscard]] double position(Instant at) const;

private:
    [[nodiscard]] bool mayBeOld(double seconds, Instant at) const;

    double m_position = 0;
    Instant m_at{};
    double m_rate = 1;
    bool m_running = false;
    bool m_trustsNextSample = true;
    int m_samplesBehind = 0;
    std::optional<Instant> m_trustedUntil;
};

} // namespace tunedeck
