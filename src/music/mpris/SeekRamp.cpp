// SPDX-License-Identifier: MIT
#include "music/mpris/SeekRamp.h"

#include <algorithm>

namespace tunedeck {

namespace {

constexpr double firstStep = 2;
constexpr double lastStep = 8;
constexpr double growth = 1;
/// Limit of a track of unknown length.
constexpr double farthest = 1e9;

} // namespace

SeekRamp::SeekRamp(Direction direction, double position, std::optional<double> length)
    : m_direction(direction)
    , m_target(position)
    , m_limit(std::max(0.0, length.value_or(farthest) - 1))
    , m_step(firstStep)
{
}

double SeekRamp::advance()
{
    const double step = m_direction == Direction::Forward ? m_step : -m_step;
    m_target = std::clamp(m_target + step, 0.0, m_limit);
    m_step = std::min(lastStep, m_step + growth);
    return m_target;
}

} // namespace tunedeck
