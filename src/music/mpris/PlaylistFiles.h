// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/PlaylistDetails.h"

#include <QDeadlineTimer>
#include <QList>
#include <QString>

#include <optional>
#include <stop_token>

namespace tunedeck {

inline constexpr qsizetype maximumPlaylistFiles = 10'000;

/// Playlist files, sorted by name (see PlaylistOrder). Files of the same name are named with their folders.
struct PlaylistFiles {
    QList<PlaylistDetails> playlists; ///< at most maximumPlaylistFiles, the first ones by name
    bool isWhole = true; ///< whether there are no more
};

/// The folder in which the user keeps music. Empty if the user has none: the desktop names the home folder then.
[[nodiscard]] QString musicFolder();

/// The readable playlist files in `folder` and below it; in the user's music folder if `folder` is empty. No file is
/// opened, and no link to a folder is followed.
///
/// Do not call this on the main thread, as it waits for the disk until `deadline`. A folder whose disk does not answer,
/// such as one in the network, holds up no other: the thread that waits for it is left to itself, and at the deadline
/// the files found so far are returned. None if no file was found until then, or if the search is stopped. At most four
/// threads wait for disks, however often this is called.
[[nodiscard]] std::optional<PlaylistFiles> findPlaylistFiles(
    const QString &folder, const QDeadlineTimer &deadline, const std::stop_token &stop);

} // namespace tunedeck
