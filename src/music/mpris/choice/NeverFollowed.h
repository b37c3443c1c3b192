// SPDX-License-Identifier: MIT
#pragma once

#include "music/FollowablePlayers.h"
#include "music/mpris/choice/PlayerPin.h"

namespace tunedeck {

class UserDefaults;

/// The players that the user never wants to be followed, kept in the settings.
class NeverFollowed {
public:
    /// `defaults` must outlive this object.
    explicit NeverFollowed(UserDefaults &defaults);

    /// At most FollowablePlayers::maximumPlayers, whatever the settings hold.
    [[nodiscard]] QList<NeverFollowedPlayer> players() const;
    [[nodiscard]] QList<PlayerPin> pins() const;
    /// Adds a player, named by its family and identity; of too many the first is dropped.
    void add(const PlayerPin &pin, const QString &name);
    void remove(const QString &id);

private:
    void store(const QList<NeverFollowedPlayer> &players);

    UserDefaults &m_defaults;
};

} // namespace tunedeck
