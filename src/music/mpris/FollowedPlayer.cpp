// SPDX-License-Identifier: MIT
#include "music/mpris/FollowedPlayer.h"

#include "music/menuText.h"
#include "music/mpris/bus/playersLog.h"
#include "music/mpris/choice/NeverFollowed.h"
#include "music/mpris/choice/PlayerPin.h"
#include "platform/UserDefaults.h"

#include <algorithm>

namespace tunedeck {

namespace {

constexpr QChar nameMark = u'\n'; // no name contains it

const char *reasonText(FollowReason reason)
{
    switch (reason) {
    case FollowReason::Pinned:
        return "because it is pinned";
    case FollowReason::Plays:
        return "because it plays";
    case FollowReason::PlayedLast:
        return "because it played last";
    case FollowReason::FirstOnBus:
        return "because it was the first on the bus";
    }
    return "";
}

} // namespace

FollowedPlayer::FollowedPlayer(
    const QDBusConnection &bus, UserDefaults &defaults, Clock clock, QObject *parent, const QString &processes)
    : QObject(parent)
    , m_defaults(defaults)
    , m_clock(std::move(clock))
    , m_registry(std::make_unique<PlayerRegistry>(bus, m_clock, this))
    , m_launchEntry(processes)
{
    connect(&m_launchEntry, &LaunchEntry::finished, this, &FollowedPlayer::remember);
    connectRegistry();
    connect(&m_defaults, &UserDefaults::valueChanged, this, [this](const QString &key) {
        if (key == SettingsKey::followedPlayer || key == SettingsKey::neverFollowedPlayers) {
            reconsider();
            remember();
        }
    });
}

void FollowedPlayer::setBus(const QDBusConnection &bus)
{
    follow(nullptr);
    m_lastPlayed.clear();
    m_registry = std::make_unique<PlayerRegistry>(bus, m_clock, this);
    connectRegistry();
    Q_EMIT followablePlayersChanged();
}

void FollowedPlayer::connectRegistry()
{
    connect(m_registry.get(), &PlayerRegistry::playerAttached, this, &FollowedPlayer::handleAttached);
    connect(m_registry.get(), &PlayerRegistry::playerChanged, this, &FollowedPlayer::handleChanged);
    connect(m_registry.get(), &PlayerRegistry::playerRemoved, this, &FollowedPlayer::handleRemoved);
    connect(m_registry.get(), &PlayerRegistry::playerRespondingChanged, this, [this](MprisPlayer *player) {
        if (player == m_player) {
            Q_EMIT respondingChanged(player->isResponding());
        }
    });
    connect(m_registry.get(), &PlayerRegistry::ready, this, &FollowedPlayer::ready);
}

QList<MprisPlayer *> FollowedPlayer::followablePlayers() const
{
    QList<MprisPlayer *> players;
    for (const PlayerCandidate &candidate : tunedeck::followablePlayers(candidates())) {
        players.append(playerOf(candidate.owner));
    }
    return players;
}

QString FollowedPlayer::awaitedPlayer() const
{
    const QString id = m_defaults.stringForKey(SettingsKey::followedPlayer);
    const PlayerPin pin = PlayerPin::fromId(id);
    const auto isPinned = [&pin](const MprisPlayer *player) {
        return player->isAttached() && pin.match(player->name(), player->identity()) != PlayerPin::Match::None;
    };
    if (pin.family.isEmpty() || std::ranges::any_of(m_registry->players(), isPinned)) {
        return {};
    }
    const QString known = m_defaults.stringForKey(SettingsKey::followedPlayerName);
    const QString name = known.section(nameMark, 0, 0) == id ? known.section(nameMark, 1) : pin.identity;
    return menuText(name.isEmpty() ? pin.family : name);
}

QStringList FollowedPlayer::entriesToLaunch() const
{
    QStringList entries{pinnedPlayersEntry(), m_defaults.stringForKey(SettingsKey::followedPlayer),
        m_defaults.stringForKey(SettingsKey::lastFollowedPlayer)};
    entries.removeAll(QString());
    return entries;
}

void FollowedPlayer::handleAttached(MprisPlayer *player)
{
    if (player->mirror().status() == PlaybackStatus::Playing) {
        m_lastPlayed[player->owner()] = ++m_plays;
    }
    connect(player, &MprisPlayer::identityChanged, this, &FollowedPlayer::remember);
    connect(player, &MprisPlayer::identityChanged, this, &FollowedPlayer::followablePlayersChanged);
    reconsider();
    Q_EMIT followablePlayersChanged();
}

void FollowedPlayer::handleChanged(MprisPlayer *player, PlayerMirror::Changes changes)
{
    if (changes.status && player->mirror().status() == PlaybackStatus::Playing) {
        m_lastPlayed[player->owner()] = ++m_plays;
    }
    if (player == m_player) {
        Q_EMIT playerChanged(changes);
    }
    if (changes.status || changes.userInfo) {
        reconsider();
        Q_EMIT followablePlayersChanged();
    }
}

void FollowedPlayer::handleRemoved(MprisPlayer *player)
{
    m_lastPlayed.remove(player->owner());
    if (player == m_player) {
        // The next player is chosen at once, so that both changes happen in one turn.
        follow(nullptr);
    }
    reconsider();
    Q_EMIT followablePlayersChanged();
}

QList<PlayerCandidate> FollowedPlayer::candidates() const
{
    const PlayerPin pinned = PlayerPin::fromId(m_defaults.stringForKey(SettingsKey::followedPlayer));
    const QList<PlayerPin> never = NeverFollowed(m_defaults).pins();
    const auto fits = [](const MprisPlayer *player) {
        return [player](const PlayerPin &pin) {
            return pin.match(player->name(), player->identity()) != PlayerPin::Match::None;
        };
    };
    QList<PlayerCandidate> candidates;
    for (const MprisPlayer *player : m_registry->players()) {
        const auto fitsPlayer = fits(player);
        if (!player->isAttached() || (!fitsPlayer(pinned) && std::ranges::any_of(never, fitsPlayer))) {
            continue;
        }
        candidates.append({.owner = player->owner(),
            .name = player->name(),
            .processId = player->processId(),
            .isPlaying = player->mirror().status() == PlaybackStatus::Playing,
            .lastPlayed = m_lastPlayed.value(player->owner()),
            .browserProcessId = player->mirror().track().browserProcessId});
    }
    return candidates;
}

void FollowedPlayer::reconsider()
{
    const std::optional<PlayerDecision> decision = choosePlayer(
        candidates(), m_defaults.stringForKey(SettingsKey::followedPlayer), m_player ? m_player->owner() : QString());
    MprisPlayer *player = decision ? playerOf(decision->owner) : nullptr;
    if (player && player != m_player) {
        qCDebug(playersLog).noquote() << "Following" << loggable(player->name()) << reasonText(decision->reason);
    }
    follow(player);
}

void FollowedPlayer::follow(MprisPlayer *player)
{
    if (player == m_player) {
        return;
    }
    const bool wasResponding = isResponding();
    if (MprisPlayer *former = std::exchange(m_player, nullptr)) {
        Q_EMIT left(former);
    }
    if (player) {
        m_player = player;
        remember();
        Q_EMIT followed(player);
        Q_EMIT followablePlayersChanged();
    }
    if (isResponding() != wasResponding) {
        Q_EMIT respondingChanged(isResponding());
    }
}

void FollowedPlayer::remember()
{
    if (!m_player) {
        return;
    }
    const QString family = playerFamily(m_player->name());
    const QString pinned = m_defaults.stringForKey(SettingsKey::followedPlayer);
    if (PlayerPin::fromId(pinned).match(m_player->name(), m_player->identity()) != PlayerPin::Match::None) {
        store(SettingsKey::followedPlayerName, pinned + nameMark + m_player->identity());
    }
    const QString named = m_player->desktopEntry();
    m_launchEntry.find(m_player->processId(), named.isEmpty() ? family : named);
    const QString &entry = m_launchEntry.entry();
    if (entry.isEmpty()) {
        return;
    }
    store(SettingsKey::lastFollowedPlayer, entry);
    const bool isMoreThanTheFamily = !named.isEmpty() || entry != family;
    if (family == pinned && isMoreThanTheFamily) {
        store(SettingsKey::followedPlayerEntry, family + u'/' + entry);
    }
}

void FollowedPlayer::store(const QString &key, const QString &text)
{
    if (m_defaults.stringForKey(key) != text) {
        m_defaults.setValue(key, text);
    }
}

QString FollowedPlayer::pinnedPlayersEntry() const
{
    const QString known = m_defaults.stringForKey(SettingsKey::followedPlayerEntry);
    const QString pinned = m_defaults.stringForKey(SettingsKey::followedPlayer);
    return known.section(u'/', 0, 0) == pinned ? known.section(u'/', 1) : QString();
}

MprisPlayer *FollowedPlayer::playerOf(const QString &owner) const
{
    const std::vector<MprisPlayer *> players = m_registry->players();
    const auto found = std::ranges::find(players, owner, &MprisPlayer::owner);
    return found == players.end() ? nullptr : *found;
}

} // namespace tunedeck
