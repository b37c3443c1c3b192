// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace tunedeck {

/// A player on the bus, as far as the choice of the player to follow needs to know it.
struct PlayerCandidate {
    QString owner; ///< unique bus name
    QString name; ///< bus name without "org.mpris.MediaPlayer2."
    std::optional<qint64> processId;
    bool isPlaying = false;
    quint64 lastPlayed = 0; ///< a number that grows with time; 0 for never
    std::optional<qint64>
        browserProcessId; ///< process of the browser for which this player, an integration service, speaks
};

/// The candidates that can be followed: without proxies of other players, the second name of a process, and a browser
/// for which an integration service speaks.
[[nodiscard]] QList<PlayerCandidate> followablePlayers(const QList<PlayerCandidate> &candidates);

/// The reasons to follow a player, the strongest first.
enum class FollowReason {
    Pinned, ///< the user has chosen its family
    Plays, ///< it plays, and is the current one or began to play last
    PlayedLast,
    FirstOnBus
};

struct PlayerDecision {
    QString owner; ///< unique bus name of the player to follow
    FollowReason reason;
};

/// Chooses one of the followablePlayers() among `candidates`, which are in the order in which they came to the bus.
/// None if there are none. `pinned` is a family (see playerFamily()) or empty; `current` is the owner of the player
/// that is followed now, or empty.
[[nodiscard]] std::optional<PlayerDecision> choosePlayer(
    const QList<PlayerCandidate> &candidates, const QString &pinned, const QString &current);

} // namespace tunedeck
