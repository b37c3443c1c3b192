// SPDX-License-Identifier: MIT
#include "music/MusicWithSound.h"

#include "music/menuText.h"

#include <algorithm>
#include <utility>

namespace tunedeck {

namespace {

constexpr qint64 fullVolume = 100;

FourCharCode airPlayDeviceKind(SoundOutput::Kind kind)
{
    switch (kind) {
    case SoundOutput::Kind::Computer:
        return AirPlayDeviceKind::computer;
    case SoundOutput::Kind::Bluetooth:
        return AirPlayDeviceKind::bluetooth;
    case SoundOutput::Kind::Usb:
    case SoundOutput::Kind::Hdmi:
    case SoundOutput::Kind::Network:
    case SoundOutput::Kind::AirPlay:
        return AirPlayDeviceKind::other;
    }
    return AirPlayDeviceKind::unknown;
}

std::optional<QList<MusicAirPlayDevice>> devicesOf(const PlayerSoundState &sound)
{
    if (sound.obstacle != SoundObstacle::None) {
        return std::nullopt;
    }
    QList<MusicAirPlayDevice> devices;
    for (const SoundOutput &output : sound.outputs) {
        if (sound.currentOutputs.contains(output.id)) {
            devices.append(MusicAirPlayDevice{.kind = airPlayDeviceKind(output.kind), .name = menuText(output.name)});
        }
    }
    return devices;
}

PlayerSoundState withoutVolume(PlayerSoundState sound)
{
    sound.volume.reset();
    return sound;
}

} // namespace

MusicWithSound::MusicWithSound(MusicApplication &music, PlayerSound &sound, QObject *parent)
    : MusicApplication(parent)
    , m_music(music)
    , m_sound(sound)
{
    passOn();
    connect(&m_sound, &PlayerSound::changed, this, &MusicWithSound::handleSound);
    judgeOwnVolume();
    m_known = volumeNow();
    handleSound();
}

std::optional<int> MusicWithSound::soundVolume() const
{
    return isVolumeOfStreams() ? m_sound.state().volume : m_music.soundVolume();
}

bool MusicWithSound::setSoundVolume(qint64 volume)
{
    const bool isOfStreams = isVolumeOfStreams();
    if (!m_music.isResponding() || answerTo(MusicControl::volume) == ControlAnswer::ignored) {
        return false;
    }
    unmuteIfTurnedUp(volume);
    const int value = int(std::clamp<qint64>(volume, 0, fullVolume));
    if (!isOfStreams) {
        m_asked = value;
        const bool isAnswered = m_music.setSoundVolume(volume);
        m_known = volumeNow();
        return isAnswered;
    }
    // The user's own volume is no change to be reported back, where its fraction would be lost.
    m_known.value = value;
    m_sound.setVolume(value);
    return true;
}

bool MusicWithSound::isVolumeOfStreams() const
{
    const bool isOwnMissing = !m_hasHadOwnVolume && m_music.answerTo(MusicControl::volume) == ControlAnswer::missing;
    return m_music.isRunning() && m_sound.state().volume && (m_keepsOwnVolume || isOwnMissing);
}

ControlAnswer MusicWithSound::answerTo(MusicControl control) const
{
    const bool isOfStreams = control == MusicControl::volume && isVolumeOfStreams();
    return isOfStreams ? ControlAnswer::taken : m_music.answerTo(control);
}

std::optional<QList<MusicAirPlayDevice>> MusicWithSound::currentAirPlayDevices() const
{
    const std::lock_guard lock(m_mutex);
    return m_devices;
}

void MusicWithSound::passOn()
{
    connect(&m_music, &MusicApplication::playerInfo, this, &MusicApplication::playerInfo);
    connect(&m_music, &MusicApplication::playbackSettingsDidChange, this, [this] {
        judgeOwnVolume();
        m_known = volumeNow();
        Q_EMIT playbackSettingsDidChange();
    });
    connect(&m_music, &MusicApplication::controlsDidChange, this, [this] {
        judgeOwnVolume();
        Q_EMIT controlsDidChange();
        reportVolume();
    });
    connect(&m_music, &MusicApplication::didLaunch, this, [this] {
        forgetPlayer();
        Q_EMIT didLaunch();
    });
    connect(&m_music, &MusicApplication::didTerminate, this, [this] {
        forgetPlayer();
        Q_EMIT didTerminate();
    });
    connect(&m_music, &MusicApplication::respondingDidChange, this, &MusicApplication::respondingDidChange);
    connect(&m_music, &MusicApplication::playerDidChange, this, &MusicApplication::playerDidChange);
}

void MusicWithSound::forgetPlayer()
{
    m_hasHadOwnVolume = false;
    m_keepsOwnVolume = false;
    m_asked.reset();
    judgeOwnVolume();
    m_known = volumeNow();
}

void MusicWithSound::judgeOwnVolume()
{
    const ControlAnswer answer = m_music.answerTo(MusicControl::volume);
    m_hasHadOwnVolume |= answer == ControlAnswer::taken && m_music.soundVolume();
    if (answer != ControlAnswer::ignored || std::exchange(m_keepsOwnVolume, true)) {
        return;
    }
    // The user is about to turn the volume, and must not have to do so for a third time.
    if (m_asked && isVolumeOfStreams()) {
        m_sound.setVolume(*m_asked);
    }
}

void MusicWithSound::handleSound()
{
    m_isUnmuting = false;
    {
        const std::lock_guard lock(m_mutex);
        m_devices = devicesOf(m_sound.state());
    }
    reportVolume();
    if (const PlayerSoundState now = withoutVolume(m_sound.state()); now != m_knownSound) {
        m_knownSound = now;
        Q_EMIT soundDidChange();
    }
}

MusicWithSound::Volume MusicWithSound::volumeNow() const
{
    return {.isOfStreams = isVolumeOfStreams(), .value = soundVolume(), .answer = answerTo(MusicControl::volume)};
}

void MusicWithSound::reportVolume()
{
    const Volume now = volumeNow();
    const Volume before = std::exchange(m_known, now);
    if (now.isOfStreams != before.isOfStreams || now.answer != before.answer) {
        Q_EMIT controlsDidChange();
    }
    if (now.value != before.value) {
        Q_EMIT playbackSettingsDidChange();
    }
}

void MusicWithSound::unmuteIfTurnedUp(qint64 volume)
{
    const bool isTurnedUp = volume > soundVolume().value_or(0) || volume >= fullVolume;
    if (isTurnedUp && m_sound.state().isMuted && !std::exchange(m_isUnmuting, true)) {
        m_sound.setMuted(false);
    }
}

} // namespace tunedeck
