// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/PlayerRegistry.h"
#include "music/mpris/choice/PlayerChoice.h"
#include "platform/LaunchEntry.h"

#include <QDBusConnection>
#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace tunedeck {

class UserDefaults;

/// Follows one of the players on the bus, chosen by choosePlayer(), and stores in the settings how to launch it again.
class FollowedPlayer : public QObject {
    Q_OBJECT

public:
    /// `defaults` must outlive this object. `processes` is the folder with a folder for each process.
    FollowedPlayer(const QDBusConnection &bus, UserDefaults &defaults, Clock clock, QObject *parent = nullptr,
        const QString &processes = QStringLiteral("/proc"));

    /// Leaves the player, then looks for players on `bus`; for none if `bus` is not connected.
    void setBus(const QDBusConnection &bus);

    /// Null while no player is followed.
    [[nodiscard]] MprisPlayer *player() const { return m_player; }
    /// True also while no player is followed.
    [[nodiscard]] bool isResponding() const { return !m_player || m_player->isResponding(); }
    /// Whether the players that were on the bus at the start have been found.
    [[nodiscard]] bool isReady() const { return m_registry->isReady(); }
    /// The players to choose from, in the order in which they came.
    [[nodiscard]] QList<MprisPlayer *> followablePlayers() const;
    /// The name of the pinned player while it does not run; empty if it runs or no player is pinned.
    [[nodiscard]] QString awaitedPlayer() const;
    /// The desktop entries to try when the user opens Music: the pinned player's, then that of the player followed
    /// last.
    [[nodiscard]] QStringList entriesToLaunch() const;

Q_SIGNALS:
    void ready();
    /// player() is null now; `former` still exists.
    void left(tunedeck::MprisPlayer *former);
    /// `player` is player() now. A change of player emits left() first, in the same turn of the event loop.
    void followed(tunedeck::MprisPlayer *player);
    /// The followed player has changed.
    void playerChanged(tunedeck::PlayerMirror::Changes changes);
    void respondingChanged(bool responding);
    /// A player has come or gone, or its name, state or track has changed. Emitted as often as that happens.
    void followablePlayersChanged();

private:
    void connectRegistry();
    void handleAttached(MprisPlayer *player);
    void handleChanged(MprisPlayer *player, PlayerMirror::Changes changes);
    void handleRemoved(MprisPlayer *player);

    [[nodiscard]] QList<PlayerCandidate> candidates() const;
    void reconsider();
    void follow(MprisPlayer *player);
    /// Stores what to open once the followed player does not run any more.
    void remember();
    void store(const QString &key, const QString &text);
    /// The desktop entry that the pinned player had when it was followed; empty if none is known.
    [[nodiscard]] QString pinnedPlayersEntry() const;
    /// Null if no player has this owner.
    [[nodiscard]] MprisPlayer *playerOf(const QString &owner) const;

    UserDefaults &m_defaults;
    Clock m_clock;
    std::unique_ptr<PlayerRegistry> m_registry;
    MprisPlayer *m_player = nullptr;
    LaunchEntry m_launchEntry; ///< of the followed player
    QHash<QString, quint64> m_lastPlayed; ///< by owner: a number that grows with time
    quint64 m_plays = 0;
};

} // namespace tunedeck
