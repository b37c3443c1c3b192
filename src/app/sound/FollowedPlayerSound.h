// SPDX-License-Identifier: MIT
#pragma once

#include "music/PlayerSound.h"

#include <QString>

#include <memory>
#include <optional>

namespace tunedeck {

class MusicApplication;

/// The sound of the player that Music is, by the module that reaches the sound server. The module is loaded when a
/// player first plays after start(). Until then, and where the module is missing or belongs to another version of the
/// program, there is an obstacle.
class FollowedPlayerSound : public PlayerSound {
    Q_OBJECT

public:
    /// `music` must outlive this object.
    explicit FollowedPlayerSound(const MusicApplication &music, QObject *parent = nullptr);
    /// Loads the module at `modulePath`.
    FollowedPlayerSound(const MusicApplication &music, QString modulePath, QObject *parent = nullptr);
    ~FollowedPlayerSound() override;

    /// From now on, the module may be loaded. Call it when the first window is open.
    void start();

    /// Music alone decides whom this is about: does nothing.
    void follow(const std::optional<PlayerProcess> & /*player*/) override { }
    [[nodiscard]] const PlayerSoundState &state() const override;
    void setVolume(int volume) override;
    void setMuted(bool isMuted) override;
    void moveTo(const QString &outputId) override;

private:
    void update();
    void load();
    [[nodiscard]] bool isPlaying() const;

    const MusicApplication &m_music;
    const QString m_modulePath;
    bool m_mayLoad = false;
    PlayerSoundState m_stateWithoutModule;
    std::unique_ptr<PlayerSound> m_sound;
};

} // namespace tunedeck
