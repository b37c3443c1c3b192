// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicTypes.h"
#include "music/mpris/bus/Instant.h"

#include <array>
#include <optional>

namespace tunedeck {

/// Which of its values a player lets others set, as far as it has shown. Chromium accepts a volume, and Dragon a
/// shuffle and a loop status, and both keep what they have.
///
/// A value is ignored once it was set twice and twice read back as it was before. It is taken again when the player
/// shows any other value. MusicControl::position is none of these values.
class TakenControls {
public:
    /// The player shows `value`, as read or announced; none if it lists no such property. A volume is 0 to 1; of the
    /// others each number is another value.
    void shown(MusicControl control, std::optional<double> value, Instant at);
    /// The player was told to set `value`.
    void asked(MusicControl control, double value);
    /// It answered. What it shows from 170 ms later on is its effect.
    void answered(MusicControl control, Instant at);
    /// What was asked for last shows nothing, because something else happened to the player meanwhile.
    void forgetAsked(MusicControl control);

    /// Missing for a value that the player has never shown, or no longer lists.
    [[nodiscard]] ControlAnswer answer(MusicControl control) const;

private:
    struct Attempt {
        double value;
        std::optional<Instant> answered;
    };
    struct Control {
        std::optional<double> shown;
        std::optional<Attempt> attempt;
        int ignoredAttempts = 0;
    };
    static void judge(Control &control, Instant at);

    std::array<Control, 4> m_controls; ///< by MusicControl
};

} // namespace tunedeck
