// SPDX-License-Identifier: MIT
#include "SoundClient.h"

#include <pulse/operation.h>
#include <pulse/proplist.h>

#include <algorithm>
#include <optional>

namespace tunedeck {

namespace {
/// libpulse's lock.
class Lock {
public:
    explicit Lock(pa_threaded_mainloop *loop)
        : m_loop(loop)
    {
        pa_threaded_mainloop_lock(m_loop);
    }
    ~Lock() { pa_threaded_mainloop_unlock(m_loop); }
    Lock(const Lock &) = delete;
    Lock &operator=(const Lock &) = delete;

private:
    pa_threaded_mainloop *m_loop;
};

pa_proplist *listOf(const SoundClient::Properties &properties)
{
    pa_proplist *list = pa_proplist_new();
    for (const auto &[key, value] : properties) {
        pa_proplist_sets(list, key.constData(), value.constData());
    }
    return list;
}

void writeSilence(pa_stream *stream, size_t bytes, void *)
{
    const std::vector<char> silence(bytes, 0);
    pa_stream_write(stream, silence.data(), bytes, nullptr, 0, PA_SEEK_RELATIVE);
}
} // namespace

SoundClient::SoundClient(const QByteArray &name, const Properties &properties)
    : m_loop(pa_threaded_mainloop_new())
{
    pa_proplist *list = listOf(properties);
    m_context = pa_context_new_with_proplist(pa_threaded_mainloop_get_api(m_loop), name.constData(), list);
    pa_proplist_free(list);
    const auto signal = [](pa_context *, void *loop) {
        pa_threaded_mainloop_signal(static_cast<pa_threaded_mainloop *>(loop), 0);
    };
    pa_context_set_state_callback(m_context, signal, m_loop);
    pa_threaded_mainloop_start(m_loop);
    const Lock lock(m_loop);
    pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
    waitUntil([this] {
        const pa_context_state_t state = pa_context_get_state(m_context);
        return state == PA_CONTEXT_READY || !PA_CONTEXT_IS_GOOD(state);
    });
}

SoundClient::~SoundClient()
{
    pa_threaded_mainloop_stop(m_loop);
    for (pa_stream *stream : m_streams) {
        pa_stream_unref(stream);
    }
    pa_context_disconnect(m_context);
    pa_context_unref(m_context);
    pa_threaded_mainloop_free(m_loop);
}

bool SoundClient::isConnected()
{
    const Lock lock(m_loop);
    return pa_context_get_state(m_context) == PA_CONTEXT_READY;
}

quint32 SoundClient::play(const Stream &wanted)
{
    const Lock lock(m_loop);
    const pa_sample_spec format{.format = PA_SAMPLE_S16LE, .rate = 8'000, .channels = std::uint8_t(wanted.channels)};
    pa_proplist *list = listOf(wanted.properties);
    pa_stream *stream = pa_stream_new_with_proplist(m_context, "silence", &format, nullptr, list);
    pa_proplist_free(list);
    if (!stream) {
        return PA_INVALID_INDEX;
    }
    const auto signal = [](pa_stream *, void *loop) {
        pa_threaded_mainloop_signal(static_cast<pa_threaded_mainloop *>(loop), 0);
    };
    pa_stream_set_state_callback(stream, signal, m_loop);
    pa_stream_set_write_callback(stream, writeSilence, nullptr);
    const unsigned flags = (wanted.isCorked ? PA_STREAM_START_CORKED : PA_STREAM_NOFLAGS)
        | (wanted.mayBeMoved ? PA_STREAM_NOFLAGS : PA_STREAM_DONT_MOVE);
    const char *output = wanted.output.isEmpty() ? nullptr : wanted.output.constData();
    pa_stream_connect_playback(stream, output, nullptr, pa_stream_flags_t(flags), nullptr, nullptr);
    waitUntil([stream] {
        const pa_stream_state_t state = pa_stream_get_state(stream);
        return state == PA_STREAM_READY || !PA_STREAM_IS_GOOD(state);
    });
    m_streams.push_back(stream);
    return pa_stream_get_state(stream) == PA_STREAM_READY ? pa_stream_get_index(stream) : PA_INVALID_INDEX;
}

quint32 SoundClient::addOutput(const QByteArray &id)
{
    struct Question {
        pa_threaded_mainloop *loop;
        std::optional<quint32> answer = {};
    };
    const Lock lock(m_loop);
    Question question{.loop = m_loop};
    const auto answered = [](pa_context *, uint32_t number, void *asker) {
        auto *asked = static_cast<Question *>(asker);
        asked->answer = number;
        pa_threaded_mainloop_signal(asked->loop, 0);
    };
    const QByteArray arguments = "sink_name=" + id;
    pa_operation *operation =
        pa_context_load_module(m_context, "module-null-sink", arguments.constData(), answered, &question);
    if (!operation) {
        return PA_INVALID_INDEX;
    }
    waitUntil([&] { return question.answer.has_value() || pa_operation_get_state(operation) != PA_OPERATION_RUNNING; });
    pa_operation_unref(operation);
    return question.answer.value_or(PA_INVALID_INDEX);
}

void SoundClient::removeOutput(quint32 number)
{
    const Lock lock(m_loop);
    if (pa_operation *operation = pa_context_unload_module(m_context, number, nullptr, nullptr)) {
        pa_operation_unref(operation);
    }
}

void SoundClient::setCorked(quint32 index, bool isCorked)
{
    const Lock lock(m_loop);
    if (pa_operation *operation = pa_stream_cork(stream(index), isCorked ? 1 : 0, nullptr, nullptr)) {
        pa_operation_unref(operation);
    }
}

void SoundClient::end(quint32 index)
{
    const Lock lock(m_loop);
    pa_stream_disconnect(stream(index));
}

pa_stream *SoundClient::stream(quint32 index) const
{
    const auto found =
        std::ranges::find_if(m_streams, [&](pa_stream *stream) { return pa_stream_get_index(stream) == index; });
    Q_ASSERT(found != m_streams.end());
    return *found;
}

template <typename Done> void SoundClient::waitUntil(Done done)
{
    while (!done()) {
        pa_threaded_mainloop_wait(m_loop);
    }
}

} // namespace tunedeck
