// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace tunedeck {

/// A player's Metadata, decoded. Every text is clean (see bus::text()), and empty if the player sends none.
struct TrackDetails {
    QString trackId; ///< no identity: constant in Audacious, random in Sayonara, a row in mpv
    QString url; ///< as the player writes it: encoded, half encoded or a plain path
    QString title; ///< of a station whose song the player sends beside it: the song
    QStringList artists;
    QString album; ///< of such a station: its name
    QString genre;
    QString distinctId; ///< the track id of a track without address and texts; empty if there is none
    std::optional<double> length; ///< seconds, above 0 and up to 30 days
    bool lengthGrows = false; ///< the length follows the position, as mpv's and Celluloid's does while a stream plays
    std::optional<qint64> browserProcessId; ///< process of the browser for which an integration service speaks

    bool operator==(const TrackDetails &) const = default;

    /// Whether it shows no track: it has no text, no address, no length, and no track id other than one for "nothing".
    [[nodiscard]] bool isEmpty() const;
    /// Whether it has neither an address nor a text, as an untagged file in cmus and in Totem.
    [[nodiscard]] bool isNameless() const;
    /// Whether it has all that a track usually has. Chromium sends less for a moment at a track change.
    [[nodiscard]] bool isComplete() const;
    [[nodiscard]] bool isLocalFile() const;
    [[nodiscard]] bool isFromWeb() const;
    /// Whether it is a stream without an end: no file, and without a believable length.
    [[nodiscard]] bool isLiveStream() const;

    /// The title, else the last part of the address; empty for a nameless track.
    [[nodiscard]] QString name() const;
    /// The artists joined with ", ".
    [[nodiscard]] QString artist() const;
    /// A hash of address, title, artists and album, or of a nameless track's distinct id and length; 0 to 2⁶³ - 1, the
    /// same in every run.
    [[nodiscard]] qint64 persistentId() const;
    [[nodiscard]] bool isSameTrack(const TrackDetails &other) const;
};

/// Decodes a plain Metadata map (see bus::plainMap()), whatever it holds.
[[nodiscard]] TrackDetails decodeMetadata(const QVariantMap &metadata);

} // namespace tunedeck
