// SPDX-License-Identifier: MIT
#include "music/mpris/PlayerRegistry.h"

#include "music/FollowablePlayers.h"
#include "music/mpris/choice/PlayerPin.h"
#include "music/mpris/choice/phoneBridge.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tunedeck {

namespace {

/// mpDris2 gives its name up and takes it again within 2 ms whenever MPD reports an error.
constexpr Milliseconds graceForNames{10};

constexpr int maximumPlayers = FollowablePlayers::maximumPlayers;
constexpr int maximumOfProcess = 4;
/// A phone bridge leaves room for other players.
constexpr int maximumOfBridge = maximumPlayers - maximumOfProcess;
constexpr int maximumPreferred = 4;

/// Reading a player takes a fraction of a millisecond. All that come at once would be felt in the window.
constexpr int maximumInOneTurn = 8;
constexpr double addedAtOnce = maximumPlayers;
constexpr double addedPerSecond = 20;
constexpr Milliseconds untilNextAddition{50};

} // namespace

PlayerRegistry::PlayerRegistry(const QDBusConnection &bus, Clock clock, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_clock(std::move(clock))
    , m_names(bus, this)
    , m_signals(bus, this)
    , m_budget(addedAtOnce)
    , m_budgetTime(m_clock())
{
    m_admission.setObjectName(QStringLiteral("admissionTimer"));
    m_admission.setSingleShot(true);
    connect(&m_admission, &QTimer::timeout, this, &PlayerRegistry::admit);
    m_removal.setObjectName(QStringLiteral("removalTimer"));
    m_removal.setSingleShot(true);
    m_removal.setInterval(graceForNames);
    connect(&m_removal, &QTimer::timeout, this, &PlayerRegistry::removeOwnerless);
    connect(&m_names, &NamesOnBus::owned, this, &PlayerRegistry::handleOwned);
    connect(&m_names, &NamesOnBus::ownerChanged, this, &PlayerRegistry::handleOwnerChanged);
    connect(&m_names, &NamesOnBus::completed, this, &PlayerRegistry::updateReady);
}

std::vector<MprisPlayer *> PlayerRegistry::players() const
{
    std::vector<MprisPlayer *> result;
    std::ranges::transform(m_players, std::back_inserter(result), &std::unique_ptr<MprisPlayer>::get);
    return result;
}

MprisPlayer *PlayerRegistry::player(const QString &name) const
{
    const auto found = std::ranges::find_if(m_players, [&](const auto &player) { return player->name() == name; });
    return found == m_players.end() ? nullptr : found->get();
}

void PlayerRegistry::prefer(const QString &family)
{
    if (m_preferred != family) {
        m_preferred = family;
        reconsiderSurplus();
    }
}

void PlayerRegistry::handleOwned(const QString &name)
{
    // A name that was lost and taken again by the same connection still has its player.
    if (!player(name)) {
        m_waiting.append(name);
        admitLater(Milliseconds(0));
    }
}

void PlayerRegistry::handleOwnerChanged(const QString &name)
{
    for (const auto &player : m_players) {
        player->setSharesConnection(m_names.ownsSeveral(player->owner()));
    }
    if (m_names.hasOwner(name)) {
        remove([&](const MprisPlayer &player) { return player.name() == name && isOwnerless(player); });
    }
    if (std::ranges::any_of(m_players, [this](const auto &player) { return isOwnerless(*player); })) {
        m_removal.start();
    } else {
        m_removal.stop();
    }
}

void PlayerRegistry::admitLater(Milliseconds delay)
{
    if (!m_admission.isActive() || delay < m_admission.remainingTimeAsDuration()) {
        m_admission.start(delay);
    }
}

void PlayerRegistry::admit()
{
    QStringList waiting = std::exchange(m_waiting, {});
    int added = 0;
    while (!waiting.isEmpty() && added < maximumInOneTurn) {
        const QString name = waiting.takeFirst();
        const std::optional<NamesOnBus::Owner> owner = m_names.owner(name);
        if (!owner || player(name)) {
            continue;
        }
        if (isTooMany(name, *owner)) {
            m_hasSurplus = true;
            continue;
        }
        if (!mayAddNow()) {
            waiting.prepend(name);
            break;
        }
        add(name, *owner);
        ++added;
    }
    m_waiting = waiting;
    if (!m_waiting.isEmpty()) {
        admitLater(added == maximumInOneTurn ? Milliseconds(0) : untilNextAddition);
    }
    updateReady();
}

bool PlayerRegistry::isTooMany(const QString &name, const NamesOnBus::Owner &owner) const
{
    if (isPreferred(name)) {
        return std::ranges::count_if(m_players, [&](const auto &player) { return isPreferred(player->name()); })
            >= maximumPreferred;
    }
    std::vector<const MprisPlayer *> ofProcess;
    for (const auto &player : m_players) {
        const bool isSame =
            player->owner() == owner.connection || (owner.processId && player->processId() == owner.processId);
        if (isSame && !isPreferred(player->name())) {
            ofProcess.push_back(player.get());
        }
    }
    return m_players.size() >= maximumPlayers || int(ofProcess.size()) >= mostOfProcess(name, ofProcess);
}

int PlayerRegistry::mostOfProcess(const QString &name, const std::vector<const MprisPlayer *> &ofProcess) const
{
    if (isOfPhoneBridge(name)) {
        return maximumOfBridge;
    }
    QStringList identities;
    std::ranges::transform(ofProcess, std::back_inserter(identities), &MprisPlayer::identity);
    return nameOneDevice(identities) ? maximumOfBridge : maximumOfProcess;
}

bool PlayerRegistry::isPreferred(const QString &name) const
{
    return !m_preferred.isEmpty() && isOfFamily(name, m_preferred);
}

bool PlayerRegistry::mayAddNow()
{
    const Instant now = m_clock();
    m_budget = std::min(addedAtOnce, m_budget + addedPerSecond * secondsBetween(std::exchange(m_budgetTime, now), now));
    if (m_budget < 1) {
        return false;
    }
    m_budget -= 1;
    return true;
}

void PlayerRegistry::add(const QString &name, const NamesOnBus::Owner &owner)
{
    const auto arrival = owner.cameLater ? MprisPlayer::Arrival::JustCame : MprisPlayer::Arrival::WasThere;
    const PlayerAddress address{.owner = owner.connection,
        .name = name,
        .processId = owner.processId,
        .sharesConnection = m_names.ownsSeveral(owner.connection)};
    auto *player =
        m_players.emplace_back(std::make_unique<MprisPlayer>(m_bus, m_signals, address, arrival, m_clock, this)).get();
    connect(player, &MprisPlayer::attached, this, [this, player] { Q_EMIT playerAttached(player); });
    connect(player, &MprisPlayer::asked, this, &PlayerRegistry::updateReady);
    connect(player, &MprisPlayer::identityChanged, this, &PlayerRegistry::reconsiderSurplus);
    connect(player, &MprisPlayer::changed, this,
        [this, player](PlayerMirror::Changes changes) { Q_EMIT playerChanged(player, changes); });
    connect(player, &MprisPlayer::respondingChanged, this, [this, player] { Q_EMIT playerRespondingChanged(player); });
}

void PlayerRegistry::reconsiderSurplus()
{
    if (std::exchange(m_hasSurplus, false)) {
        m_waiting = m_names.names();
        admitLater(untilNextAddition);
    }
}

bool PlayerRegistry::isOwnerless(const MprisPlayer &player) const
{
    return !m_names.isOwnedBy(player.name(), player.owner());
}

void PlayerRegistry::removeOwnerless()
{
    remove([this](const MprisPlayer &player) { return isOwnerless(player); });
}

void PlayerRegistry::remove(const std::function<bool(const MprisPlayer &)> &isRemoved)
{
    const auto kept = [&](const auto &player) { return !isRemoved(*player); };
    const auto gone = std::stable_partition(m_players.begin(), m_players.end(), kept);
    if (gone == m_players.end()) {
        return;
    }
    std::vector<std::unique_ptr<MprisPlayer>> removed(
        std::make_move_iterator(gone), std::make_move_iterator(m_players.end()));
    m_players.erase(gone, m_players.end());
    for (const auto &player : removed) {
        Q_EMIT playerRemoved(player.get());
    }
    reconsiderSurplus();
    updateReady();
}

void PlayerRegistry::updateReady()
{
    const bool allAsked = std::ranges::all_of(m_players, [](const auto &player) { return player->hasBeenAsked(); });
    if (m_isReady || !m_names.isComplete() || !m_waiting.isEmpty() || !allAsked) {
        return;
    }
    m_isReady = true;
    Q_EMIT ready();
}

} // namespace tunedeck
