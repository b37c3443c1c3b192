// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/report/PlayerReport.h"

#include <optional>

namespace tunedeck {

/// The shuffle and the loop status of a player, as far as its reports can be believed.
///
/// cmus and Totem announce no change of these, so reads count. But mpv answers a random Shuffle at every read. So an
/// unannounced change of Shuffle is believed once three reads in a row agree on it. A player whose Shuffle goes back
/// before that flips: from then on its Shuffle is unknown, and its loop status is believed only as announced.
class PlayerModes {
public:
    /// All properties, as read from the player.
    void read(const PlayerReport &report);
    /// The properties that the player announced.
    void announced(const PlayerReport &report);
    /// The player was told to shuffle or not to. The next read that shows it is believed at once.
    void askedForShuffle(bool enabled) { m_asked = enabled; }

    [[nodiscard]] std::optional<bool> shuffle() const { return m_flips ? std::nullopt : m_shuffle; }
    [[nodiscard]] std::optional<LoopStatus> loopStatus() const { return m_loopStatus; }
    /// Whether Shuffle changes from read to read.
    [[nodiscard]] bool flips() const { return m_flips; }
    /// Whether only a further read can show what to believe.
    [[nodiscard]] bool isInDoubt() const { return m_sightings > 0; }

private:
    void judge(bool shuffle);
    void believe(std::optional<bool> shuffle);

    std::optional<bool> m_shuffle;
    std::optional<LoopStatus> m_loopStatus;
    std::optional<bool> m_asked;
    int m_sightings = 0; ///< reads in a row of the value that is not believed
    bool m_flips = false;
};

} // namespace tunedeck
