// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariant>

#include <optional>

namespace tunedeck {

/// A playlist as its player describes it.
struct PlaylistDetails {
    qint64 id = 0; ///< made of the path, so as lasting as that is; not negative
    QString path; ///< the D-Bus object path that the player knows it by
    QString name; ///< may be empty

    bool operator==(const PlaylistDetails &) const = default;
};

/// Decodes a playlist as it comes over the bus: its path, its name and its icon. None without a path.
[[nodiscard]] std::optional<PlaylistDetails> decodePlaylist(const QVariant &value);
/// Decodes the property "ActivePlaylist": whether there is one, and which.
[[nodiscard]] std::optional<PlaylistDetails> decodeActivePlaylist(const QVariant &value);

} // namespace tunedeck
