// SPDX-License-Identifier: MIT
#pragma once

#include "audio/LoopTimer.h"
#include "audio/SoundStream.h"
#include "audio/outputKind.h"
#include "music/PlayerSound.h"

#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/mainloop-api.h>

#include <QByteArray>
#include <QHash>
#include <QList>

#include <chrono>
#include <cstdint>
#include <functional>

namespace tunedeck {

class AnswerWatch;

/// Reads the streams and the outputs from the sound server. However often they change, they are read ten times a second
/// at most. All calls belong to the loop's thread.
class ServerListing {
public:
    static constexpr std::chrono::milliseconds shortestInterval{100};
    /// Streams and outputs beyond this are left out.
    static constexpr qsizetype longestList = 4'096;

    /// `listed` is called after each round. `api` and `watch` must outlive this object.
    ServerListing(pa_mainloop_api &api, AnswerWatch &watch, std::function<void()> listed);

    /// Forgets everything, and reads it from `context` unless that is null. A round under way must have ended with its
    /// context.
    void setContext(pa_context *context);
    void refreshStreams();
    void refreshOutputs();
    /// The number of the round that is under way, or was last.
    [[nodiscard]] int round() const { return m_round; }
    [[nodiscard]] bool hasListed() const { return m_hasListed; }

    /// The streams, which name their outputs by index.
    [[nodiscard]] const QList<SoundStream> &streams() const { return m_streams; }
    /// The outputs by their indexes.
    [[nodiscard]] const QHash<std::uint32_t, SoundOutput> &outputs() const { return m_outputs; }

private:
    /// A client's claims for all its streams.
    using Client = StreamOrigin;

    void beginRound();
    void ask(pa_operation *question);
    /// `end` is what libpulse passes with the end of a list.
    void handleEnd(int end);
    void addStream(const pa_sink_input_info &info);
    void addClient(const pa_client_info &info);
    void addOutput(const pa_sink_info &info);
    [[nodiscard]] bool knowsAllClients() const;
    void completeStreams();

    AnswerWatch &m_watch;
    std::function<void()> m_listed;
    LoopTimer m_timer;
    pa_context *m_context = nullptr;
    bool m_mustReadStreams = false;
    bool m_mustReadOutputs = false;
    bool m_readsStreams = false; ///< in this round
    bool m_readsOutputs = false;
    bool m_hasGivenUp = false; ///< libpulse, on a question of this round
    int m_unanswered = 0;
    int m_round = 0;
    bool m_hasListed = false;
    QList<SoundStream> m_readStreams;
    QHash<std::uint32_t, SoundOutput> m_readOutputs;
    QHash<std::uint32_t, Client> m_clients;
    QList<SoundStream> m_streams;
    QHash<std::uint32_t, SoundOutput> m_outputs;
};

} // namespace tunedeck
