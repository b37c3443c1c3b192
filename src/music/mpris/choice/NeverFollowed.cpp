// SPDX-License-Identifier: MIT
#include "music/mpris/choice/NeverFollowed.h"

#include "music/menuText.h"
#include "platform/UserDefaults.h"

#include <QStringList>

namespace tunedeck {

NeverFollowed::NeverFollowed(UserDefaults &defaults)
    : m_defaults(defaults)
{
}

QList<NeverFollowedPlayer> NeverFollowed::players() const
{
    const QStringList stored = m_defaults.stringListForKey(SettingsKey::neverFollowedPlayers);
    QList<NeverFollowedPlayer> players;
    for (qsizetype i = 0; i + 1 < stored.size() && players.size() < FollowablePlayers::maximumPlayers; i += 2) {
        const QString &id = stored.at(i);
        const QString name = menuText(stored.at(i + 1));
        if (!PlayerPin::fromId(id).family.isEmpty()) {
            players.append({id, name.isEmpty() ? menuText(id) : name});
        }
    }
    return players;
}

QList<PlayerPin> NeverFollowed::pins() const
{
    QList<PlayerPin> pins;
    const QList<NeverFollowedPlayer> all = players();
    for (const NeverFollowedPlayer &player : all) {
        pins.append(PlayerPin::fromId(player.id));
    }
    return pins;
}

void NeverFollowed::add(const PlayerPin &pin, const QString &name)
{
    // Its bus name may be another's tomorrow.
    const QString id = PlayerPin{.family = pin.family, .identity = pin.identity, .name = {}}.id();
    QList<NeverFollowedPlayer> all = players();
    all.removeIf([&](const NeverFollowedPlayer &player) { return player.id == id; });
    if (all.size() == FollowablePlayers::maximumPlayers) {
        all.removeFirst();
    }
    all.append({id, name});
    store(all);
}

void NeverFollowed::remove(const QString &id)
{
    QList<NeverFollowedPlayer> all = players();
    if (all.removeIf([&](const NeverFollowedPlayer &player) { return player.id == id; }) > 0) {
        store(all);
    }
}

void NeverFollowed::store(const QList<NeverFollowedPlayer> &players)
{
    QStringList texts;
    for (const NeverFollowedPlayer &player : players) {
        texts << player.id << player.name;
    }
    m_defaults.setValue(SettingsKey::neverFollowedPlayers, texts);
}

} // namespace tunedeck
