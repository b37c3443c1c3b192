// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicTypes.h"
#include "music/mpris/bus/Instant.h"
#include "music/mpris/report/PlayerReport.h"

#include <array>
#include <optional>

namespace tunedeck {

/// Whether a player lets others set its volume, shuffle and loop status, as far as it has shown. Chromium accepts a
/// volume, and Dragon a shuffle and a loop status, and both keep what they have.
///
/// A value is ignored once it was set twice and twice read back as it was before. It is taken again when the player
/// shows any other value. MusicControl::position is none of these values.
class TakenControls {
public:
    /// All properties, as read from the player.
    void read(const PlayerReport &report, Instant at);
    /// The properties that the player announced.
    void announced(const PlayerReport &report, Instant at);

    /// The player was told to set its volume, 0 to 1.
    void askedForVolume(double volume);
    void askedForShuffle(bool enabled);
    void askedForLoopStatus(LoopStatus status);
    /// It answered. What it shows from 170 ms later on is its effect.
    void answered(MusicControl control, Instant at);
    /// The last wish shows nothing, because something else happened to the player meanwhile.
    void forgetAsked(MusicControl control);
    void forgetAsked();

    /// Missing for a value that the player has never shown, or no longer lists.
    [[nodiscard]] ControlAnswer answer(MusicControl control) const;

private:
    struct Attempt {
        double value; ///< a volume, or the number of a mode
        std::optional<Instant> answered;
    };
    struct Control {
        std::optional<double> shown;
        std::optional<Attempt> attempt;
        int ignoredAttempts = 0;
    };
    void shown(MusicControl control, std::optional<double> value, Instant at);
    void ask(MusicControl control, double value);
    static void judge(Control &control, Instant at);

    std::array<Control, 4> m_controls; ///< by MusicControl
};

} // namespace tunedeck
