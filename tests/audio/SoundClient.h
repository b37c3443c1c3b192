// SPDX-License-Identifier: MIT
#pragma once

#include "music/PlayerProcess.h"

#include <pulse/context.h>
#include <pulse/introspect.h>
#include <pulse/stream.h>
#include <pulse/thread-mainloop.h>

#include <QByteArray>
#include <QList>

#include <unistd.h>
#include <utility>
#include <vector>

namespace tunedeck {

/// This process, as the player whose streams a SoundClient plays.
[[nodiscard]] inline PlayerProcess thisProcess()
{
    return {.id = ::getpid(), .names = {QStringLiteral("deck")}};
}

/// A program that plays silence on the sound server. It says that it is this process.
class SoundClient {
public:
    using Properties = QList<std::pair<QByteArray, QByteArray>>;

    struct Stream {
        int channels = 2;
        bool isCorked = false;
        bool mayBeMoved = true;
        QByteArray output = {}; ///< the server's default output if empty
        Properties properties = {};
    };

    /// Returns when it is connected, or cannot be.
    explicit SoundClient(const QByteArray &name = "deck", const Properties &properties = {});
    ~SoundClient();
    SoundClient(const SoundClient &) = delete;
    SoundClient &operator=(const SoundClient &) = delete;

    [[nodiscard]] bool isConnected();
    /// Returns the stream's index on the server when it is there; PA_INVALID_INDEX if it cannot be.
    [[nodiscard]] quint32 play(const Stream &stream);
    /// Has the server add an output without a device. Returns the number of the module; PA_INVALID_INDEX if it refuses.
    [[nodiscard]] quint32 addOutput(const QByteArray &id);
    /// `number` is what addOutput() returned.
    void removeOutput(quint32 number);
    void setCorked(quint32 index, bool isCorked);
    void end(quint32 index);

private:
    [[nodiscard]] pa_stream *stream(quint32 index) const;
    template <typename Done> void waitUntil(Done done);

    pa_threaded_mainloop *m_loop;
    pa_context *m_context;
    std::vector<pa_stream *> m_streams;
};

} // namespace tunedeck
