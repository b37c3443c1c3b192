// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/PlaylistDetails.h"

#include <QCollator>
#include <QDir>
#include <QFileInfo>
#include <QList>

#include <optional>

namespace tunedeck {

/// The playlist in `file` (.m3u, .m3u8, .pls, .xspf), which is not opened. None for a file that is no playlist, or that
/// cannot be read. The disk is asked about playlists only: most files are songs, and in the network each question takes
/// time.
[[nodiscard]] std::optional<PlaylistDetails> playlistIn(const QFileInfo &file);

/// The order of playlists by the names as people read them: "mix 9" comes before "Mix 10". Playlists of one name are in
/// the order of their paths.
class PlaylistOrder {
public:
    PlaylistOrder();
    [[nodiscard]] bool operator()(const PlaylistDetails &left, const PlaylistDetails &right) const;

private:
    QCollator m_collator;
};

/// Names playlists that have the name of another one by their places in `folder`.
void tellSameNamesApart(QList<PlaylistDetails> &playlists, const QDir &folder);

} // namespace tunedeck
