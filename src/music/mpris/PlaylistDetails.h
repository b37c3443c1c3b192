// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

#include <optional>

namespace tunedeck {

/// A playlist of a player, or a playlist file.
struct PlaylistDetails {
    qint64 id = 0; ///< playlistId() of the path
    QString path; ///< its D-Bus object path, or the path of its file
    QString name; ///< may be empty

    bool operator==(const PlaylistDetails &) const = default;
};

/// An id made from `path`: never negative, the same in every run.
[[nodiscard]] qint64 playlistId(const QString &path);

/// Decodes a plain playlist: its path, its name and its icon. None if the path is missing or invalid.
[[nodiscard]] std::optional<PlaylistDetails> decodePlaylist(const QVariant &value);
/// Decodes the plain property "ActivePlaylist": whether one is active, and which.
[[nodiscard]] std::optional<PlaylistDetails> decodeActivePlaylist(const QVariant &value);

} // namespace tunedeck
