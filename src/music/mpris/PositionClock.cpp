// SPDX-License-Identifier: MIT
#include "music/mpris/PositionClock.h"

#include <algorithm>
#include <cmath>

namespace tunedeck {

namespace {

constexpr double tolerance = 1.2;
constexpr Milliseconds trustInTarget{1'500};

} // namespace

void PositionClock::setPosition(double seconds, Instant at)
{
    m_position = std::max(0.0, seconds);
    m_at = at;
    m_trustedUntil.reset();
}

void PositionClock::trustTarget(double seconds, Instant at)
{
    setPosition(seconds, at);
    m_trustedUntil = at + trustInTarget;
}

bool PositionClock::trustsTarget(Instant at) const
{
    return m_trustedUntil && at < *m_trustedUntil;
}

void PositionClock::sample(double seconds, Instant at)
{
    if (trustsTarget(at)) {
        return;
    }
    if (m_trustsNextSample || std::abs(seconds - position(at)) > tolerance) {
        setPosition(seconds, at);
        m_trustsNextSample = false;
    }
}

void PositionClock::trustNextSample()
{
    m_trustsNextSample = true;
}

void PositionClock::setRunning(bool running, Instant at)
{
    m_position = position(at);
    m_at = at;
    m_running = running;
}

void PositionClock::setRate(double rate, Instant at)
{
    m_position = position(at);
    m_at = at;
    m_rate = rate;
}

double PositionClock::position(Instant at) const
{
    return m_running ? std::max(0.0, m_position + m_rate * secondsBetween(m_at, at)) : m_position;
}

} // namespace tunedeck
