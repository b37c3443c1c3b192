// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

#include <optional>

namespace tunedeck {

/// A playlist as its player describes it, or as the disk has it.
struct PlaylistDetails {
    qint64 id = 0; ///< playlistId() of the path
    QString path; ///< the D-Bus object path that the player knows it by, or the file that it is
    QString name; ///< may be empty

    bool operator==(const PlaylistDetails &) const = default;
};

/// Not negative, and as lasting as `path`.
[[nodiscard]] qint64 playlistId(const QString &path);

/// Decodes a playlist as it comes over the bus: its path, its name and its icon. None without a path.
[[nodiscard]] std::optional<PlaylistDetails> decodePlaylist(const QVariant &value);
/// Decodes the property "ActivePlaylist": whether there is one, and which.
[[nodiscard]] std::optional<PlaylistDetails> decodeActivePlaylist(const QVariant &value);

} // namespace tunedeck
