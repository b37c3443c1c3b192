// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

namespace tunedeck::demo {

/// A track that the demo player can play. An empty text or list is a missing tag.
struct Track {
    QString url; ///< encoded
    QString title;
    QStringList artists;
    QString album;
    QStringList genres;
    std::optional<std::chrono::microseconds> length; ///< none: a live stream
    QStringList liveTitles; ///< the titles of a live stream, one after the other

    [[nodiscard]] bool isLive() const { return !liveTitles.isEmpty(); }
};

struct Playlist {
    QString name;
    QList<qsizetype> tracks; ///< places in the library
};

/// The tracks that the demo player starts with. Tests rely on their order.
[[nodiscard]] QList<Track> library();

/// The first `count` playlists. The first one is the whole library; after the named ones come any number of numbered
/// ones with one track each.
[[nodiscard]] QList<Playlist> playlists(qsizetype count);

inline constexpr qsizetype namedPlaylistCount = 6;

} // namespace tunedeck::demo
