// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QString>

namespace tunedeck {

/// A running player that can be followed. All texts are plain and of one line (see menuText()).
struct FollowablePlayer {
    QString id; ///< the value of the setting "FollowedPlayer" that pins it
    QString name; ///< its name for people, with the device that it runs on; never empty
    QString desktopEntry; ///< identifier of its desktop entry; empty if none is known
    QString title; ///< the track that it plays or has paused; empty if there is none
    bool isFollowed = false;

    bool operator==(const FollowablePlayer &) const = default;
};

/// A player that the user never wants to be followed by itself.
struct NeverFollowedPlayer {
    QString id;
    QString name; ///< its name for people (see menuText()); never empty

    bool operator==(const NeverFollowedPlayer &) const = default;
};

/// The interface through which menus and preferences list the players to follow. A player is pinned by writing its
/// identifier to the setting "FollowedPlayer"; an empty value leaves the choice to the program.
class FollowablePlayers : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// At most this many players are listed.
    static constexpr int maximumPlayers = 64;

    /// The running players in the order in which they came, without those that are never followed.
    [[nodiscard]] virtual QList<FollowablePlayer> followablePlayers() const = 0;
    /// Also those that do not run now. At most maximumPlayers.
    [[nodiscard]] virtual QList<NeverFollowedPlayer> neverFollowedPlayers() const = 0;
    /// The name of the pinned player while it does not run; empty if it runs or no player is pinned.
    [[nodiscard]] virtual QString awaitedPlayer() const = 0;

    /// Leaves the player out from now on, and unpins it. Does nothing if no running player has this identifier.
    virtual void neverFollow(const QString &id) = 0;
    /// Takes neverFollow() back.
    virtual void allowToFollow(const QString &id) = 0;

Q_SIGNALS:
    /// One of the lists or awaitedPlayer() has changed. Emitted a few times a second at most, however often the players
    /// change.
    void followablePlayersChanged();
};

} // namespace tunedeck
