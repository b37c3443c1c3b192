// SPDX-License-Identifier: MIT
#include "audio/FollowedStreams.h"

#include "audio/audioLog.h"
#include "audio/streamVolume.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tunedeck {

FollowedStreams::FollowedStreams(pa_mainloop_api &api, Publish publish)
    : m_publish(std::move(publish))
    , m_settleTimer(api, [this] { settle(); })
    , m_watch(api, [this] { handleResponding(); })
    , m_listing(api, m_watch, [this] { handleListed(); })
    , m_commands(m_watch, [this] { handleCommandsAnswered(); })
    , m_connection(api,
          {.stateChanged = [this](ServerConnection::State state) { handleConnection(state); },
              .changed = [this](bool isOutput) { refresh(isOutput); }})
{
}

void FollowedStreams::follow(const std::optional<PlayerProcess> &player)
{
    m_published.reset();
    m_heldVolume.reset();
    m_ownership.reset();
    if (player) {
        m_ownership.emplace(*player, m_processes);
    }
    if (m_ownership && m_ownership->obstacle() == SoundObstacle::None) {
        m_connection.open();
    } else {
        m_connection.close();
    }
    update();
}

void FollowedStreams::setVolume(int volume)
{
    if (m_published && m_published->volume) {
        m_heldVolume = volume;
        m_heldRound.reset();
        m_commands.setVolume(volume);
        update();
    }
}

void FollowedStreams::setMuted(bool isMuted)
{
    m_commands.setMuted(isMuted);
}

void FollowedStreams::moveTo(const QByteArray &output)
{
    m_commands.moveTo(output.isEmpty() ? QByteArrayLiteral("@DEFAULT_SINK@") : output);
}

void FollowedStreams::handleConnection(ServerConnection::State state)
{
    m_watch.reset();
    m_isWithoutServer =
        state == ServerConnection::State::Failed || (m_isWithoutServer && state != ServerConnection::State::Closed);
    if (state == ServerConnection::State::Connecting) {
        m_watch.asked();
    }
    m_heldVolume.reset();
    m_settled.clear();
    m_settleTimer.stop();
    m_commands.setContext(m_connection.context());
    m_listing.setContext(m_connection.context());
    update();
}

void FollowedStreams::refresh(bool isOutput)
{
    if (isOutput) {
        m_listing.refreshOutputs();
    } else {
        m_listing.refreshStreams();
    }
}

void FollowedStreams::handleResponding()
{
    if (m_watch.isResponding()) {
        m_listing.refreshOutputs();
        m_listing.refreshStreams();
    } else {
        m_heldVolume.reset();
        m_commands.forgetWanted();
    }
    update();
}

void FollowedStreams::handleListed()
{
    m_isWithoutServer = false;
    if (m_heldRound && m_listing.round() > *m_heldRound) {
        m_heldVolume.reset();
        m_heldRound.reset();
    }
    m_settled.report(m_listing.streams(), std::chrono::steady_clock::now());
    settle();
}

void FollowedStreams::handleCommandsAnswered()
{
    if (m_heldVolume) {
        m_heldRound = m_listing.round();
    }
    m_listing.refreshStreams();
    update();
}

void FollowedStreams::settle()
{
    m_settled.settle(std::chrono::steady_clock::now());
    if (const std::optional<SettledStreams::Instant> next = m_settled.settlesAt()) {
        // A timer that is early by less than its unit would find nothing to do.
        m_settleTimer.start(std::chrono::ceil<std::chrono::milliseconds>(*next - std::chrono::steady_clock::now()));
    } else {
        m_settleTimer.stop();
    }
    update();
}

void FollowedStreams::update()
{
    if (const SoundObstacle found = obstacle(); found != SoundObstacle::None) {
        m_commands.setStreams({});
        publish({.obstacle = found});
        return;
    }
    QList<StreamOrigin> origins;
    const QList<SoundStream> settled = m_settled.streams();
    std::ranges::transform(settled, std::back_inserter(origins), &SoundStream::origin);
    const StreamOwnership::Streams owned = m_ownership->among(origins);
    const QList<SoundStream> streams = streamsOfPlayer(owned.indexes);
    m_commands.setStreams(streams);
    publish(owned.obstacle == SoundObstacle::None ? stateOf(streams) : PlayerSoundState{.obstacle = owned.obstacle});
}

SoundObstacle FollowedStreams::obstacle() const
{
    if (!m_ownership) {
        return SoundObstacle::NoPlayer;
    }
    switch (m_connection.state()) {
    case ServerConnection::State::Closed:
        return m_ownership->obstacle();
    case ServerConnection::State::Failed:
        return SoundObstacle::NoServer;
    case ServerConnection::State::Connecting:
    case ServerConnection::State::Ready:
        break;
    }
    if (!m_watch.isResponding()) {
        return SoundObstacle::NotResponding;
    }
    if (m_listing.hasListed()) {
        return SoundObstacle::None;
    }
    return m_isWithoutServer ? SoundObstacle::NoServer : SoundObstacle::NotAsked;
}

QList<SoundStream> FollowedStreams::streamsOfPlayer(const QList<std::uint32_t> &indexes) const
{
    QList<SoundStream> streams = m_settled.streams();
    streams.removeIf(
        [&](const SoundStream &stream) { return !std::ranges::binary_search(indexes, stream.origin.stream); });
    // A browser keeps the streams of pages that are silent now.
    if (!std::ranges::all_of(streams, &SoundStream::isCorked)) {
        streams.removeIf([](const SoundStream &stream) { return stream.isCorked; });
    }
    return streams;
}

PlayerSoundState FollowedStreams::stateOf(const QList<SoundStream> &streams) const
{
    PlayerSoundState state{.obstacle = SoundObstacle::None,
        .isMuted = std::ranges::all_of(streams, &SoundStream::isMuted),
        .canMove = !m_commands.hasImmovable()};
    for (const SoundStream &stream : streams) {
        if (stream.canSetVolume) {
            state.volume = std::max(state.volume.value_or(0), percentOf(stream.volume));
        }
    }
    if (state.volume) {
        state.volume = m_heldVolume.value_or(*state.volume);
    }
    addOutputs(state, streams);
    return state;
}

void FollowedStreams::addOutputs(PlayerSoundState &state, const QList<SoundStream> &streams) const
{
    for (const SoundStream &stream : streams) {
        const auto output = m_listing.outputs().constFind(stream.output);
        if (output != m_listing.outputs().cend() && !state.currentOutputs.contains(output->id)) {
            state.currentOutputs.append(output->id);
            state.outputs.append(*output);
        }
    }
    QList<std::uint32_t> indexes = m_listing.outputs().keys();
    std::ranges::sort(indexes);
    for (const std::uint32_t index : std::as_const(indexes)) {
        const SoundOutput output = m_listing.outputs().value(index);
        if (state.outputs.size() < PlayerSound::maximumOutputs && !state.currentOutputs.contains(output.id)) {
            state.outputs.append(output);
        }
    }
    std::ranges::sort(state.outputs, [](const SoundOutput &output, const SoundOutput &other) {
        return std::pair(output.name, output.id) < std::pair(other.name, other.id);
    });
}

void FollowedStreams::publish(const PlayerSoundState &state)
{
    if (m_published != state) {
        if (!m_published || m_published->obstacle != state.obstacle) {
            qCDebug(audioLog) << "obstacle to the player's sound:" << int(state.obstacle);
        }
        m_published = state;
        m_publish(state);
    }
}

} // namespace tunedeck
