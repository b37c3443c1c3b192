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

/// Where the user keeps music. Empty where the desktop has no such folder: it then names the home folder, in which
/// nobody looks for playlists.
[[nodiscard]] QString musicFolder();

/// The playlist files (.m3u, .m3u8, .pls, .xspf) that can be read in `folder` and below it, ordered by the files'
/// names, with their places as paths. Files of the same name are told apart by the folders they are in. No file is
/// opened, and no link to a folder is followed.
///
/// Reads the disk, so not for the main thread. Where that takes until `deadline`, or is stopped, answers what was found
/// until then; a disk that does not answer is waited for.
[[nodiscard]] QList<PlaylistDetails> findPlaylistFiles(
    const QString &folder, const QDeadlineTimer &deadline, const std::stop_token &stop);

/// The playlist files of the music folder, on a thread that is left to itself where its disk, such as one in the
/// network, does not answer until shortly after `deadline`. None then, and where it is stopped; also while the search
/// before this one still waits for its disk.
[[nodiscard]] std::optional<QList<PlaylistDetails>> playlistFilesOfMusicFolder(
    const QDeadlineTimer &deadline, const std::stop_token &stop);

} // namespace tunedeck
