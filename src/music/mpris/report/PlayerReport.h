// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/report/TrackDetails.h"

#include <QVariantMap>

#include <optional>

namespace tunedeck {

enum class PlaybackStatus { Stopped, Paused, Playing };
enum class LoopStatus { None, Track, Playlist };

/// The properties of a player's Player interface, decoded. A value is none if the player sends none, or one that makes
/// no sense.
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

/// Decodes plain properties (see bus::plainMap()), whatever they hold.
[[nodiscard]] PlayerReport decodePlayerProperties(const QVariantMap &properties);

/// Overwrites the values of `report` that `change` has.
void merge(PlayerReport &report, const PlayerReport &change);

/// Seconds, 0 to 10⁹, from a plain number of microseconds. A negative number, which mpv and VLC send around a seek, is
/// 0. None for anything else.
[[nodiscard]] std::optional<double> decodePosition(const QVariant &microseconds);

} // namespace tunedeck
