// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/LatestWanted.h"
#include "music/mpris/PlayerMirror.h"
#include "music/mpris/bus/BusCall.h"

#include <QObject>

namespace tunedeck {

class PlayerCalls;

/// Sends commands to one player, and lets its mirror believe what was asked for. A player that is not responding (see
/// PlayerCalls) gets no commands, as it would carry them out late.
///
/// Each command returns whether it was, or will be, sent. One of a kind is under way at a time: the last of the seeks
/// and of the volumes wanted meanwhile follows its answer, other commands are dropped.
class PlayerCommands : public QObject {
    Q_OBJECT

public:
    enum class Command { PlayPause = 1, Stop = 2, Next = 4, Previous = 8 };
    Q_DECLARE_FLAGS(Commands, Command)

    /// `calls` and `mirror`, those of the player, must outlive this object.
    PlayerCommands(PlayerCalls &calls, PlayerMirror &mirror, Clock clock, QObject *parent = nullptr);

    /// Toggles between playing and pausing; stops a player that cannot pause. The mirror shows the effect at once. The
    /// command is sent by sendPlayPause() or taken back by dropPlayPause().
    bool askForPlayPause();
    void sendPlayPause();
    void dropPlayPause();
    bool next();
    bool previous();
    /// `seconds` is clamped to 0 and a second before the end, as players skip the track beyond either.
    bool setPosition(double seconds);
    /// 0 to 1.
    bool setVolume(double volume);
    bool setShuffle(bool enabled);
    bool setLoopStatus(LoopStatus status);

Q_SIGNALS:
    /// A command changed the mirror, or what the mirror waits for.
    void mirrorChanged(tunedeck::PlayerMirror::Changes changes);
    void positionSent();
    /// The player has answered a command. After `delay` a read shows its effect.
    void effectExpected(tunedeck::Milliseconds delay, tunedeck::PlayerMirror::ReadPurpose purpose);

private:
    bool sendOnce(Command command);
    void send(Command command, const bus::ReplyHandler &handler);
    void sendPosition(double seconds);
    void sendVolume(double volume);
    void handleRespondingChanged(bool responding);

    [[nodiscard]] Instant now() const { return m_clock(); }
    [[nodiscard]] bool areTaken() const;

    PlayerCalls &m_calls;
    PlayerMirror &m_mirror;
    Clock m_clock;

    Commands m_unanswered;
    Command m_toggle = Command::PlayPause; ///< the command that sendPlayPause() sends
    LatestWanted m_wantedPosition{[this](double seconds) { sendPosition(seconds); }};
    LatestWanted m_wantedVolume{[this](double volume) { sendVolume(volume); }};
};

Q_DECLARE_OPERATORS_FOR_FLAGS(PlayerCommands::Commands)

} // namespace tunedeck
