// SPDX-License-Identifier: MIT
#include "music/mpris/choice/PlayerChoice.h"

#include "music/mpris/choice/PlayerPin.h"

#include <algorithm>

namespace tunedeck {

namespace {

/// playerctld repeats the player that was active last under a name of its own.
constexpr QStringView proxyName = u"playerctld";
constexpr QLatin1String instanceMark(".instance");

/// Whether `candidate` is the name to drop of two that one process owns: "vlc.instance1234" beside "vlc", otherwise the
/// later one.
bool isSecondName(const PlayerCandidate &candidate, const QList<PlayerCandidate> &candidates)
{
    if (!candidate.processId) {
        return false;
    }
    bool isAfterCandidate = false;
    for (const PlayerCandidate &other : candidates) {
        if (other.owner == candidate.owner) {
            isAfterCandidate = true;
            continue;
        }
        if (other.processId != candidate.processId) {
            continue;
        }
        if (candidate.name.startsWith(other.name + instanceMark)) {
            return true;
        }
        if (!isAfterCandidate && !other.name.startsWith(candidate.name + instanceMark)) {
            return true;
        }
    }
    return false;
}

/// Whether another candidate, an integration service, speaks for this browser.
bool isSpokenFor(const PlayerCandidate &candidate, const QList<PlayerCandidate> &candidates)
{
    return candidate.processId && std::ranges::any_of(candidates, [&](const PlayerCandidate &other) {
        return other.owner != candidate.owner && other.browserProcessId == candidate.processId;
    });
}

bool isPinned(const PlayerCandidate &candidate, const QString &pinned)
{
    return !pinned.isEmpty() && playerFamily(candidate.name) == pinned;
}

FollowReason reasonFor(const PlayerCandidate &candidate, const QString &pinned)
{
    if (isPinned(candidate, pinned)) {
        return FollowReason::Pinned;
    }
    if (candidate.isPlaying) {
        return FollowReason::Plays;
    }
    return candidate.lastPlayed > 0 ? FollowReason::PlayedLast : FollowReason::FirstOnBus;
}

} // namespace

QList<PlayerCandidate> followablePlayers(const QList<PlayerCandidate> &candidates)
{
    QList<PlayerCandidate> result;
    std::ranges::copy_if(candidates, std::back_inserter(result), [&](const PlayerCandidate &candidate) {
        return candidate.name != proxyName && !isSecondName(candidate, candidates)
            && !isSpokenFor(candidate, candidates);
    });
    return result;
}

std::optional<PlayerDecision> choosePlayer(
    const QList<PlayerCandidate> &candidates, const QString &pinned, const QString &current)
{
    const QList<PlayerCandidate> eligible = followablePlayers(candidates);
    if (eligible.isEmpty()) {
        return std::nullopt;
    }
    const auto rank = [&](const PlayerCandidate &candidate) {
        return std::tuple(isPinned(candidate, pinned), candidate.isPlaying,
            candidate.isPlaying && candidate.owner == current, candidate.lastPlayed);
    };
    // max_element() returns the first of several that rank alike, so the order on the bus decides last.
    const PlayerCandidate &chosen = *std::ranges::max_element(eligible, std::ranges::less{}, rank);
    return PlayerDecision{chosen.owner, reasonFor(chosen, pinned)};
}

} // namespace tunedeck
