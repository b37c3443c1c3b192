// SPDX-License-Identifier: MIT
#include "app/ShowWhilePlayer.h"

#include "music/MusicApplication.h"
#include "platform/UserDefaults.h"

#include <chrono>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

/// A player that restarts, or is followed by another, must not make the window blink.
constexpr auto farewell = 2s;
} // namespace

ShowWhilePlayer::ShowWhilePlayer(const MusicApplication &music, UserDefaults &defaults, QObject *parent)
    : QObject(parent)
    , m_music(music)
    , m_isWanted(defaults.boolForKey(SettingsKey::showOnlyWithPlayer))
{
    m_farewell.setObjectName(QStringLiteral("farewell"));
    m_farewell.setSingleShot(true);
    m_farewell.setInterval(farewell);
    connect(&m_farewell, &QTimer::timeout, this, [this] {
        if (!isShown()) {
            Q_EMIT hideRequested();
        }
    });
    connect(&m_music, &MusicApplication::didLaunch, this, &ShowWhilePlayer::handlePlayer);
    connect(&m_music, &MusicApplication::didTerminate, this, &ShowWhilePlayer::handlePlayer);
    defaults.bind(SettingsKey::showOnlyWithPlayer, this, [this](bool isWanted) { handleSetting(isWanted); });
}

bool ShowWhilePlayer::isShown() const
{
    return !m_isWanted || m_music.isRunning();
}

void ShowWhilePlayer::handleSetting(bool isWanted)
{
    if (m_isWanted == isWanted) {
        return;
    }
    m_isWanted = isWanted;
    if (isShown()) {
        m_farewell.stop();
        Q_EMIT showRequested();
    } else {
        m_farewell.start();
    }
}

void ShowWhilePlayer::handlePlayer()
{
    if (!m_isWanted) {
        return;
    }
    if (!m_music.isRunning()) {
        m_farewell.start();
    } else if (m_farewell.isActive()) {
        m_farewell.stop();
    } else {
        Q_EMIT showRequested();
    }
}

} // namespace tunedeck
