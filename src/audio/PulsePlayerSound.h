// SPDX-License-Identifier: MIT
#pragma once

#include "audio/FollowedStreams.h"
#include "audio/PulseLoop.h"
#include "music/PlayerSound.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace tunedeck {

/// The followed player's sound on a server that speaks PulseAudio's protocol: PulseAudio, or PipeWire with
/// pipewire-pulse. libpulse works on a thread of its own.
class PulsePlayerSound : public PlayerSound {
    Q_OBJECT

public:
    /// Null if the system lacks a descriptor or a thread for it.
    [[nodiscard]] static std::unique_ptr<PulsePlayerSound> make();
    ~PulsePlayerSound() override;

    void follow(const std::optional<PlayerProcess> &player) override;
    [[nodiscard]] const PlayerSoundState &state() const override { return m_state; }
    void setVolume(int volume) override;
    void setMuted(bool isMuted) override;
    void moveTo(const QString &outputId) override;

private:
    /// A state, and how much of what this object has posted it is the answer to.
    struct Report {
        PlayerSoundState state;
        int follows = 0;
        int volumes = 0;
    };

    explicit PulsePlayerSound(std::unique_ptr<PulseLoop> loop);

    /// Called on the loop's thread.
    void publish(const PlayerSoundState &state);
    void apply();
    void setState(const PlayerSoundState &state);

    PlayerSoundState m_state;
    std::optional<PlayerProcess> m_player;
    int m_follows = 0;
    int m_volumes = 0;

    std::mutex m_mutex;
    std::optional<Report> m_report; ///< none once it has been applied; guarded by the mutex

    std::unique_ptr<PulseLoop> m_loop;
    // The loop's thread alone uses these.
    int m_handledFollows = 0;
    int m_handledVolumes = 0;
    std::unique_ptr<FollowedStreams> m_streams;
};

} // namespace tunedeck
