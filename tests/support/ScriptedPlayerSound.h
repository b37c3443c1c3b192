// SPDX-License-Identifier: MIT
#pragma once

#include "music/PlayerSound.h"

#include <QStringList>

namespace tunedeck {

/// A sound server that does what the test says. Commands are recorded; of these only a volume changes the state.
class ScriptedPlayerSound : public PlayerSound {
public:
    using PlayerSound::PlayerSound;

    void report(const PlayerSoundState &state)
    {
        m_state = state;
        Q_EMIT changed();
    }
    /// In the order sent, with their argument: "setVolume 40", "setMuted false", "moveTo kitchen".
    [[nodiscard]] QStringList commands() const { return m_commands; }

    void follow(const std::optional<PlayerProcess> & /*player*/) override { }
    [[nodiscard]] const PlayerSoundState &state() const override { return m_state; }
    void setVolume(int volume) override
    {
        m_commands.append(QStringLiteral("setVolume %1").arg(volume));
        m_state.volume = volume;
        Q_EMIT changed();
    }
    void setMuted(bool isMuted) override
    {
        m_commands.append(isMuted ? QStringLiteral("setMuted true") : QStringLiteral("setMuted false"));
    }
    void moveTo(const QString &outputId) override { m_commands.append(QStringLiteral("moveTo ") + outputId); }

private:
    PlayerSoundState m_state;
    QStringList m_commands;
};

/// A player that plays through a Bluetooth loudspeaker called Kitchen, on a computer with loudspeakers of its own.
[[nodiscard]] inline PlayerSoundState soundInKitchen(std::optional<int> volume)
{
    return {.obstacle = SoundObstacle::None,
        .volume = volume,
        .canMove = true,
        .outputs = {{.id = QStringLiteral("alsa_output.pci"), .name = QStringLiteral("Built-in Audio")},
            {.id = QStringLiteral("bluez_output.1"),
                .name = QStringLiteral("Kitchen"),
                .kind = SoundOutput::Kind::Bluetooth}},
        .currentOutputs = {QStringLiteral("bluez_output.1")}};
}

} // namespace tunedeck
