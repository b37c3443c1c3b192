// SPDX-License-Identifier: MIT
#pragma once

#include "music/LatestWanted.h"
#include "music/mpris/PlayerMirror.h"
#include "music/mpris/bus/BusCall.h"

#include <QList>
#include <QObject>

#include <optional>

namespace tunedeck {

class PlayerCalls;

/// Sends commands to a player, and lets its mirror believe what was asked for. A player that is not responding (see
/// PlayerCalls) gets no commands, as it would carry them out late.
///
/// Each command returns whether it was, or will be, sent. One of a kind is under way at a time. Of the seeks,
/// volumes, modes and states (playing or not) wanted meanwhile the last follows its answer; of the skips, to the next
/// or previous track, each does, up to eight. What waits is dropped when the player stops responding.
class PlayerCommands : public QObject {
    Q_OBJECT

public:
    enum class Command { PlayPause = 1, Stop = 2, Next = 4, Previous = 8 };
    Q_DECLARE_FLAGS(Commands, Command)

    /// `calls` and `mirror`, those of the player, must outlive this object.
    PlayerCommands(PlayerCalls &calls, PlayerMirror &mirror, Clock clock, QObject *parent = nullptr);

    /// Toggles between playing and pausing; stops a player that cannot pause. The mirror shows the effect at once. The
    /// command is sent at the end of this turn of the event loop, unless another one takes it back before.
    bool playPause();
    bool next();
    bool previous();
    /// Whether the player has not answered next() or previous() yet, so that its track is about to change.
    [[nodiscard]] bool isSkipping() const;
    /// `seconds` is clamped to 0 and a second before the end, as players skip the track beyond either.
    bool setPosition(double seconds);
    /// 0 to 1.
    bool setVolume(double volume);
    bool setShuffle(bool enabled);
    bool setLoopStatus(LoopStatus status);

Q_SIGNALS:
    /// A command was given that this player answers.
    void given();
    /// A command changed the mirror, or what the mirror waits for.
    void mirrorChanged(tunedeck::PlayerMirror::Changes changes);
    void positionSent();
    /// The player has answered a command. After `delay` a read shows its effect.
    void effectExpected(tunedeck::Milliseconds delay);

private:
    [[nodiscard]] bool isToggling() const;
    [[nodiscard]] PlaybackStatus toggled(PlaybackStatus status) const;
    void sendPlayPause();
    void handlePlayPauseAnswer(const bus::Answer &answer);
    bool skip(Command command);
    void sendSkip(Command command);
    void send(Command command, const bus::AnswerHandler &handler);
    void sendPosition(double seconds);
    void sendVolume(double volume);
    void sendShuffle(bool enabled);
    void sendLoopStatus(LoopStatus status);
    void handleRespondingChanged(bool responding);

    [[nodiscard]] Instant now() const { return m_clock(); }
    [[nodiscard]] bool areTaken() const;

    PlayerCalls &m_calls;
    PlayerMirror &m_mirror;
    Clock m_clock;

    Commands m_unanswered;
    std::optional<PlaybackStatus> m_wantedStatus; ///< what the commands not sent yet lead to
    PlaybackStatus m_comingStatus = PlaybackStatus::Stopped; ///< what the commands sent lead to
    QList<Command> m_waitingSkips;
    LatestWanted<double> m_wantedPosition{[this](double seconds) { sendPosition(seconds); }};
    LatestWanted<double> m_wantedVolume{[this](double volume) { sendVolume(volume); }};
    LatestWanted<bool> m_wantedShuffle{[this](bool enabled) { sendShuffle(enabled); }};
    LatestWanted<LoopStatus> m_wantedLoopStatus{[this](LoopStatus status) { sendLoopStatus(status); }};
};

Q_DECLARE_OPERATORS_FOR_FLAGS(PlayerCommands::Commands)

} // namespace tunedeck
