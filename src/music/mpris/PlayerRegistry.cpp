// SPDX-License-Identifier: MIT
#include "music/mpris/PlayerRegistry.h"

#include "music/mpris/bus/BusCall.h"
#include "music/mpris/bus/MprisNames.h"

#include <QDBusReply>

#include <algorithm>

namespace tunedeck {

namespace {

/// mpDris2 gives its name up and takes it again within 2 ms whenever MPD reports an error.
constexpr Milliseconds graceForNames{10};

} // namespace

PlayerRegistry::PlayerRegistry(const QDBusConnection &bus, Clock clock, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_clock(std::move(clock))
{
    m_removal.setObjectName(QStringLiteral("removalTimer"));
    m_removal.setSingleShot(true);
    m_removal.setInterval(graceForNames);
    connect(&m_removal, &QTimer::timeout, this, &PlayerRegistry::removeOwnerless);
    // Watched first and listed second, so that no player that comes in between is missed.
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &name, const QString &, const QString &owner) { ownerChanged(name, owner); });
    m_watcher.setConnection(m_bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_watcher.addWatchedService(mpris::rootInterface + u'*');
    list();
}

std::vector<MprisPlayer *> PlayerRegistry::players() const
{
    std::vector<MprisPlayer *> result;
    std::ranges::transform(m_players, std::back_inserter(result), &std::unique_ptr<MprisPlayer>::get);
    return result;
}

void PlayerRegistry::list()
{
    if (!m_bus.isConnected()) {
        QMetaObject::invokeMethod(
            this, [this] { handleList({}); }, Qt::QueuedConnection);
        return;
    }
    bus::send(m_bus, bus::daemonCall(QStringLiteral("ListNames")), this,
        [this](const QDBusMessage &reply) { handleList(reply.arguments().value(0).toStringList()); });
}

void PlayerRegistry::handleList(const QStringList &names)
{
    m_isListed = true;
    for (const QString &name : names) {
        if (name.startsWith(mpris::namePrefix) && !m_owners.contains(name)) {
            findOwner(name);
        }
    }
    updateReady();
}

void PlayerRegistry::findOwner(const QString &name)
{
    ++m_ownersToFind;
    const auto handleOwner = [this, name](const QDBusReply<QString> &owner) {
        --m_ownersToFind;
        // A name that has changed hands since then has been announced.
        if (owner.isValid() && !m_owners.contains(name)) {
            add(name, owner.value(), MprisPlayer::Arrival::WasThere);
        }
        updateReady();
    };
    bus::send(m_bus, bus::daemonCall(QStringLiteral("GetNameOwner"), {name}), this, handleOwner);
}

void PlayerRegistry::ownerChanged(const QString &name, const QString &owner)
{
    if (!name.startsWith(mpris::namePrefix)) {
        return;
    }
    if (owner.isEmpty()) {
        m_owners.remove(name);
        m_removal.start();
        return;
    }
    add(name, owner, MprisPlayer::Arrival::JustCame);
    removeOwnerless();
}

void PlayerRegistry::add(const QString &name, const QString &owner, MprisPlayer::Arrival arrival)
{
    m_owners.insert(name, owner);
    if (std::ranges::any_of(m_players, [&](const auto &player) { return player->owner() == owner; })) {
        return;
    }
    const QString shortName = name.mid(mpris::namePrefix.size());
    auto *player =
        m_players.emplace_back(std::make_unique<MprisPlayer>(m_bus, owner, shortName, arrival, m_clock, this)).get();
    connect(player, &MprisPlayer::attached, this, [this, player] { Q_EMIT playerAttached(player); });
    connect(player, &MprisPlayer::asked, this, &PlayerRegistry::updateReady);
    connect(player, &MprisPlayer::changed, this,
        [this, player](PlayerMirror::Changes changes) { Q_EMIT playerChanged(player, changes); });
    connect(player, &MprisPlayer::respondingChanged, this, [this, player] { Q_EMIT playerRespondingChanged(player); });
}

void PlayerRegistry::removeOwnerless()
{
    m_removal.stop();
    const auto isOwnerless = [this](const auto &player) {
        return std::ranges::find(m_owners, player->owner()) == m_owners.end();
    };
    const auto ownerless = std::stable_partition(m_players.begin(), m_players.end(), std::not_fn(isOwnerless));
    std::vector<std::unique_ptr<MprisPlayer>> removed(
        std::make_move_iterator(ownerless), std::make_move_iterator(m_players.end()));
    m_players.erase(ownerless, m_players.end());
    for (const auto &player : removed) {
        Q_EMIT playerRemoved(player.get());
    }
    updateReady();
}

void PlayerRegistry::updateReady()
{
    const bool allAsked = std::ranges::all_of(m_players, [](const auto &player) { return player->hasBeenAsked(); });
    if (m_isReady || !m_isListed || m_ownersToFind > 0 || !allAsked) {
        return;
    }
    m_isReady = true;
    Q_EMIT ready();
}

} // namespace tunedeck
