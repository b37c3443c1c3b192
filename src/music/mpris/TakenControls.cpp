// SPDX-License-Identifier: MIT
#include "music/mpris/TakenControls.h"

#include <cmath>
#include <utility>

namespace tunedeck {

namespace {

/// Elisa, Chromium, Celluloid and mpv carry a command out up to 170 ms after they have answered it.
constexpr Milliseconds effect{170};
constexpr int attemptsToIgnore = 2;
/// cmus and mpDris2 cut a volume off to whole percents, Dragon makes 0.495 of 0.5. A volume that is nearer than this to
/// what was there need not show.
constexpr double volumeStep = 0.02;

std::size_t index(MusicControl control)
{
    return static_cast<std::size_t>(control);
}

bool isSame(double one, double other)
{
    return std::abs(one - other) < volumeStep / 10;
}

} // namespace

void TakenControls::shown(MusicControl which, std::optional<double> value, Instant at)
{
    Control &control = m_controls.at(index(which));
    const std::optional<double> before = std::exchange(control.shown, value);
    if (!before || !value) {
        control.attempt.reset();
    } else if (!isSame(*value, *before)) {
        control.attempt.reset();
        control.ignoredAttempts = 0;
    } else {
        judge(control, at);
    }
}

void TakenControls::asked(MusicControl which, double value)
{
    m_controls.at(index(which)).attempt = Attempt{value, std::nullopt};
}

void TakenControls::answered(MusicControl which, Instant at)
{
    if (std::optional<Attempt> &attempt = m_controls.at(index(which)).attempt) {
        attempt->answered = at;
    }
}

void TakenControls::forgetAsked(MusicControl which)
{
    m_controls.at(index(which)).attempt.reset();
}

ControlAnswer TakenControls::answer(MusicControl which) const
{
    const Control &control = m_controls.at(index(which));
    if (!control.shown) {
        return ControlAnswer::missing;
    }
    return control.ignoredAttempts >= attemptsToIgnore ? ControlAnswer::ignored : ControlAnswer::taken;
}

void TakenControls::judge(Control &control, Instant at)
{
    const std::optional<Attempt> attempt = control.attempt;
    if (!attempt || !attempt->answered || at < *attempt->answered + effect) {
        return;
    }
    control.attempt.reset();
    if (std::abs(attempt->value - *control.shown) >= volumeStep) {
        ++control.ignoredAttempts;
    }
}

} // namespace tunedeck
