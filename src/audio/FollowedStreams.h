// SPDX-License-Identifier: MIT
#pragma once

#include "audio/AnswerWatch.h"
#include "audio/LoopTimer.h"
#include "audio/ProcDirectory.h"
#include "audio/ServerConnection.h"
#include "audio/ServerListing.h"
#include "audio/SettledStreams.h"
#include "audio/StreamCommands.h"
#include "audio/StreamOwnership.h"
#include "music/PlayerProcess.h"
#include "music/PlayerSound.h"

#include <pulse/mainloop-api.h>

#include <QByteArray>

#include <functional>
#include <optional>

namespace tunedeck {

/// The followed player's streams on the sound server. While no player is followed, there is no connection. All calls
/// belong to the loop's thread.
class FollowedStreams {
public:
    using Publish = std::function<void(const PlayerSoundState &state)>;

    /// `publish` is called with each state that differs from the last one. `api` must outlive this object.
    FollowedStreams(pa_mainloop_api &api, Publish publish);

    /// See PlayerSound. follow() publishes a state even if it is the last one.
    void follow(const std::optional<PlayerProcess> &player);
    void setVolume(int volume);
    void setMuted(bool isMuted);
    void moveTo(const QByteArray &output);

private:
    void handleConnection(ServerConnection::State state);
    void refresh(bool isOutput);
    void handleResponding();
    void handleListed();
    void handleCommandsAnswered();
    void settle();

    /// Finds the player's streams again, and publishes what has changed.
    void update();
    [[nodiscard]] SoundObstacle obstacle() const;
    [[nodiscard]] QList<SoundStream> streamsOfPlayer(const QList<std::uint32_t> &indexes) const;
    [[nodiscard]] PlayerSoundState stateOf(const QList<SoundStream> &streams) const;
    void addOutputs(PlayerSoundState &state, const QList<SoundStream> &streams) const;
    void publish(const PlayerSoundState &state);

    Publish m_publish;
    const ProcDirectory m_processes;
    std::optional<StreamOwnership> m_ownership;
    std::optional<PlayerSoundState> m_published;
    std::optional<int> m_heldVolume; ///< set by the user, until the server's own has been read after its answer
    std::optional<int> m_heldRound; ///< the last round that may have read an older volume; none until the answer
    /// From a failure until a server has answered: a further attempt is not worth reporting.
    bool m_isWithoutServer = false;
    SettledStreams m_settled;
    LoopTimer m_settleTimer;
    AnswerWatch m_watch;
    ServerListing m_listing;
    StreamCommands m_commands;
    ServerConnection m_connection; ///< the last, so that nothing above is called after its end
};

} // namespace tunedeck
