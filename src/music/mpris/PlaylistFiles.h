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

/// The folder in which the user keeps music. Empty if the user has none: the desktop names the home folder then.
[[nodiscard]] QString musicFolder();

/// The readable playlist files (.m3u, .m3u8, .pls, .xspf) in `folder` and below it, sorted by name. Files of the same
/// name are named with their folders. No file is opened, and no link to a folder is followed.
///
/// Do not call this on the main thread, as it reads the disk. At `deadline`, or once stopped, it returns the files
/// found so far, but it waits for a disk that does not answer.
[[nodiscard]] QList<PlaylistDetails> findPlaylistFiles(
    const QString &folder, const QDeadlineTimer &deadline, const std::stop_token &stop);

/// The playlist files of the music folder. None if its disk, such as one in the network, does not answer until 200 ms
/// after `deadline`, if the search is stopped, or while an earlier search still waits for its disk. The thread that
/// waits for the disk is then left to itself.
[[nodiscard]] std::optional<QList<PlaylistDetails>> playlistFilesOfMusicFolder(
    const QDeadlineTimer &deadline, const std::stop_token &stop);

} // namespace tunedeck
