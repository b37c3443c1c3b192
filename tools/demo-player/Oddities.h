// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QVariant>

#include <chrono>
#include <limits>
#include <optional>

namespace tunedeck::demo {

/// The form of a player's track ids.
enum class TrackIdKind { Path, String, Constant, None };

/// The ways in which the player differs from MPRIS at present. At first it does not differ.
struct Oddities {
    bool holdsCalls = false; ///< calls wait until this ends
    std::chrono::milliseconds late{0}; ///< before a call is carried out and answered
    bool isSilent = false;
    bool diesOnCall = false;
    bool offersPlaylists = true;
    qsizetype longestPage = std::numeric_limits<qsizetype>::max(); ///< of playlists
    bool isStrictOnPages = false; ///< a page that begins after the last playlist is an error

    QHash<QString, QVariant> wrong; ///< by property or metadata key
    QSet<QString> absent; ///< properties and metadata keys
    QSet<QString> deadly; ///< properties whose Get kills the player
    QSet<QString> refused; ///< properties whose Set succeeds and changes nothing
    QSet<QString> quiet; ///< properties whose changes are not announced
    bool flipsShuffle = false; ///< Shuffle is another at every read, and cannot be set
    QSet<QString> denied; ///< properties of the name Can…

    bool announcesProperties = true;
    bool announcesSeeks = true;
    int volumeEchoes = 1;
    std::chrono::milliseconds blink{0};
    std::chrono::milliseconds partial{0};
    std::chrono::milliseconds unaskedSeeks{0}; ///< time between two while it plays; 0: none
    std::chrono::milliseconds stale{0}; ///< the position is that of the last multiple of this time

    bool keepsMetadataWhenStopped = false;
    bool hasNoTexts = false; ///< the metadata has neither an address nor a text
    QString songKey; ///< metadata key for the song of a live stream; empty: its title
    std::optional<qsizetype> viewedPlaylist; ///< the ActivePlaylist, whatever plays
    bool togglesAlways = false; ///< Play and Pause do what PlayPause does
    TrackIdKind trackId = TrackIdKind::Path;
    int integratedPid = 0; ///< process of the browser for whose tab this player speaks; 0: none
};

} // namespace tunedeck::demo
