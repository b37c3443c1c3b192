// SPDX-License-Identifier: MIT
#include "audio/StreamOwnership.h"

#include "audio/ProcessTable.h"

#include <QSet>
#include <QStringList>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace tunedeck {

namespace {
/// No player has its sound made by a process further below it.
constexpr int mostGenerations = 16;

/// They start everybody's programs, so what they have started says nothing about whose stream it is.
constexpr std::array commonParents{QLatin1String("bash"), QLatin1String("dash"), QLatin1String("fish"),
    QLatin1String("gnome-session-b"), QLatin1String("gnome-shell"), QLatin1String("ksmserver"),
    QLatin1String("kwin_wayland"), QLatin1String("kwin_x11"), QLatin1String("login"), QLatin1String("plasmashell"),
    QLatin1String("sh"), QLatin1String("startplasma-way"), QLatin1String("startplasma-x11"), QLatin1String("sway"),
    QLatin1String("systemd"), QLatin1String("tmux: server"), QLatin1String("xfce4-panel"),
    QLatin1String("xfce4-session"), QLatin1String("zsh")};

bool isCommonParent(const ProcessFacts &process)
{
    return std::ranges::find(commonParents, process.name) != commonParents.end();
}

/// Also where one of them is longer, as in "VLC media player (LibVLC 3.0.24)" and "vlc".
bool isSameName(const QString &name, const QString &other)
{
    constexpr qsizetype shortest = 2;
    return name.size() >= shortest && other.size() >= shortest
        && (name.contains(other, Qt::CaseInsensitive) || other.contains(name, Qt::CaseInsensitive));
}

bool haveOneName(const QList<StreamOrigin> &streams)
{
    return std::ranges::all_of(
        streams, [&](const StreamOrigin &stream) { return stream.application == streams.first().application; });
}
} // namespace

StreamOwnership::StreamOwnership(PlayerProcess player, const ProcessTable &processes)
    : m_player(std::move(player))
    , m_processes(processes)
    , m_sandbox(obstacle() == SoundObstacle::None ? processes.sandbox(m_player.id) : QString())
{
}

SoundObstacle StreamOwnership::obstacle() const
{
    if (m_player.isElsewhere) {
        return SoundObstacle::PlayerElsewhere;
    }
    return m_player.id > 0 ? SoundObstacle::None : SoundObstacle::NoPlayer;
}

StreamOwnership::Streams StreamOwnership::among(const QList<StreamOrigin> &origins)
{
    if (const SoundObstacle found = obstacle(); found != SoundObstacle::None) {
        return {.obstacle = found};
    }
    const QHash<std::uint32_t, Judged> before = std::exchange(m_judged, {});
    m_numbersInside.reset();
    QList<StreamOrigin> candidates;
    for (const StreamOrigin &origin : origins) {
        const auto known = before.constFind(origin.stream);
        const bool isKnown = known != before.cend() && known->origin == origin;
        const Judged judged{.origin = origin, .mayBelong = isKnown ? known->mayBelong : mayBelong(origin)};
        m_judged.insert(origin.stream, judged);
        if (judged.mayBelong) {
            candidates.append(origin);
        }
    }
    if (candidates.isEmpty()) {
        return {.obstacle = SoundObstacle::NoStream};
    }
    const QList<StreamOrigin> streams = withoutStrangers(candidates);
    if (isAmbiguous(streams)) {
        return {.obstacle = SoundObstacle::Ambiguous};
    }
    Streams found;
    std::ranges::transform(streams, std::back_inserter(found.indexes), &StreamOrigin::stream);
    return found;
}

bool StreamOwnership::mayBelong(const StreamOrigin &origin)
{
    if (!m_sandbox.isEmpty()) {
        return mayBelongToSandbox(origin);
    }
    const qint64 process = origin.vouchedProcess > 0 ? origin.vouchedProcess : origin.claimedProcess;
    const std::optional<ProcessFacts> facts = m_processes.facts(process);
    // A process in another PID namespace claims its number there, which is another process's here.
    if (!origin.sandbox.isEmpty() || !facts || facts->numbers.size() > 1) {
        return false;
    }
    const bool liesAboutProcess =
        !origin.binary.isEmpty() && !facts->binary.isEmpty() && origin.binary != facts->binary;
    return !liesAboutProcess && isStartedByPlayer(process);
}

bool StreamOwnership::mayBelongToSandbox(const StreamOrigin &origin)
{
    if (!origin.sandbox.isEmpty()) {
        return origin.sandbox == m_sandbox;
    }
    if (origin.vouchedProcess > 0) {
        return m_processes.sandbox(origin.vouchedProcess) == m_sandbox;
    }
    if (origin.claimedProcess > 0 && !m_numbersInside) {
        m_numbersInside = m_processes.numbersInside(m_sandbox);
    }
    return origin.claimedProcess > 0 && m_numbersInside->contains(origin.claimedProcess);
}

bool StreamOwnership::isStartedByPlayer(qint64 process) const
{
    qint64 ancestor = process;
    for (int generation = 0; generation < mostGenerations && ancestor > 1; ++generation) {
        const std::optional<ProcessFacts> facts = m_processes.facts(ancestor);
        const bool endsHere = !facts || isCommonParent(*facts);
        if (ancestor == m_player.id) {
            return generation == 0 || !endsHere;
        }
        if (endsHere) {
            return false;
        }
        ancestor = facts->parent;
    }
    return false;
}

bool StreamOwnership::hasNameOfPlayer(const StreamOrigin &origin) const
{
    return std::ranges::any_of(m_player.names,
        [&](const QString &name) { return isSameName(name, origin.application) || isSameName(name, origin.binary); });
}

QList<StreamOrigin> StreamOwnership::withoutStrangers(const QList<StreamOrigin> &candidates) const
{
    QList<StreamOrigin> named;
    std::ranges::copy_if(
        candidates, std::back_inserter(named), [this](const StreamOrigin &origin) { return hasNameOfPlayer(origin); });
    return named.isEmpty() ? candidates : named;
}

bool StreamOwnership::isAmbiguous(const QList<StreamOrigin> &streams) const
{
    if (m_sandbox.isEmpty()) {
        return !haveOneName(streams) && !hasNameOfPlayer(streams.first());
    }
    // Two instances of a Flatpak have the same identifier, and often the same numbers inside.
    return std::ranges::any_of(
        streams, [&](const StreamOrigin &stream) { return stream.client != streams.first().client; });
}

} // namespace tunedeck
