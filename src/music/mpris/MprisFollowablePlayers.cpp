// SPDX-License-Identifier: MIT
#include "music/mpris/MprisFollowablePlayers.h"

#include "music/menuText.h"
#include "music/mpris/FollowedPlayer.h"
#include "music/mpris/choice/NeverFollowed.h"
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
    QList<MprisPlayer *> players = m_followed.followablePlayers();
    players.resize(std::min(players.size(), qsizetype(maximumPlayers)));
    QList<NamedPlayer> names;
    for (const MprisPlayer *player : std::as_const(players)) {
        names.append({player->name(), player->identity()});
    }
    const QList<PlayerPin> pins = distinctPins(names);
    QList<FollowablePlayer> result;
    for (qsizetype i = 0; i < players.size(); ++i) {
        const MprisPlayer &player = *players.at(i);
        result.append({.id = pins.at(i).id(),
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
    const QList<FollowablePlayer> players = followablePlayers();
    const auto player = std::ranges::find(players, id, &FollowablePlayer::id);
    if (player == players.end()) {
        return;
    }
    NeverFollowed(m_defaults).add(PlayerPin::fromId(id), player->name);
    if (m_defaults.stringForKey(SettingsKey::followedPlayer) == id) {
        m_defaults.setValue(SettingsKey::followedPlayer, QString());
    }
}

void MprisFollowablePlayers::allowToFollow(const QString &id)
{
    NeverFollowed(m_defaults).remove(id);
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
