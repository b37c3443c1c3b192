// SPDX-License-Identifier: MIT
#include "audio/PulsePlayerSound.h"

#include <QMetaObject>

#include <algorithm>
#include <utility>

namespace tunedeck {

std::unique_ptr<PulsePlayerSound> PulsePlayerSound::make()
{
    std::unique_ptr<PulseLoop> loop = PulseLoop::make();
    if (!loop || !loop->start()) {
        return nullptr;
    }
    return std::unique_ptr<PulsePlayerSound>(new PulsePlayerSound(std::move(loop)));
}

PulsePlayerSound::PulsePlayerSound(std::unique_ptr<PulseLoop> loop)
    : m_loop(std::move(loop))
{
    m_loop->post([this] {
        m_streams =
            std::make_unique<FollowedStreams>(m_loop->api(), [this](const PlayerSoundState &state) { publish(state); });
    });
}

PulsePlayerSound::~PulsePlayerSound()
{
    m_loop->stop();
    m_streams.reset();
}

void PulsePlayerSound::follow(const std::optional<PlayerProcess> &player)
{
    if (m_player == player) {
        return;
    }
    m_player = player;
    ++m_follows;
    m_loop->post([this, player] {
        ++m_handledFollows;
        m_streams->follow(player);
    });
    setState({.obstacle = player ? SoundObstacle::NotAsked : SoundObstacle::NoPlayer});
}

void PulsePlayerSound::setVolume(int volume)
{
    if (m_state.obstacle != SoundObstacle::None || !m_state.volume) {
        return;
    }
    const int possible = std::clamp(volume, 0, 100);
    ++m_volumes;
    m_loop->post([this, possible] {
        ++m_handledVolumes;
        m_streams->setVolume(possible);
    });
    PlayerSoundState state = m_state;
    state.volume = possible;
    setState(state);
}

void PulsePlayerSound::setMuted(bool isMuted)
{
    if (m_state.obstacle == SoundObstacle::None) {
        m_loop->post([this, isMuted] { m_streams->setMuted(isMuted); });
    }
}

void PulsePlayerSound::moveTo(const QString &outputId)
{
    if (m_state.obstacle == SoundObstacle::None) {
        m_loop->post([this, output = outputId.toUtf8()] { m_streams->moveTo(output); });
    }
}

void PulsePlayerSound::publish(const PlayerSoundState &state)
{
    const std::lock_guard lock(m_mutex);
    const bool isApplied = !m_report;
    m_report = Report{.state = state, .follows = m_handledFollows, .volumes = m_handledVolumes};
    // Until the main thread takes it, later states replace this one.
    if (isApplied) {
        QMetaObject::invokeMethod(this, &PulsePlayerSound::apply, Qt::QueuedConnection);
    }
}

void PulsePlayerSound::apply()
{
    std::optional<Report> report;
    {
        const std::lock_guard lock(m_mutex);
        report.swap(m_report);
    }
    if (!report || report->follows != m_follows) {
        return;
    }
    // The server does not know yet what the hand has set since.
    if (report->volumes != m_volumes && report->state.volume && m_state.volume) {
        report->state.volume = m_state.volume;
    }
    setState(report->state);
}

void PulsePlayerSound::setState(const PlayerSoundState &state)
{
    if (m_state != state) {
        m_state = state;
        Q_EMIT changed();
    }
}

} // namespace tunedeck
