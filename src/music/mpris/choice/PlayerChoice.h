// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/choice/PlayerPin.h"

#include <QList>
#include <QString>

#include <optional>

namespace tunedeck {

/// A player on the bus, as far as the choice of the player to follow needs to know it.
struct PlayerCandidate {
    QString name; ///< bus name without "org.mpris.MediaPlayer2."; no two candidates have the same
    QString identity; ///< the name that it gives itself (see menuText())
    std::optional<qint64> processId;
    bool isPlaying = false;
    /// Whether it began or ceased to play a moment ago. Another that shows the same may not have noticed yet.
    bool hasJustChanged = false;
    quint64 lastPlayed = 0; ///< when it began to play last: a number that grows with time; 0 for never
    /// The process of the browser whose tab it shows, as it says.
    std::optional<qint64> browserProcessId;
};

/// The user's wishes about players.
struct PlayerWishes {
    PlayerPin pinned; ///< no family if the program chooses
    QList<PlayerPin> neverFollowed;
};

/// The last command that the program has sent.
struct LastCommand {
    QString name; ///< bus name of the player that got it
    quint64 time = 0; ///< on the scale of PlayerCandidate::lastPlayed
};

/// The candidates that can be followed, in the same order. Left out are players that are never followed, playerctld,
/// and doubles: a player's second name "NAME.instance<PID>" beside "NAME" of the same process, and a browser whose tab
/// the desktop's browser integration shows. The pinned player is no double of another, and a playing one is none of a
/// paused one.
[[nodiscard]] QList<PlayerCandidate> followablePlayers(
    const QList<PlayerCandidate> &candidates, const PlayerWishes &wishes);

/// Whether the player that got `command` is among `followable`, and no other of them has begun to play since.
[[nodiscard]] bool stillCounts(const LastCommand &command, const QList<PlayerCandidate> &followable);

/// The reasons to follow a player, the strongest first.
enum class FollowReason {
    Pinned, ///< the user has chosen it
    Commanded, ///< the user has commanded it last
    Plays, ///< it plays, and is the current one or began to play last
    PlayedLast,
    FirstOnBus
};

struct PlayerDecision {
    QString name; ///< bus name of the player to follow
    FollowReason reason;
};

/// Chooses one of `followable`, which are in the order in which they came to the bus. None if there are none.
/// `commanded` is the bus name of the player whose last command still counts, `current` that of the player that is
/// followed now; each may be empty.
[[nodiscard]] std::optional<PlayerDecision> choosePlayer(const QList<PlayerCandidate> &followable,
    const PlayerPin &pinned, const QString &commanded, const QString &current);

} // namespace tunedeck
