// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace tunedeck {

/// A player's Metadata, decoded. Every text is clean (see bus::text) and empty where the player gives none.
struct TrackDetails {
    QString trackId; ///< not an identity: in real players it is constant, random or a row
    QString url; ///< as the player writes it: encoded, half encoded or a plain path
    QString title;
    QStringList artists;
    QString album;
    QString genre;
    QString streamTitle; ///< what a radio plays now, where the player tells it apart from the station
    std::optional<double> length; ///< seconds, above 0 and up to 30 days
    bool lengthGrows = false; ///< the length follows the position, as it does in some players while a stream plays
    std::optional<qint64> browserProcessId; ///< the browser for which an integration service speaks

    bool operator==(const TrackDetails &) const = default;

    /// Nothing that could be shown.
    [[nodiscard]] bool isEmpty() const;
    /// All that a track usually has. Players that are about to change track often send less for a moment.
    [[nodiscard]] bool isComplete() const;
    [[nodiscard]] bool isLocalFile() const;
    [[nodiscard]] bool isFromWeb() const;
    /// A stream without an end: not a file, and without a length that could be believed.
    [[nodiscard]] bool isLiveStream() const;

    /// The title, else the last part of the address.
    [[nodiscard]] QString name() const;
    /// The artists joined with ", ".
    [[nodiscard]] QString artist() const;
    /// 63 bits that stay the same as long as address, title, artists and album do.
    [[nodiscard]] qint64 persistentId() const;
    [[nodiscard]] bool isSameTrack(const TrackDetails &other) const;
};

/// Decodes a Metadata map, whatever is in it.
[[nodiscard]] TrackDetails decodeMetadata(const QVariantMap &metadata);

} // namespace tunedeck
