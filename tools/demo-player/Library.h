// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <chrono>
#include <optional>

namespace tunedeck::demo {

/// What the demo player can play. An empty text or list is a tag that the track does not have.
struct Track {
    QString url; ///< encoded
    QString title;
    QStringList artists;
    QString album;
    QStringList genres;
    std::optional<std::chrono::microseconds> length; ///< none: a live stream
    QStringList liveTitles; ///< what a live stream calls itself, in turn

    [[nodiscard]] bool isLive() const { return !liveTitles.isEmpty(); }
};

struct Playlist {
    QString name;
    QList<qsizetype> tracks; ///< places in the library
};

/// The tracks the demo player starts with. Tests rely on their order.
[[nodiscard]] QList<Track> library();

/// The first `count` playlists. The first one is the whole library; after the named ones come numbered ones of one
/// track each, so that a client can be given as many as it can stand.
[[nodiscard]] QList<Playlist> playlists(qsizetype count);

inline constexpr qsizetype namedPlaylistCount = 6;

} // namespace tunedeck::demo
