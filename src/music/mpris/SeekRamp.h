// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <optional>

namespace tunedeck {

/// The targets of a seek that lasts while a button is held: one every interval, in steps that grow from 2 to 8 seconds.
/// Targets are absolute, because relative steps add up to something else in several players.
class SeekRamp {
public:
    enum class Direction { Backward, Forward };
    static constexpr std::chrono::milliseconds interval{250};

    /// Seconds. `length` is the track's, if known.
    SeekRamp(Direction direction, double position, std::optional<double> length);

    [[nodiscard]] Direction direction() const;
    /// Takes the next step and returns where it leads, from 0 to a second before the end.
    double advance();

private:
    Direction m_direction;
    double m_target;
    double m_limit;
    double m_step;
};

} // namespace tunedeck
