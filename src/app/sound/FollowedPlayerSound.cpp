// SPDX-License-Identifier: MIT
#include "app/sound/FollowedPlayerSound.h"

#include "audio/AudioModule.h"
#include "music/MusicApplication.h"
#include "platform/BundleInfo.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonObject>
#include <QPluginLoader>

#include <utility>

namespace tunedeck {

namespace {
QString standardModulePath()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral(TUNEDECK_AUDIO_PATH));
}
} // namespace

FollowedPlayerSound::FollowedPlayerSound(const MusicApplication &music, QObject *parent)
    : FollowedPlayerSound(music, standardModulePath(), parent)
{
}

FollowedPlayerSound::FollowedPlayerSound(const MusicApplication &music, QString modulePath, QObject *parent)
    : PlayerSound(parent)
    , m_music(music)
    , m_modulePath(std::move(modulePath))
{
    connect(&music, &MusicApplication::playerInfo, this, &FollowedPlayerSound::update);
    connect(&music, &MusicApplication::playerDidChange, this, &FollowedPlayerSound::update);
    connect(&music, &MusicApplication::didTerminate, this, &FollowedPlayerSound::update);
}

FollowedPlayerSound::~FollowedPlayerSound() = default;

void FollowedPlayerSound::start()
{
    m_mayLoad = true;
    update();
}

const PlayerSoundState &FollowedPlayerSound::state() const
{
    return m_sound ? m_sound->state() : m_stateWithoutModule;
}

void FollowedPlayerSound::setVolume(int volume)
{
    if (m_sound) {
        m_sound->setVolume(volume);
    }
}

void FollowedPlayerSound::setMuted(bool isMuted)
{
    if (m_sound) {
        m_sound->setMuted(isMuted);
    }
}

void FollowedPlayerSound::moveTo(const QString &outputId)
{
    if (m_sound) {
        m_sound->moveTo(outputId);
    }
}

void FollowedPlayerSound::update()
{
    if (m_mayLoad && isPlaying()) {
        m_mayLoad = false;
        load();
    }
    if (m_sound) {
        m_sound->follow(m_music.playerProcess());
    }
}

void FollowedPlayerSound::load()
{
    QPluginLoader loader(m_modulePath);
    const QString wanted =
        QStringLiteral(TUNEDECK_AUDIO_MODULE) + bundleInfo(u"CFBundleShortVersionString").value_or(QString());
    if (loader.metaData().value(QLatin1String("IID")).toString() == wanted) {
        const auto *module = qobject_cast<AudioModule *>(loader.instance());
        m_sound = module ? module->makePlayerSound() : nullptr;
    }
    if (m_sound) {
        connect(m_sound.get(), &PlayerSound::changed, this, &PlayerSound::changed);
    } else {
        m_stateWithoutModule.obstacle = SoundObstacle::NoServer;
        Q_EMIT changed();
    }
}

bool FollowedPlayerSound::isPlaying() const
{
    const std::optional<FourCharCode> state = m_music.playerState();
    return state && !PlayerState::isIdle(*state);
}

} // namespace tunedeck
