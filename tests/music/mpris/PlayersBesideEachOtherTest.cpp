// SPDX-License-Identifier: MIT
#include "DemoPlayerProcess.h"
#include "MusicAtRest.h"
#include "music/mpris/MprisMusicApplication.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"
#include "support/PrivateBus.h"
#include "support/registerTest.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

const QString musicId = u"kdeconnect//Pixel: Music"_s;
const QString podcastId = u"kdeconnect//Pixel: Podcast"_s;

} // namespace

/// A desktop with VLC, which takes two names on two connections and announces everything on both, with a phone's
/// players, which KDE Connect shows from one process, and with playerctld, which repeats what was active last.
class PlayersBesideEachOtherTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void eachPlayerIsListedOnce();
    void vlcStaysOnShowWhenItIsPausedUnderBothNames();
    void whatVlcAnnouncesTwiceIsShownOnce();
    void thePlayingOneIsFollowedAndCommanded();
    void aPinnedPlayerOfAPhoneIsFoundUnderItsNextName();
    void playerctldAloneIsNoPlayer();

private:
    [[nodiscard]] std::unique_ptr<DemoPlayerProcess> start(const QStringList &arguments);
    /// Lets the phone's two players appear; their bus names end in `part`.
    void startPhone(const QString &part);
    [[nodiscard]] static QString podcast(const QString &part) { return u"kdeconnect.mpris_ba987654"_s + part; }
    void startMusic();
    /// VLC carries the line out and announces it under both of its names; playerctld repeats it.
    void tellVlc(const QString &line);
    void tellPodcast(const QString &line);
    [[nodiscard]] bool comesToRest() const { return m_rest.isReached(*m_music, m_musicConnection); }
    [[nodiscard]] QString followed() const;
    [[nodiscard]] QStringList ids() const;

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    ApplicationLauncher m_launcher;
    std::unique_ptr<DemoPlayerProcess> m_vlc;
    QString m_vlcInstance;
    std::unique_ptr<DemoPlayerProcess> m_phone;
    std::unique_ptr<DemoPlayerProcess> m_playerctld;
    MusicAtRest m_rest;
    QDBusConnection m_musicConnection{u"none"_s};
    std::unique_ptr<MprisMusicApplication> m_music;
    int m_connections = 0;
};

void PlayersBesideEachOtherTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
    m_folder = std::make_unique<QTemporaryDir>();
    m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"settings.conf"_s));
    m_playerctld = start({u"--name"_s, u"playerctld"_s});
    // The demo player gives its second player the name that VLC's second one has.
    m_vlc = start({u"--name"_s, u"vlc"_s, u"--also"_s, u"vlc"_s});
    m_vlcInstance = u"vlc.instance%1"_s.arg(m_vlc->processId());
    QVERIFY(m_vlc->tell(m_vlcInstance, u"pause"_s));
    startPhone(u"3210"_s);
}

void PlayersBesideEachOtherTest::cleanup()
{
    m_music.reset();
    m_playerctld.reset();
    m_phone.reset();
    m_vlc.reset();
    m_defaults.reset();
    m_bus.reset();
    m_musicConnection = QDBusConnection(u"none"_s);
    for (; m_connections > 0; --m_connections) {
        QDBusConnection::disconnectFromBus(QString::number(m_connections));
    }
}

std::unique_ptr<DemoPlayerProcess> PlayersBesideEachOtherTest::start(const QStringList &arguments)
{
    const QDBusConnection control = m_bus->connect(QString::number(++m_connections));
    return std::make_unique<DemoPlayerProcess>(*m_bus, control, arguments);
}

void PlayersBesideEachOtherTest::startPhone(const QString &part)
{
    m_phone = start({u"--do"_s, u"wrong Identity string Pixel: Music"_s, u"--name"_s,
        u"kdeconnect.mpris_01234567"_s + part, u"--also"_s, podcast(part)});
    QVERIFY(m_phone->tell(podcast(part), u"wrong Identity string Pixel: Podcast"_s));
}

void PlayersBesideEachOtherTest::startMusic()
{
    m_musicConnection = m_bus->connect(QString::number(++m_connections));
    m_music = std::make_unique<MprisMusicApplication>(m_musicConnection, *m_defaults, m_launcher, m_rest.clock());
    QTRY_VERIFY(m_music->isReady());
    QVERIFY(comesToRest());
}

void PlayersBesideEachOtherTest::tellVlc(const QString &line)
{
    QVERIFY(m_vlc->tell(line));
    QVERIFY(m_vlc->tell(m_vlcInstance, line));
    QVERIFY(m_playerctld->tell(line));
}

void PlayersBesideEachOtherTest::tellPodcast(const QString &line)
{
    QVERIFY(m_phone->tell(podcast(u"3210"_s), line));
    QVERIFY(m_playerctld->tell(line));
}

QString PlayersBesideEachOtherTest::followed() const
{
    const QList<FollowablePlayer> players = m_music->followablePlayers().followablePlayers();
    const auto player = std::ranges::find(players, true, &FollowablePlayer::isFollowed);
    return player == players.end() ? QString() : player->id;
}

QStringList PlayersBesideEachOtherTest::ids() const
{
    QStringList ids;
    const QList<FollowablePlayer> players = m_music->followablePlayers().followablePlayers();
    for (const FollowablePlayer &player : players) {
        ids.append(player.id);
    }
    ids.sort();
    return ids;
}

void PlayersBesideEachOtherTest::eachPlayerIsListedOnce()
{
    const QStringList all{musicId, podcastId, u"vlc"_s};
    tellPodcast(u"play"_s);
    startMusic();
    QCOMPARE(followed(), podcastId);
    QCOMPARE(ids(), all);
    QList<QStringList> others;
    connect(&m_music->followablePlayers(), &FollowablePlayers::followablePlayersChanged, this, [&] {
        if (ids() != all) {
            others.append(ids());
        }
    });
    tellPodcast(u"pause"_s);
    tellVlc(u"play"_s);
    QTRY_COMPARE(followed(), u"vlc"_s);
    tellVlc(u"pause"_s);
    tellPodcast(u"play"_s);
    QTRY_COMPARE(followed(), podcastId);
    QVERIFY(comesToRest());
    QCOMPARE(others, QList<QStringList>());
    QCOMPARE(ids(), all);
}

void PlayersBesideEachOtherTest::vlcStaysOnShowWhenItIsPausedUnderBothNames()
{
    tellVlc(u"play"_s);
    startMusic();
    QCOMPARE(followed(), u"vlc"_s);
    QCOMPARE(m_vlc->takeCommands(), QStringList());
    const QSignalSpy terminated(m_music.get(), &MusicApplication::didTerminate);
    QVERIFY(m_music->playpause());
    QStringList commands;
    QTRY_COMPARE(commands += m_vlc->takeCommands(), QStringList{u"PlayPause"_s});
    QVERIFY(m_vlc->tell(m_vlcInstance, u"pause"_s));
    QVERIFY(comesToRest());
    QCOMPARE(m_vlc->takeCommands(m_vlcInstance), QStringList());
    QCOMPARE(m_playerctld->takeCommands(), QStringList());
    QCOMPARE(followed(), u"vlc"_s);
    QCOMPARE(m_music->playerState(), PlayerState::paused);
    QCOMPARE(ids(), (QStringList{musicId, podcastId, u"vlc"_s}));
    QCOMPARE(terminated.count(), 0);
}

void PlayersBesideEachOtherTest::whatVlcAnnouncesTwiceIsShownOnce()
{
    tellVlc(u"play"_s);
    startMusic();
    QStringList shown;
    connect(m_music.get(), &MusicApplication::playerInfo, this,
        [&shown](const QVariantMap &userInfo) { shown.append(userInfo.value(u"Total Time"_s).toString()); });
    const QSignalSpy terminated(m_music.get(), &MusicApplication::didTerminate);
    tellVlc(u"track 1"_s);
    QTRY_COMPARE(m_music->currentTrack()->duration, 135.0);
    QVERIFY(comesToRest());
    QCOMPARE(shown, QStringList{u"135"_s});
    QCOMPARE(terminated.count(), 0);
}

void PlayersBesideEachOtherTest::thePlayingOneIsFollowedAndCommanded()
{
    tellPodcast(u"play"_s);
    startMusic();
    QCOMPARE(followed(), podcastId);
    QVERIFY(m_music->nextTrack());
    QVERIFY(comesToRest());
    QCOMPARE(m_phone->takeCommands(podcast(u"3210"_s)), QStringList{u"Next"_s});
    QCOMPARE(m_phone->takeCommands(), QStringList());
    tellPodcast(u"pause"_s);
    tellVlc(u"play"_s);
    QTRY_COMPARE(followed(), u"vlc"_s);
    QVERIFY(comesToRest());
    QVERIFY(m_music->nextTrack());
    QVERIFY(comesToRest());
    QCOMPARE(m_vlc->takeCommands(), QStringList{u"Next"_s});
    QCOMPARE(m_vlc->takeCommands(m_vlcInstance), QStringList());
    QCOMPARE(m_phone->takeCommands(podcast(u"3210"_s)), QStringList());
    QCOMPARE(m_playerctld->takeCommands(), QStringList());
}

void PlayersBesideEachOtherTest::aPinnedPlayerOfAPhoneIsFoundUnderItsNextName()
{
    tellVlc(u"play"_s);
    startMusic();
    QCOMPARE(followed(), u"vlc"_s);
    m_defaults->setValue(u"FollowedPlayer"_s, podcastId);
    QCOMPARE(followed(), podcastId);
    m_phone.reset();
    QTRY_COMPARE(followed(), u"vlc"_s);
    QCOMPARE(m_music->followablePlayers().awaitedPlayer(), u"Pixel: Podcast"_s);
    startPhone(u"7777"_s);
    QTRY_COMPARE(followed(), podcastId);
    QVERIFY(comesToRest());
    QCOMPARE(ids(), (QStringList{musicId, podcastId, u"vlc"_s}));
    QVERIFY(m_music->playpause());
    QVERIFY(comesToRest());
    QCOMPARE(m_phone->takeCommands(podcast(u"7777"_s)), QStringList{u"PlayPause"_s});
    QCOMPARE(m_vlc->takeCommands(), QStringList());
}

void PlayersBesideEachOtherTest::playerctldAloneIsNoPlayer()
{
    tellVlc(u"play"_s);
    startMusic();
    m_phone.reset();
    m_vlc.reset();
    QTRY_VERIFY(!m_music->isRunning());
    QVERIFY(comesToRest());
    QVERIFY(!m_music->isRunning());
    QCOMPARE(ids(), QStringList());
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayersBesideEachOtherTest, QGuiApplication)
#include "PlayersBesideEachOtherTest.moc"
