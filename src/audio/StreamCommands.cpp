// SPDX-License-Identifier: MIT
#include "audio/StreamCommands.h"

#include "audio/AnswerWatch.h"
#include "audio/audioLog.h"
#include "audio/streamVolume.h"

#include <pulse/error.h>
#include <pulse/introspect.h>
#include <pulse/operation.h>

#include <algorithm>
#include <utility>

namespace tunedeck {

StreamCommands::StreamCommands(AnswerWatch &watch, std::function<void()> answered)
    : m_watch(watch)
    , m_answered(std::move(answered))
{
}

void StreamCommands::setContext(pa_context *context)
{
    m_context = context;
    m_streams.clear();
    m_immovable.clear();
    m_unansweredMoves.clear();
    m_unansweredMutes = 0;
    m_wantedVolume.forget();
    if (std::exchange(m_unansweredVolumes, 0) > 0) {
        m_wantedVolume.answered();
    }
}

void StreamCommands::setStreams(const QList<SoundStream> &streams)
{
    m_streams = streams;
}

bool StreamCommands::Wanted::operator==(const Wanted &other) const
{
    const auto isSame = [](const SoundStream &stream, const SoundStream &otherStream) {
        return stream.origin.stream == otherStream.origin.stream;
    };
    return volume == other.volume && std::ranges::equal(streams, other.streams, isSame);
}

void StreamCommands::setVolume(int volume)
{
    m_wantedVolume.want({volume, m_streams});
}

void StreamCommands::setMuted(bool isMuted)
{
    const auto handle = [](pa_context *, int isDone, void *self) {
        static_cast<StreamCommands *>(self)->handleMuteAnswer(isDone != 0);
    };
    for (const SoundStream &stream : std::as_const(m_streams)) {
        m_unansweredMutes +=
            ask(pa_context_set_sink_input_mute(m_context, stream.origin.stream, isMuted ? 1 : 0, handle, this));
    }
}

void StreamCommands::moveTo(const QByteArray &output)
{
    const auto handle = [](pa_context *, int isDone, void *question) {
        const auto *move = static_cast<const Move *>(question);
        move->asker->handleMoveAnswer(*move, isDone != 0);
    };
    for (const SoundStream &stream : std::as_const(m_streams)) {
        const std::uint32_t index = stream.origin.stream;
        Move &move = m_unansweredMoves.emplace_back(Move{.asker = this, .stream = index});
        if (!ask(pa_context_move_sink_input_by_name(m_context, index, output.constData(), handle, &move))) {
            m_unansweredMoves.pop_back();
        }
    }
}

void StreamCommands::forgetWanted()
{
    m_wantedVolume.forget();
}

bool StreamCommands::hasImmovable() const
{
    return std::ranges::any_of(
        m_streams, [this](const SoundStream &stream) { return m_immovable.contains(stream.origin.stream); });
}

void StreamCommands::send(const Wanted &wanted)
{
    const auto handle = [](pa_context *, int isDone, void *self) {
        static_cast<StreamCommands *>(self)->handleVolumeAnswer(isDone != 0);
    };
    for (const SoundStream &stream : wanted.streams) {
        if (stream.canSetVolume) {
            const pa_cvolume volume = turnedTo(stream.balance, wanted.volume);
            m_unansweredVolumes +=
                ask(pa_context_set_sink_input_volume(m_context, stream.origin.stream, &volume, handle, this));
        }
    }
    if (m_unansweredVolumes == 0) {
        m_wantedVolume.answered();
    }
}

bool StreamCommands::ask(pa_operation *question)
{
    if (!question) {
        return false;
    }
    pa_operation_unref(question);
    m_watch.asked();
    return true;
}

void StreamCommands::handleVolumeAnswer(bool isDone)
{
    if (--m_unansweredVolumes == 0) {
        m_wantedVolume.answered();
    }
    handleAnswer(isDone);
}

void StreamCommands::handleMuteAnswer(bool isDone)
{
    --m_unansweredMutes;
    handleAnswer(isDone);
}

void StreamCommands::handleMoveAnswer(const Move &move, bool isDone)
{
    const std::uint32_t stream = move.stream;
    m_unansweredMoves.remove_if([&](const Move &other) { return &other == &move; });
    // Both servers answer so where a program lets nobody move its stream.
    if (!isDone && pa_context_errno(m_context) == PA_ERR_INVALID) {
        qCDebug(audioLog) << "stream" << stream << "must not be moved";
        m_immovable.insert(stream);
    }
    handleAnswer(isDone);
}

void StreamCommands::handleAnswer(bool isDone)
{
    if (!isDone && pa_context_errno(m_context) == PA_ERR_TIMEOUT) {
        m_watch.gaveUp();
    } else {
        m_watch.answered();
    }
    if (m_unansweredVolumes == 0 && m_unansweredMutes == 0 && m_unansweredMoves.empty()) {
        m_answered();
    }
}

} // namespace tunedeck
