// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/report/PlayerReport.h"

#include <QVariantMap>

namespace tunedeck {

/// The keys and values of MusicApplication::playerInfo for a player that is in `status` with `track`.
[[nodiscard]] QVariantMap userInfoOf(const TrackDetails &track, PlaybackStatus status);

} // namespace tunedeck
