// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <optional>

namespace tunedeck {

/// The targets of a seek that lasts while a button is held: one every interval, in steps that grow from 2 to 8 seconds.
/// Targets are absolute: Rhythmbox cuts the fraction of a relative step off, and mpDris2 goes too far.
class SeekRamp {
public:
    enum class Direction { Backward, Forward };
    static constexpr std::chrono::milliseconds interval{250};

    /// `position` and `length` of the track are seconds; `length` may be unknown.
    SeekRamp(Direction direction, double position, std::optional<double> length);

    [[nodiscard]] Direction direction() const { return m_direction; }
    /// Takes the next step. Returns the target in seconds, from 0 to a second before the end.
    double advance();

private:
    Direction m_direction;
    double m_target;
    double m_limit;
    double m_step;
};

} // namespace tunedeck
