// SPDX-License-Identifier: MIT
#include "music/mpris/PositionClock.h"

#include <algorithm>
#include <cmath>

namespace tunedeck {

namespace {

constexpr double tolerance = 1.2;
constexpr Milliseconds trustInTarget{1'500};
/// The position that mpDris2 reports while it plays is up to 2 s old.
constexpr double oldest = 2.5; // seconds
/// Sayonara's announcements are this near to the clock, on either side.
constexpr double jitter = 0.25; // seconds
constexpr int samplesToGoBack = 3;

} // namespace

void PositionClock::setPosition(double seconds, Instant at)
{
    m_position = std::max(0.0, seconds);
    m_at = at;
    m_trustedUntil.reset();
    m_samplesBehind = 0;
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

bool PositionClock::jump(double seconds, Instant at)
{
    if (m_running && (mayBeOld(seconds, at) || std::abs(seconds - position(at)) <= jitter)) {
        m_samplesBehind += agreesWith(seconds, at) ? 0 : 1;
        return false;
    }
    trustTarget(seconds, at);
    return true;
}

void PositionClock::sample(double seconds, Instant at)
{
    if (trustsTarget(at)) {
        return;
    }
    if (!m_trustsNextSample && agreesWith(seconds, at)) {
        m_samplesBehind = 0;
        return;
    }
    if (!m_trustsNextSample && mayBeOld(seconds, at) && ++m_samplesBehind < samplesToGoBack) {
        return;
    }
    setPosition(seconds, at);
    m_trustsNextSample = false;
}

void PositionClock::trustNextSample()
{
    m_trustsNextSample = true;
}

bool PositionClock::agreesWith(double seconds, Instant at) const
{
    return std::abs(seconds - position(at)) <= tolerance;
}

bool PositionClock::mayBeOld(double seconds, Instant at) const
{
    const double age = position(at) - seconds;
    return m_running && age > 0 && age < oldest;
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
