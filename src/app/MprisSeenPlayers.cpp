// SPDX-License-Identifier: MIT
#include "app/MprisSeenPlayers.h"

#include "music/mpris/MprisMusicApplication.h"

namespace tunedeck {

MprisSeenPlayers::MprisSeenPlayers(const MprisMusicApplication &music, QObject *parent)
    : SeenPlayers(parent)
    , m_music(music)
{
    connect(&music, &MprisMusicApplication::followablePlayersChanged, this, &MprisSeenPlayers::seenPlayersChanged);
}

QList<SeenPlayer> MprisSeenPlayers::seenPlayers() const
{
    QList<SeenPlayer> players;
    const QList<FollowablePlayer> followable = m_music.followablePlayers();
    players.reserve(followable.size());
    for (const FollowablePlayer &player : followable) {
        players.append({player.family, player.identity});
    }
    return players;
}

} // namespace tunedeck
