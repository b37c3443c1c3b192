// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicTypes.h"
#include "music/mpris/PlaylistDetails.h"
#include "music/mpris/bus/BusCall.h"
#include "music/mpris/report/PlayerReport.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QList>
#include <QString>
#include <QVariantMap>

#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>

class QDeadlineTimer;

namespace tunedeck {

class PlayingPlaylist;

/// The playlists of a player, for threads that may wait for it: its own, or the playlist files in the user's music
/// folder if the player has none of its own but opens such files. Any thread may call any member. Reading the list and
/// the playlist that plays takes 5 s at most, playing one 4.5 s.
class PlayerPlaylists {
public:
    /// `destination` is the name on the bus that calls to the player go to (see MprisPlayer::destination()).
    PlayerPlaylists(const QDBusConnection &bus, const QString &destination, std::shared_ptr<PlayingPlaylist> playing);
    /// Sends further calls to this name.
    void setDestination(const QString &destination);

    /// The playlist that the player plays.
    [[nodiscard]] std::optional<PlaylistDetails> readActive() const;
    /// The ids of all playlists, in the player's order. None if the player does not send all of them in time.
    [[nodiscard]] std::optional<QVariantList> readIds();
    /// The names of the playlists that readIds() last returned. None before.
    [[nodiscard]] std::optional<QVariantList> names() const;
    /// The source of the playlists that readIds() last returned.
    [[nodiscard]] PlaylistSource source() const;
    /// Whether there are more playlists than readIds() last returned.
    [[nodiscard]] bool hasMore() const;
    /// Plays a playlist that readIds() last returned. Returns whether the player answered.
    bool play(qint64 id);

    /// Lets every waiting thread go at once, without an answer. No later call waits.
    void stopWaiting();

private:
    struct Place {
        PlaylistSource source;
        PlaylistDetails playlist;
    };
    struct Offer {
        PlaylistSource source = PlaylistSource::unknown;
        QList<PlaylistDetails> playlists = {};
        bool hasMore = false;
    };

    [[nodiscard]] std::optional<Offer> readOffer() const;
    /// All playlists of a player whose Playlists interface has these `properties`.
    [[nodiscard]] std::optional<QList<PlaylistDetails>> readPages(
        const QVariantMap &properties, const QDeadlineTimer &deadline) const;
    [[nodiscard]] std::optional<Place> placeOf(qint64 id) const;
    bool pauseWhatPlays() const;
    bool activate(const PlaylistDetails &playlist) const;
    /// Watches whether ActivePlaylist becomes `activated`, unless it is known what it means.
    void learnWhetherActiveFollows(const PlaylistDetails &activated) const;
    [[nodiscard]] std::optional<PlaylistDetails> readActiveProperty(Milliseconds patience) const;
    [[nodiscard]] std::optional<PlaybackStatus> readStatus() const;
    bool open(const QString &file) const;
    /// The plain properties of an interface, empty if the player has no such interface. None if it does not answer.
    [[nodiscard]] std::optional<QVariantMap> properties(
        const QString &interface, Milliseconds patience = bus::deadline) const;
    [[nodiscard]] QString destination() const;
    /// The player's reply, which may be an error; an invalid message if it does not answer within `patience`.
    [[nodiscard]] std::optional<bus::Answer> ask(
        const QString &interface, const QString &method, const QVariantList &arguments, Milliseconds patience) const;
    void wait(Milliseconds time) const;

    const QDBusConnection m_bus;
    const std::shared_ptr<PlayingPlaylist> m_playing;
    std::stop_source m_stop;

    mutable std::mutex m_mutex;
    QString m_destination;
    PlaylistSource m_source = PlaylistSource::unknown;
    bool m_hasMore = false;
    std::optional<QVariantList> m_names;
    QHash<qint64, PlaylistDetails> m_playlists; ///< by id
};

} // namespace tunedeck
