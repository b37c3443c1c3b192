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

/// Music over several players at once: the one on show gets the commands, and stays on show.
class SeveralPlayersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void pausingThePlayerOnShowLeavesTheOtherPlaying();
    void thePausedPlayerIsLeftWhenAnotherBeginsToPlay();
    void ofTwoThatPlayAtTheStartTheOneOnShowIsPaused();
    void whenTheOneOnShowStopsTheOtherIsShownAndNothingIsBelievedOfTheFirst();
    void playersOfOneProcessAreEachListedAndThePlayingOneIsFollowed_data();
    void playersOfOneProcessAreEachListedAndThePlayingOneIsFollowed();
    void aPinSurvivesANewBusName();
    void aPlayerThatTakesOverANameIsFollowed();

private:
    std::unique_ptr<DemoPlayerProcess> start(const QStringList &arguments);
    void startMusic();
    [[nodiscard]] QString followed() const;
    [[nodiscard]] QStringList names() const;
    /// The commands that `player` gets until Music does nothing more.
    [[nodiscard]] QStringList commands(const DemoPlayerProcess &player) const;

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    ApplicationLauncher m_launcher;
    MusicAtRest m_rest;
    QDBusConnection m_musicConnection{u"none"_s};
    std::unique_ptr<MprisMusicApplication> m_music;
    int m_connections = 0;
};

void SeveralPlayersTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
    m_folder = std::make_unique<QTemporaryDir>();
    m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"settings.conf"_s));
}

void SeveralPlayersTest::cleanup()
{
    m_music.reset();
    m_defaults.reset();
    m_bus.reset();
    m_musicConnection = QDBusConnection(u"none"_s);
    for (; m_connections > 0; --m_connections) {
        QDBusConnection::disconnectFromBus(QString::number(m_connections));
    }
}

std::unique_ptr<DemoPlayerProcess> SeveralPlayersTest::start(const QStringList &arguments)
{
    const QDBusConnection control = m_bus->connect(QString::number(++m_connections));
    auto player = std::make_unique<DemoPlayerProcess>(*m_bus, control, arguments);
    return player->isReady() ? std::move(player) : nullptr;
}

void SeveralPlayersTest::startMusic()
{
    m_musicConnection = m_bus->connect(QString::number(++m_connections));
    m_music = std::make_unique<MprisMusicApplication>(m_musicConnection, *m_defaults, m_launcher, m_rest.clock());
    QTRY_VERIFY(m_music->isReady());
    QVERIFY(m_rest.isReached(*m_music, m_musicConnection));
}

QString SeveralPlayersTest::followed() const
{
    const QList<FollowablePlayer> players = m_music->followablePlayers().followablePlayers();
    const auto player = std::ranges::find(players, true, &FollowablePlayer::isFollowed);
    return player == players.end() ? QString() : player->id;
}

QStringList SeveralPlayersTest::names() const
{
    QStringList names;
    const QList<FollowablePlayer> players = m_music->followablePlayers().followablePlayers();
    for (const FollowablePlayer &player : players) {
        names.append(player.name);
    }
    names.sort();
    return names;
}

QStringList SeveralPlayersTest::commands(const DemoPlayerProcess &player) const
{
    return m_rest.isReached(*m_music, m_musicConnection) ? player.takeCommands() : QStringList{u"no rest"_s};
}

void SeveralPlayersTest::pausingThePlayerOnShowLeavesTheOtherPlaying()
{
    const auto first = start({u"--name"_s, u"first"_s, u"--play"_s});
    const auto second = start({u"--name"_s, u"second"_s});
    startMusic();
    QCOMPARE(followed(), u"first"_s);
    QVERIFY(second->tell(u"play"_s));
    // Music has seen it when it knows what it plays.
    QTRY_VERIFY(!m_music->followablePlayers().followablePlayers().last().title.isEmpty());
    QVERIFY(m_rest.isReached(*m_music, m_musicConnection));
    const QString shown = followed();
    const DemoPlayerProcess &onShow = shown == u"first"_s ? *first : *second;
    const DemoPlayerProcess &other = shown == u"first"_s ? *second : *first;
    const QSignalSpy terminated(m_music.get(), &MusicApplication::didTerminate);

    QVERIFY(m_music->playpause());
    QCOMPARE(commands(onShow), QStringList{u"PlayPause"_s});
    QCOMPARE(other.takeCommands(), QStringList());
    QCOMPARE(followed(), shown);
    QCOMPARE(m_music->playerState(), PlayerState::paused);
    QVERIFY(m_music->playpause());
    QCOMPARE(commands(onShow), QStringList{u"PlayPause"_s});
    QCOMPARE(m_music->playerState(), PlayerState::playing);
    QCOMPARE(terminated.count(), 0);
}

void SeveralPlayersTest::thePausedPlayerIsLeftWhenAnotherBeginsToPlay()
{
    const auto first = start({u"--name"_s, u"first"_s, u"--play"_s});
    const auto second = start({u"--name"_s, u"second"_s});
    startMusic();
    QVERIFY(m_music->playpause());
    QCOMPARE(commands(*first), QStringList{u"PlayPause"_s});
    QCOMPARE(followed(), u"first"_s);
    QVERIFY(second->tell(u"play"_s));
    QTRY_COMPARE(followed(), u"second"_s);
    QVERIFY(second->tell(u"pause"_s));
    QVERIFY(m_rest.isReached(*m_music, m_musicConnection));
    QCOMPARE(followed(), u"second"_s);
}

void SeveralPlayersTest::ofTwoThatPlayAtTheStartTheOneOnShowIsPaused()
{
    const auto first = start({u"--name"_s, u"first"_s, u"--play"_s});
    const auto second = start({u"--name"_s, u"second"_s, u"--play"_s});
    startMusic();
    const QString shown = followed();
    const DemoPlayerProcess &onShow = shown == u"first"_s ? *first : *second;
    const DemoPlayerProcess &other = shown == u"first"_s ? *second : *first;
    QVERIFY(m_music->playpause());
    QCOMPARE(commands(onShow), QStringList{u"PlayPause"_s});
    QCOMPARE(other.takeCommands(), QStringList());
    QCOMPARE(followed(), shown);
    QCOMPARE(m_music->playerState(), PlayerState::paused);
}

void SeveralPlayersTest::whenTheOneOnShowStopsTheOtherIsShownAndNothingIsBelievedOfTheFirst()
{
    const auto first = start({u"--name"_s, u"first"_s, u"--play"_s});
    startMusic();
    const auto second = start({u"--name"_s, u"second"_s, u"--play"_s});
    QTRY_COMPARE(names().size(), 2);
    QVERIFY(first->tell(u"stop"_s));
    QTRY_COMPARE(followed(), u"second"_s);
    QVERIFY(m_music->playpause());
    QCOMPARE(commands(*second), QStringList{u"PlayPause"_s});
    QCOMPARE(first->takeCommands(), QStringList());
    QVERIFY(first->tell(u"play"_s));
    QTRY_COMPARE(followed(), u"first"_s);
    QCOMPARE(m_music->playerState(), PlayerState::playing);
}

void SeveralPlayersTest::playersOfOneProcessAreEachListedAndThePlayingOneIsFollowed_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<QString>("id");
    QTest::newRow("plain names") << u"one"_s << u"two"_s << u"two"_s;
    QTest::newRow("KDE Connect") << u"kdeconnect.mpris_0123456789ab"_s << u"kdeconnect.mpris_ba9876543210"_s
                                 << u"kdeconnect//Pixel: Podcast"_s;
    QTest::newRow("GSConnect") << u"GSConnect.a"_s << u"GSConnect.b"_s << u"GSConnect//Pixel: Podcast"_s;
    QTest::newRow("mpris-proxy") << u"Pixel_6"_s << u"Galaxy_S9"_s << u"Galaxy_S9"_s;
}

void SeveralPlayersTest::playersOfOneProcessAreEachListedAndThePlayingOneIsFollowed()
{
    QFETCH(const QString, first);
    QFETCH(const QString, second);
    QFETCH(const QString, id);
    const auto process = start({u"--name"_s, first, u"--also"_s, second});
    QVERIFY(process);
    QVERIFY(process->tell(u"wrong Identity string Pixel: Music"_s));
    QVERIFY(process->tell(second, u"wrong Identity string Pixel: Podcast"_s));
    QVERIFY(process->tell(second, u"play"_s));
    startMusic();
    QCOMPARE(names(), (QStringList{u"Pixel: Music"_s, u"Pixel: Podcast"_s}));
    QCOMPARE(followed(), id);
    QVERIFY(m_music->playpause());
    QCOMPARE(commands(*process), QStringList());
    QCOMPARE(process->takeCommands(second), QStringList{u"PlayPause"_s});
    QCOMPARE(m_music->playerState(), PlayerState::paused);
    QCOMPARE(followed(), id);
}

void SeveralPlayersTest::aPinSurvivesANewBusName()
{
    const auto other = start({u"--name"_s, u"other"_s, u"--play"_s});
    m_defaults->setValue(u"FollowedPlayer"_s, u"kdeconnect//Pixel: Podcast"_s);
    startMusic();
    QCOMPARE(followed(), u"other"_s);
    QCOMPARE(m_music->followablePlayers().awaitedPlayer(), u"Pixel: Podcast"_s);
    const QStringList podcast{u"--do"_s, u"wrong Identity string Pixel: Podcast"_s, u"--name"_s};
    auto phone = start(podcast + QStringList{u"kdeconnect.mpris_0123456789ab"_s});
    QTRY_COMPARE(followed(), u"kdeconnect//Pixel: Podcast"_s);
    QCOMPARE(m_music->followablePlayers().awaitedPlayer(), QString());
    phone.reset();
    QTRY_COMPARE(followed(), u"other"_s);
    phone = start(podcast + QStringList{u"kdeconnect.mpris_fedcba987654"_s});
    QTRY_COMPARE(followed(), u"kdeconnect//Pixel: Podcast"_s);
}

void SeveralPlayersTest::aPlayerThatTakesOverANameIsFollowed()
{
    const auto former = start({u"--name"_s, u"mpd"_s, u"--play"_s, u"--track"_s, u"0"_s});
    startMusic();
    QCOMPARE(m_music->currentTrack()->duration, 204.0);
    const auto next = start({u"--name"_s, u"mpd"_s, u"--replace"_s, u"--play"_s, u"--track"_s, u"1"_s});
    QVERIFY(next);
    QTRY_VERIFY(m_music->currentTrack() && m_music->currentTrack()->duration == 135.0);
    QCOMPARE(names().size(), 1);
    QVERIFY(m_music->playpause());
    QCOMPARE(commands(*next), QStringList{u"PlayPause"_s});
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::SeveralPlayersTest, QGuiApplication)
#include "SeveralPlayersTest.moc"
