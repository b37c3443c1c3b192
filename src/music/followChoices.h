// SPDX-License-Identifier: MIT
#pragma once

#include "music/FollowablePlayers.h"

#include <QList>
#include <QString>

#include <optional>

namespace tunedeck {

/// An entry of the lists from which the user chooses the player to follow.
struct FollowChoice {
    QString id; ///< the value of the setting "FollowedPlayer"
    QString text; ///< for people, see menuText()
    QString desktopEntry; ///< identifier of the player's desktop entry, for its icon; empty if none is known
    bool isChosen = false;
    bool isFollowed = false; ///< it is the player that is followed now, chosen or not

    bool operator==(const FollowChoice &) const = default;
};

/// The entries in their order: Automatic, whose id is empty, the running players with what they play, and last the
/// player with the id `pinned` if it does not run. One of them is chosen. Automatic names the player that it follows.
/// Players that would read the same are numbered.
[[nodiscard]] QList<FollowChoice> followChoices(const FollowablePlayers &players, const QString &pinned);

/// The player that is followed; none if no player runs.
[[nodiscard]] std::optional<FollowablePlayer> followedPlayer(const FollowablePlayers &players);

/// "Follow", the title of the menu that has the entries.
[[nodiscard]] QString followMenuTitle();

/// "Never Follow Strawberry", the title of the command.
[[nodiscard]] QString neverFollowText(const FollowablePlayer &player);

/// "Waiting for Strawberry" while a player is pinned that does not run, else empty.
[[nodiscard]] QString waitingText(const FollowablePlayers &players);

} // namespace tunedeck
