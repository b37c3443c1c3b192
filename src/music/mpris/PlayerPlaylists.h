// SPDX-License-Identifier: MIT
#pragma once

#include "Instant.h"
#include "PlaylistDetails.h"

#include <QDBusConnection>
#include <QHash>
#include <QString>
#include <QVariantMap>

#include <mutex>
#include <optional>
#include <stop_token>

namespace tunedeck {

/// The playlists of one player, for threads that may wait for it. Any thread may call any member; to read a list and
/// the playlist that plays takes 5 s at most, to play one 3 s.
class PlayerPlaylists {
public:
    /// `owner` is the player's unique name on the bus.
    PlayerPlaylists(const QDBusConnection &bus, const QString &owner);

    /// The playlist that the player plays.
    [[nodiscard]] std::optional<PlaylistDetails> readActive() const;
    /// The ids of all playlists, in the player's order. None if the player has no playlists to tell of, or does not
    /// tell all of them in time.
    [[nodiscard]] std::optional<QVariantList> readIds();
    /// The names of the playlists that readIds() last told the ids of. None before.
    [[nodiscard]] std::optional<QVariantList> names() const;
    /// Plays a playlist that readIds() last told the id of. Whether the player answered.
    bool play(qint64 id);

    /// Whoever waits for the player is let go at once, without an answer, and nobody waits for it any more.
    void stopWaiting();

private:
    [[nodiscard]] std::optional<QList<PlaylistDetails>> readAll() const;
    [[nodiscard]] std::optional<QString> pathOf(qint64 id) const;
    bool pauseWhatPlays() const;
    /// The properties of an interface. None also where the player has no such interface.
    [[nodiscard]] std::optional<QVariantMap> properties(const QString &interface) const;
    /// What the player answers within `patience`; empty where it answers without a word.
    [[nodiscard]] std::optional<QVariantList> ask(
        const QString &interface, const QString &method, const QVariantList &arguments, Milliseconds patience) const;

    const QDBusConnection m_bus;
    const QString m_owner;
    std::stop_source m_stop;

    mutable std::mutex m_mutex;
    std::optional<QVariantList> m_names;
    QHash<qint64, QString> m_paths; ///< by id
};

} // namespace tunedeck
