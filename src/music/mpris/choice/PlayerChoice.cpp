// SPDX-License-Identifier: MIT
#include "music/mpris/choice/PlayerChoice.h"

#include <algorithm>
#include <tuple>

namespace tunedeck {

namespace {

/// playerctld repeats the player that was active last under a name of its own.
constexpr QStringView proxyName = u"playerctld";
constexpr QLatin1String instanceMark(".instance");

using Match = PlayerPin::Match;

Match matchOf(const PlayerCandidate &candidate, const PlayerPin &pin)
{
    return pin.match(candidate.name, candidate.identity);
}

/// Whether VLC's way of taking two names is behind it: "vlc" and "vlc.instance1234". In a sandbox the number is that of
/// the process inside, so there the name that the player gives itself must be the same.
bool isSecondNameOf(const PlayerCandidate &candidate, const PlayerCandidate &other)
{
    const QString first = other.name + instanceMark;
    if (!candidate.processId || candidate.processId != other.processId || !candidate.name.startsWith(first)) {
        return false;
    }
    bool isNumber = false;
    const qlonglong number = candidate.name.sliced(first.size()).toLongLong(&isNumber);
    return isNumber && (number == candidate.processId || candidate.identity == other.identity);
}

/// Plasma's browser integration shows the tabs of browsers, which also show themselves. Only of it is believed which
/// browser's tab it shows: any player may name any process.
///
/// Browsers take a name of their own for each process, such as "chromium.instance1234". So nobody who calls himself the
/// browser integration can hide Strawberry or VLC by naming its process.
bool isBrowserShownBy(const PlayerCandidate &candidate, const PlayerCandidate &other)
{
    static const QString integrationName = QStringLiteral("plasma-browser-integration");
    return candidate.processId && other.browserProcessId == candidate.processId
        && isOfFamily(other.name, integrationName) && candidate.name.contains(instanceMark);
}

/// Whether `candidate` is left out because `other` shows the same.
bool yieldsTo(const PlayerCandidate &candidate, const PlayerCandidate &other, const PlayerPin &pinned)
{
    if (!isSecondNameOf(candidate, other) && !isBrowserShownBy(candidate, other)) {
        return false;
    }
    if (matchOf(candidate, pinned) > matchOf(other, pinned)) {
        return false;
    }
    // The two notice within a moment of each other that they do not play any more.
    const bool isSettled = !candidate.hasJustChanged && !other.hasJustChanged;
    return !candidate.isPlaying || other.isPlaying || !isSettled;
}

bool isExcluded(const PlayerCandidate &candidate, const PlayerWishes &wishes)
{
    return matchOf(candidate, wishes.pinned) == Match::None
        && std::ranges::any_of(
            wishes.neverFollowed, [&](const PlayerPin &never) { return matchOf(candidate, never) != Match::None; });
}

FollowReason reasonFor(const PlayerCandidate &candidate, const PlayerPin &pinned, const QString &commanded)
{
    if (matchOf(candidate, pinned) != Match::None) {
        return FollowReason::Pinned;
    }
    if (candidate.name == commanded) {
        return FollowReason::Commanded;
    }
    if (candidate.isPlaying) {
        return FollowReason::Plays;
    }
    return candidate.lastPlayed > 0 ? FollowReason::PlayedLast : FollowReason::FirstOnBus;
}

} // namespace

QList<PlayerCandidate> followablePlayers(const QList<PlayerCandidate> &candidates, const PlayerWishes &wishes)
{
    QList<PlayerCandidate> allowed;
    std::ranges::copy_if(candidates, std::back_inserter(allowed), [&](const PlayerCandidate &candidate) {
        return candidate.name != proxyName && !isExcluded(candidate, wishes);
    });
    QList<PlayerCandidate> result;
    std::ranges::copy_if(allowed, std::back_inserter(result), [&](const PlayerCandidate &candidate) {
        return std::ranges::none_of(
            allowed, [&](const PlayerCandidate &other) { return yieldsTo(candidate, other, wishes.pinned); });
    });
    return result;
}

bool stillCounts(const LastCommand &command, const QList<PlayerCandidate> &followable)
{
    const auto hasBegunSince = [&](const PlayerCandidate &candidate) {
        return candidate.name != command.name && candidate.lastPlayed > command.time;
    };
    return std::ranges::find(followable, command.name, &PlayerCandidate::name) != followable.end()
        && std::ranges::none_of(followable, hasBegunSince);
}

std::optional<PlayerDecision> choosePlayer(
    const QList<PlayerCandidate> &followable, const PlayerPin &pinned, const QString &commanded, const QString &current)
{
    if (followable.isEmpty()) {
        return std::nullopt;
    }
    const auto rank = [&](const PlayerCandidate &candidate) {
        return std::tuple(matchOf(candidate, pinned), !commanded.isEmpty() && candidate.name == commanded,
            candidate.isPlaying, candidate.isPlaying && candidate.name == current, candidate.lastPlayed);
    };
    // max_element() returns the first of several that rank alike, so the order on the bus decides last.
    const PlayerCandidate &chosen = *std::ranges::max_element(followable, std::ranges::less{}, rank);
    return PlayerDecision{chosen.name, reasonFor(chosen, pinned, commanded)};
}

} // namespace tunedeck
