// SPDX-License-Identifier: MIT
#include "app/sound/FollowedPlayerSound.h"
#include "support/ScriptedMusicApplication.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {
/// A Music that says which process it is.
class MusicOfAProcess : public ScriptedMusicApplication {
public:
    std::optional<PlayerProcess> process = PlayerProcess{.id = 77};

    [[nodiscard]] std::optional<PlayerProcess> playerProcess() const override { return process; }
    void play()
    {
        answers.playerState = PlayerState::playing;
        Q_EMIT playerInfo({});
    }
};

bool isModuleLoaded()
{
    QFile maps(u"/proc/self/maps"_s);
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("/tunedeck-audio.so");
}
} // namespace

class FollowedPlayerSoundTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder; ///< without a sound server

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_folder.path()));
        qunsetenv("PULSE_SERVER");
    }

    // The first, as a module stays loaded.
    void theModuleIsLoadedWhenAPlayerFirstPlaysAfterTheStart()
    {
        MusicOfAProcess music;
        music.launch();
        FollowedPlayerSound sound(music, QStringLiteral(AUDIO_MODULE));
        music.play();
        QVERIFY(!isModuleLoaded());
        music.answers.playerState = PlayerState::paused;
        sound.start();
        QVERIFY(!isModuleLoaded());
        QCOMPARE(sound.state().obstacle, SoundObstacle::NoPlayer);
        sound.setVolume(5);
        sound.setMuted(true);
        sound.moveTo(u"kitchen"_s);
        music.play();
        QVERIFY(isModuleLoaded());
        QCOMPARE(sound.state().obstacle, SoundObstacle::NotAsked);
        QTRY_COMPARE(sound.state().obstacle, SoundObstacle::NoServer);
    }

    void aPlayerThatPlaysAlreadyCountsAtTheStart()
    {
        MusicOfAProcess music;
        music.launch();
        music.answers.playerState = PlayerState::playing;
        FollowedPlayerSound sound(music, QStringLiteral(AUDIO_MODULE));
        sound.start();
        QCOMPARE(sound.state().obstacle, SoundObstacle::NotAsked);
    }

    void aChangeOfPlayerIsFollowed()
    {
        MusicOfAProcess music;
        music.launch();
        FollowedPlayerSound sound(music, QStringLiteral(AUDIO_MODULE));
        sound.start();
        music.play();
        QSignalSpy changed(&sound, &PlayerSound::changed);
        music.process = PlayerProcess{.id = 78, .isElsewhere = true, .names = {}};
        Q_EMIT music.playerDidChange();
        QTRY_COMPARE(sound.state().obstacle, SoundObstacle::PlayerElsewhere);
        QVERIFY(changed.count() > 0);
        music.process.reset();
        music.quit();
        QCOMPARE(sound.state().obstacle, SoundObstacle::NoPlayer);
    }

    void withoutTheModuleThereIsNoServer_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("missing") << u"/nowhere/tunedeck-audio.so"_s;
        QTest::newRow("another module") << QStringLiteral(UPDATES_MODULE);
    }
    void withoutTheModuleThereIsNoServer()
    {
        QFETCH(const QString, path);
        MusicOfAProcess music;
        music.launch();
        FollowedPlayerSound sound(music, path);
        QSignalSpy changed(&sound, &PlayerSound::changed);
        sound.start();
        music.play();
        QCOMPARE(sound.state().obstacle, SoundObstacle::NoServer);
        QCOMPARE(changed.count(), 1);
        music.play();
        QCOMPARE(changed.count(), 1);
    }
};

TUNEDECK_TEST(FollowedPlayerSoundTest, QCoreApplication)

#include "FollowedPlayerSoundTest.moc"
