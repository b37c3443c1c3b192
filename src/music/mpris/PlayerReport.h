// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/TrackDetails.h"

#include <QVariantMap>

#include <optional>

namespace tunedeck {

enum class PlaybackStatus { Stopped, Paused, Playing };
enum class LoopStatus { None, Track, Playlist };

/// The properties of a player's Player interface, decoded. None where the player does not say, or says something that
/// makes no sense.
struct PlayerReport {
    std::optional<PlaybackStatus> status;
    std::optional<LoopStatus> loopStatus;
    std::optional<bool> shuffle;
    std::optional<TrackDetails> track;
    std::optional<double> position; ///< seconds, 0 to 10⁹
    std::optional<double> rate; ///< 0 to 100
    std::optional<double> volume; ///< 0 to 1
    std::optional<bool> canControl;
    std::optional<bool> canPause;
    std::optional<bool> canSeek;
    std::optional<bool> canGoNext;
    std::optional<bool> canGoPrevious;
};

[[nodiscard]] PlayerReport decodePlayerProperties(const QVariantMap &properties);

/// Takes over from `change` what it says.
void merge(PlayerReport &report, const PlayerReport &change);

/// Seconds, 0 to 10⁹, from a number of microseconds; slightly negative ones, which some players give around a seek, are
/// 0. None for what is no position.
[[nodiscard]] std::optional<double> decodePosition(const QVariant &microseconds);

} // namespace tunedeck
