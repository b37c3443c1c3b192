// SPDX-License-Identifier: MIT
#pragma once

#include "PlaylistDetails.h"

#include <QDeadlineTimer>
#include <QList>
#include <QString>

#include <stop_token>

namespace tunedeck {

inline constexpr qsizetype maximumPlaylistFiles = 10'000;

/// Where the user keeps music. Empty where the desktop has no such folder: it then names the home folder, in which
/// nobody looks for playlists.
[[nodiscard]] QString musicFolder();

/// The playlist files (.m3u, .m3u8, .pls, .xspf) that can be read in `folder` and below it, ordered by their names,
/// with their places as paths. Files of the same name are told apart by the folders they are in. No file is opened, and
/// no link to a folder is followed.
///
/// Reads the disk, so not for the main thread. Where that takes until `deadline`, or is stopped, answers what was found
/// until then.
[[nodiscard]] QList<PlaylistDetails> findPlaylistFiles(
    const QString &folder, const QDeadlineTimer &deadline, const std::stop_token &stop);

} // namespace tunedeck
