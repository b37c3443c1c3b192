// SPDX-License-Identifier: MIT
#pragma once

#include "music/FollowablePlayers.h"

#include <QStringList>

namespace tunedeck {

/// A running player without a desktop entry that plays nothing.
inline FollowablePlayer playerNamed(const QString &id, const QString &name)
{
    return {.id = id, .name = name, .desktopEntry = {}, .title = {}};
}

/// The players that a test makes up. It records what it is asked for.
class ScriptedFollowablePlayers : public FollowablePlayers {
public:
    QList<FollowablePlayer> players;
    QList<NeverFollowedPlayer> neverFollowed;
    QString awaited;
    QStringList left; ///< the identifiers that neverFollow() got
    QStringList allowed; ///< the identifiers that allowToFollow() got

    [[nodiscard]] QList<FollowablePlayer> followablePlayers() const override { return players; }
    [[nodiscard]] QList<NeverFollowedPlayer> neverFollowedPlayers() const override { return neverFollowed; }
    [[nodiscard]] QString awaitedPlayer() const override { return awaited; }
    void neverFollow(const QString &id) override { left.append(id); }
    void allowToFollow(const QString &id) override { allowed.append(id); }

    void set(const QList<FollowablePlayer> &newPlayers)
    {
        players = newPlayers;
        Q_EMIT followablePlayersChanged();
    }
};

} // namespace tunedeck
