// SPDX-License-Identifier: MIT
#pragma once

#include "audio/SoundStream.h"
#include "music/LatestWanted.h"

#include <pulse/context.h>

#include <QByteArray>
#include <QList>
#include <QSet>

#include <cstdint>
#include <functional>
#include <list>
#include <optional>

namespace tunedeck {

class AnswerWatch;

/// Sends the sound server what the user wants of the followed player's streams. Of the volumes wanted while one is
/// unanswered, the last is sent next. All calls belong to the loop's thread.
class StreamCommands {
public:
    /// `answered` is called when the server has answered the last one. `watch` must outlive this object.
    StreamCommands(AnswerWatch &watch, std::function<void()> answered);

    /// The server never answers commands that went to the former context.
    void setContext(pa_context *context);
    /// The followed player's streams now.
    void setStreams(const QList<SoundStream> &streams);

    /// `volume` is 0 to 100.
    void setVolume(int volume);
    void setMuted(bool isMuted);
    /// `output` is the output's name on the server.
    void moveTo(const QByteArray &output);
    /// Sends no volume that still waits.
    void forgetWanted();

    [[nodiscard]] bool isVolumeUnanswered() const { return m_unansweredVolumes > 0; }
    /// Whether the server has refused to move one of the streams.
    [[nodiscard]] bool hasImmovable() const;

private:
    /// A volume, and the streams that it was wanted for.
    struct Wanted {
        int volume;
        QList<SoundStream> streams;

        bool operator==(const Wanted &other) const;
    };

    /// A question about a stream.
    struct Move {
        StreamCommands *asker;
        std::uint32_t stream;
    };

    void send(const Wanted &wanted);
    bool ask(pa_operation *question);
    void handleVolumeAnswer(bool isDone);
    void handleMuteAnswer(bool isDone);
    void handleMoveAnswer(const Move &move, bool isDone);
    void handleAnswer(bool isDone);

    AnswerWatch &m_watch;
    std::function<void()> m_answered;
    pa_context *m_context = nullptr;
    QList<SoundStream> m_streams;
    LatestWanted<Wanted> m_wantedVolume{[this](const Wanted &wanted) { send(wanted); }};
    int m_unansweredVolumes = 0;
    int m_unansweredMutes = 0;
    std::list<Move> m_unansweredMoves; ///< each is the question that libpulse passes back with its answer
    QSet<std::uint32_t> m_immovable;
};

} // namespace tunedeck
