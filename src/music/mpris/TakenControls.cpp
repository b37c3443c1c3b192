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

template <typename Mode> std::optional<double> numberOf(std::optional<Mode> mode)
{
    return mode ? std::optional(static_cast<double>(*mode)) : std::nullopt;
}

bool isSame(double one, double other)
{
    return std::abs(one - other) < volumeStep / 10;
}

} // namespace

void TakenControls::read(const PlayerReport &report, Instant at)
{
    shown(MusicControl::volume, report.volume, at);
    shown(MusicControl::shuffle, numberOf(report.shuffle), at);
    shown(MusicControl::repeat, numberOf(report.loopStatus), at);
}

void TakenControls::announced(const PlayerReport &report, Instant at)
{
    if (report.volume) {
        shown(MusicControl::volume, report.volume, at);
    }
    if (report.shuffle) {
        shown(MusicControl::shuffle, numberOf(report.shuffle), at);
    }
    if (report.loopStatus) {
        shown(MusicControl::repeat, numberOf(report.loopStatus), at);
    }
}

void TakenControls::askedForVolume(double volume)
{
    ask(MusicControl::volume, volume);
}

void TakenControls::askedForShuffle(bool enabled)
{
    ask(MusicControl::shuffle, *numberOf(std::optional(enabled)));
}

void TakenControls::askedForLoopStatus(LoopStatus status)
{
    // Rhythmbox and Totem take None and Playlist, and ignore Track alone.
    if (status == LoopStatus::Track) {
        forgetAsked(MusicControl::repeat);
    } else {
        ask(MusicControl::repeat, *numberOf(std::optional(status)));
    }
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

void TakenControls::forgetAsked()
{
    for (Control &control : m_controls) {
        control.attempt.reset();
    }
}

ControlAnswer TakenControls::answer(MusicControl which) const
{
    const Control &control = m_controls.at(index(which));
    if (!control.shown) {
        return ControlAnswer::missing;
    }
    return control.ignoredAttempts >= attemptsToIgnore ? ControlAnswer::ignored : ControlAnswer::taken;
}

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

void TakenControls::ask(MusicControl which, double value)
{
    m_controls.at(index(which)).attempt = Attempt{value, std::nullopt};
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
