// SPDX-License-Identifier: MIT
#include "music/mpris/FollowedPlayer.h"

#include "music/mpris/bus/playersLog.h"
#include "music/mpris/choice/NeverFollowed.h"
#include "platform/UserDefaults.h"

#include <algorithm>

namespace tunedeck {

namespace {

/// The two names of a player, or a browser and what shows its tab, notice within this time of each other that they do
/// not play any more.
constexpr Milliseconds settling{500};

const char *reasonText(FollowReason reason)
{
    switch (reason) {
    case FollowReason::Pinned:
        return "because it is pinned";
    case FollowReason::Commanded:
        return "because the user has commanded it last";
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
    , m_memory(defaults, processes, this)
{
    m_settled.setObjectName(QStringLiteral("settledTimer"));
    m_settled.setSingleShot(true);
    m_settled.setInterval(settling);
    connect(&m_settled, &QTimer::timeout, this, &FollowedPlayer::reconsiderLater);
    connectRegistry();
    connect(&m_defaults, &UserDefaults::valueChanged, this, [this](const QString &key) {
        if (key == SettingsKey::followedPlayer || key == SettingsKey::neverFollowedPlayers) {
            m_registry->prefer(wishes().pinned.family);
            reconsider();
            remember();
        }
    });
}

void FollowedPlayer::setBus(const QDBusConnection &bus)
{
    follow(nullptr);
    m_histories.clear();
    m_lastCommand.reset();
    m_registry = std::make_unique<PlayerRegistry>(bus, m_clock, this);
    connectRegistry();
    Q_EMIT followablePlayersChanged();
}

void FollowedPlayer::connectRegistry()
{
    m_registry->prefer(wishes().pinned.family);
    connect(m_registry.get(), &PlayerRegistry::playerAttached, this, &FollowedPlayer::handleAttached);
    connect(m_registry.get(), &PlayerRegistry::playerChanged, this, &FollowedPlayer::handleChanged);
    connect(m_registry.get(), &PlayerRegistry::playerRemoved, this, &FollowedPlayer::handleRemoved);
    connect(m_registry.get(), &PlayerRegistry::playerRespondingChanged, this, [this](MprisPlayer *player) {
        if (player == m_player) {
            Q_EMIT respondingChanged(player->isResponding());
        }
    });
    connect(m_registry.get(), &PlayerRegistry::ready, this, [this] {
        // The window that waits for the players opens now, and must know which is followed.
        reconsider();
        Q_EMIT ready();
    });
}

QList<MprisPlayer *> FollowedPlayer::followablePlayers() const
{
    QList<MprisPlayer *> players;
    const QList<PlayerCandidate> followable = tunedeck::followablePlayers(candidates(), wishes());
    for (const PlayerCandidate &candidate : followable) {
        players.append(m_registry->player(candidate.name));
    }
    return players;
}

QString FollowedPlayer::awaitedPlayer() const
{
    const PlayerPin pinned = wishes().pinned;
    const QList<PlayerCandidate> running = candidates();
    const bool isRunning = std::ranges::any_of(running, [&](const PlayerCandidate &candidate) {
        return pinned.match(candidate.name, candidate.identity) != PlayerPin::Match::None;
    });
    return isRunning ? QString() : m_memory.pinnedPlayersName();
}

void FollowedPlayer::noteCommand()
{
    if (m_player) {
        noteCommandOf(m_player);
    }
}

void FollowedPlayer::handleAttached(MprisPlayer *player)
{
    noteStatus(player);
    connect(player, &MprisPlayer::identityChanged, this, [this, player] {
        if (player == m_player) {
            remember();
        }
        // A pin may name its player by its identity.
        reconsiderLater();
        Q_EMIT followablePlayersChanged();
    });
    connect(&player->commands(), &PlayerCommands::given, this, [this, player] { noteCommandOf(player); });
    reconsiderLater();
    Q_EMIT followablePlayersChanged();
}

void FollowedPlayer::handleChanged(MprisPlayer *player, PlayerMirror::Changes changes)
{
    if (changes.status) {
        noteStatus(player);
    }
    if (player == m_player) {
        if (changes.status) {
            remember();
        }
        Q_EMIT playerChanged(changes);
    }
    if (changes.status || changes.userInfo) {
        reconsiderLater();
        Q_EMIT followablePlayersChanged();
    }
}

void FollowedPlayer::handleRemoved(MprisPlayer *player)
{
    m_histories.remove(player);
    if (m_lastCommand && m_lastCommand->name == player->name()) {
        m_lastCommand.reset();
    }
    if (player == m_player) {
        // The next player is chosen at once, so that both changes happen in one turn.
        follow(nullptr);
        reconsider();
    }
    reconsiderLater();
    Q_EMIT followablePlayersChanged();
}

void FollowedPlayer::noteStatus(const MprisPlayer *player)
{
    History &history = m_histories[player];
    history.lastChanged = m_clock();
    if (player->mirror().status() == PlaybackStatus::Playing) {
        history.lastPlayed = ++m_time;
    }
    if (m_histories.size() > 1) {
        m_settled.start();
    }
}

void FollowedPlayer::noteCommandOf(const MprisPlayer *player)
{
    m_lastCommand = LastCommand{.name = player->name(), .time = ++m_time};
}

PlayerWishes FollowedPlayer::wishes() const
{
    return {.pinned = PlayerPin::fromId(m_defaults.stringForKey(SettingsKey::followedPlayer)),
        .neverFollowed = NeverFollowed(m_defaults).pins()};
}

QList<PlayerCandidate> FollowedPlayer::candidates() const
{
    QList<PlayerCandidate> candidates;
    for (const MprisPlayer *player : m_registry->players()) {
        if (player->isAttached()) {
            candidates.append({.name = player->name(),
                .identity = player->identity(),
                .processId = player->processId(),
                .isPlaying = player->mirror().status() == PlaybackStatus::Playing,
                .hasJustChanged = hasJustChanged(player),
                .lastPlayed = m_histories.value(player).lastPlayed,
                .browserProcessId = player->mirror().track().browserProcessId});
        }
    }
    return candidates;
}

bool FollowedPlayer::hasJustChanged(const MprisPlayer *player) const
{
    return m_settled.isActive() && m_clock() - m_histories.value(player).lastChanged < settling;
}

void FollowedPlayer::reconsiderLater()
{
    if (!std::exchange(m_reconsiders, true)) {
        QMetaObject::invokeMethod(this, &FollowedPlayer::reconsider, Qt::QueuedConnection);
    }
}

void FollowedPlayer::reconsider()
{
    m_reconsiders = false;
    const PlayerWishes wanted = wishes();
    const QList<PlayerCandidate> followable = tunedeck::followablePlayers(candidates(), wanted);
    if (m_lastCommand && !stillCounts(*m_lastCommand, followable)) {
        m_lastCommand.reset();
    }
    const std::optional<PlayerDecision> decision = choosePlayer(followable, wanted.pinned,
        m_lastCommand ? m_lastCommand->name : QString(), m_player ? m_player->name() : QString());
    MprisPlayer *player = decision ? m_registry->player(decision->name) : nullptr;
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
    }
    if (isResponding() != wasResponding) {
        Q_EMIT respondingChanged(isResponding());
    }
    Q_EMIT followablePlayersChanged();
}

void FollowedPlayer::remember()
{
    if (m_player) {
        m_memory.remember({.name = m_player->name(),
                              .identity = m_player->identity(),
                              .desktopEntry = m_player->desktopEntry(),
                              .processId = m_player->processId()},
            m_histories.value(m_player).lastPlayed > 0);
    }
}

} // namespace tunedeck
