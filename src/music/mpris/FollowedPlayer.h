// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/PlayerRegistry.h"
#include "music/mpris/choice/PlayerChoice.h"
#include "music/mpris/choice/PlayerMemory.h"

#include <QDBusConnection>
#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <memory>
#include <optional>

namespace tunedeck {

class UserDefaults;

/// Follows one of the players on the bus, chosen by choosePlayer(). Where players change, the choice is made at the end
/// of the turn of the event loop, so that a command and all that it changes belong to the player that was followed when
/// it was called. It is made at once where the user pins a player, and where the followed one leaves.
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
    /// The players to choose from, in the order in which they came to the bus.
    [[nodiscard]] QList<MprisPlayer *> followablePlayers() const;
    /// The name of the pinned player while it does not run; empty if it runs or no player is pinned.
    [[nodiscard]] QString awaitedPlayer() const;
    /// The desktop entries to try when the user opens Music: the pinned player's, then that of the player followed
    /// last.
    [[nodiscard]] QStringList entriesToLaunch() const { return m_memory.entriesToLaunch(); }

    /// Call this when the followed player has got a command by another way than its commands().
    void noteCommand();

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

    void noteStatus(const MprisPlayer *player);
    void noteCommandOf(const MprisPlayer *player);

    [[nodiscard]] PlayerWishes wishes() const;
    [[nodiscard]] QList<PlayerCandidate> candidates() const;
    [[nodiscard]] bool hasJustChanged(const MprisPlayer *player) const;
    void reconsiderLater();
    void reconsider();
    void follow(MprisPlayer *player);
    /// Remembers the followed player.
    void remember();

    /// The program's own memory of a player, beside its mirror.
    struct History {
        quint64 lastPlayed = 0; ///< see PlayerCandidate::lastPlayed
        Instant lastChanged; ///< when it began or ceased to play
    };

    UserDefaults &m_defaults;
    Clock m_clock;
    std::unique_ptr<PlayerRegistry> m_registry;
    MprisPlayer *m_player = nullptr;
    PlayerMemory m_memory;
    QHash<const MprisPlayer *, History> m_histories;
    quint64 m_time = 0; ///< counts what begins to play and what is commanded
    std::optional<LastCommand> m_lastCommand;
    bool m_reconsiders = false;
    QTimer m_settled{this}; ///< runs while a player has just changed
};

} // namespace tunedeck
