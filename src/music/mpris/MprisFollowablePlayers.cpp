// SPDX-License-Identifier: MIT
#include "music/mpris/MprisFollowablePlayers.h"

#include "music/menuText.h"
#include "music/mpris/FollowedPlayer.h"
#include "music/mpris/choice/NeverFollowed.h"
#include "music/mpris/choice/PlayerPin.h"
#include "platform/UserDefaults.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace tunedeck {

namespace {

/// Time between two announcements. A player may change its name a hundred times a second.
constexpr std::chrono::milliseconds announcing{300};

QString titleOf(const MprisPlayer &player)
{
    return player.mirror().status() == PlaybackStatus::Stopped ? QString() : menuText(player.mirror().track().name());
}

QList<PlayerPin> pinsOf(const QList<MprisPlayer *> &players)
{
    QList<NamedPlayer> names;
    for (const MprisPlayer *player : players) {
        names.append({player->name(), player->identity()});
    }
    return distinctPins(names);
}

} // namespace

MprisFollowablePlayers::MprisFollowablePlayers(FollowedPlayer &followed, UserDefaults &defaults, QObject *parent)
    : FollowablePlayers(parent)
    , m_followed(followed)
    , m_defaults(defaults)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(announcing);
    connect(&m_pause, &QTimer::timeout, this, &MprisFollowablePlayers::announce);
    connect(&m_followed, &FollowedPlayer::followablePlayersChanged, this, &MprisFollowablePlayers::noteChange);
    connect(&m_defaults, &UserDefaults::valueChanged, this, [this](const QString &key) {
        if (key == SettingsKey::followedPlayer || key == SettingsKey::neverFollowedPlayers) {
            noteChange();
        }
    });
}

QList<FollowablePlayer> MprisFollowablePlayers::followablePlayers() const
{
    const QList<MprisPlayer *> players = runningPlayers();
    const QList<PlayerPin> pins = pinsOf(players);
    QList<FollowablePlayer> result;
    for (qsizetype i = 0; i < players.size(); ++i) {
        const MprisPlayer &player = *players.at(i);
        // A pin is written as it was when the user made it, and others of the family may have come or gone since.
        const bool isFollowedAsPinned = &player == m_followed.player() && isPinned(player);
        result.append(
            {.id = isFollowedAsPinned ? m_defaults.stringForKey(SettingsKey::followedPlayer) : pins.at(i).id(),
                .name = player.identity(),
                .desktopEntry = player.desktopEntry(),
                .title = titleOf(player),
                .isFollowed = &player == m_followed.player()});
    }
    return result;
}

QList<NeverFollowedPlayer> MprisFollowablePlayers::neverFollowedPlayers() const
{
    return NeverFollowed(m_defaults).players();
}

QString MprisFollowablePlayers::awaitedPlayer() const
{
    return m_followed.awaitedPlayer();
}

void MprisFollowablePlayers::neverFollow(const QString &id)
{
    const QList<FollowablePlayer> listed = followablePlayers();
    const qsizetype index = std::ranges::find(listed, id, &FollowablePlayer::id) - listed.begin();
    if (index == listed.size()) {
        return;
    }
    const QList<MprisPlayer *> players = runningPlayers();
    const bool unpins = isPinned(*players.at(index));
    NeverFollowed(m_defaults).add(pinsOf(players).at(index), listed.at(index).name);
    if (unpins) {
        m_defaults.setValue(SettingsKey::followedPlayer, QString());
    }
}

void MprisFollowablePlayers::allowToFollow(const QString &id)
{
    NeverFollowed(m_defaults).remove(id);
}

QList<MprisPlayer *> MprisFollowablePlayers::runningPlayers() const
{
    QList<MprisPlayer *> players = m_followed.followablePlayers();
    players.resize(std::min(players.size(), qsizetype(maximumPlayers)));
    return players;
}

bool MprisFollowablePlayers::isPinned(const MprisPlayer &player) const
{
    const PlayerPin pinned = PlayerPin::fromId(m_defaults.stringForKey(SettingsKey::followedPlayer));
    return pinned.match(player.name(), player.identity()) != PlayerPin::Match::None;
}

void MprisFollowablePlayers::noteChange()
{
    m_hasChanged = true;
    if (!m_pause.isActive()) {
        QMetaObject::invokeMethod(this, &MprisFollowablePlayers::announce, Qt::QueuedConnection);
    }
}

void MprisFollowablePlayers::announce()
{
    if (!m_pause.isActive() && std::exchange(m_hasChanged, false)) {
        m_pause.start();
        Q_EMIT followablePlayersChanged();
    }
}

} // namespace tunedeck
