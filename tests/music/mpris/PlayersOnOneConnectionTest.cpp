// SPDX-License-Identifier: MIT
#include "MusicAtRest.h"
#include "SharedConnection.h"
#include "music/mpris/MprisMusicApplication.h"
#include "platform/ActivationToken.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"
#include "support/PrivateBus.h"
#include "support/registerTest.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <thread>

using namespace Qt::StringLiterals;

namespace tunedeck {

/// Music over several players that share a connection to the bus: each is a player of its own, although their signals
/// do not tell them apart.
class PlayersOnOneConnectionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void eachNameIsAPlayerAndThePlayingOneIsFollowed();
    void aCommandReachesThePlayerOnShow_data();
    void aCommandReachesThePlayerOnShow();
    void thePinnedOneIsCommandedAlsoWhileTheOtherPlays();
    void aSignalMakesBothBeReadAgain();
    void aSignalIsNotBelievedOfTheOther_data();
    void aSignalIsNotBelievedOfTheOther();
    void aNameThatComesLaterIsAPlayerOfItsOwn();
    void aPlayerThatComesToShareItsConnectionIsAskedForItsPlaylistsByItsName();
    void whereOneNameGoesTheOtherStays();

private:
    /// Lets "one" be paused and "two" play, and Music find them.
    void startWithTwo();
    void startMusic();
    [[nodiscard]] bool comesToRest() const { return m_rest.isReached(*m_music, m_musicConnection); }
    [[nodiscard]] QString followed() const;
    [[nodiscard]] QString title() const;
    /// "NAME: TITLE" of each player that can be followed.
    [[nodiscard]] QStringList players() const;
    /// The commands that were sent to this name since the last call.
    [[nodiscard]] QStringList commands(const QString &name) const;

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<SharedConnection> m_players;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    ApplicationLauncher m_launcher;
    MusicAtRest m_rest;
    QDBusConnection m_musicConnection{u"none"_s};
    std::unique_ptr<MprisMusicApplication> m_music;
};

void PlayersOnOneConnectionTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
    m_players = std::make_unique<SharedConnection>(m_bus->address());
    QVERIFY(m_players->isConnected());
    m_folder = std::make_unique<QTemporaryDir>();
    m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"settings.conf"_s));
}

void PlayersOnOneConnectionTest::cleanup()
{
    m_music.reset();
    m_defaults.reset();
    m_players.reset();
    m_bus.reset();
    m_musicConnection = QDBusConnection(u"none"_s);
    QDBusConnection::disconnectFromBus(u"music"_s);
}

void PlayersOnOneConnectionTest::startWithTwo()
{
    QVERIFY(m_players->take(u"one"_s, {.title = u"Lantern"_s}));
    QVERIFY(m_players->take(u"two"_s, {.title = u"Harbour"_s, .isPlaying = true}));
    startMusic();
    QCOMPARE(followed(), u"two"_s);
}

void PlayersOnOneConnectionTest::startMusic()
{
    m_musicConnection = m_bus->connect(u"music"_s);
    m_music = std::make_unique<MprisMusicApplication>(m_musicConnection, *m_defaults, m_launcher, m_rest.clock());
    QTRY_VERIFY(m_music->isReady());
    QVERIFY(comesToRest());
}

QString PlayersOnOneConnectionTest::followed() const
{
    const QList<FollowablePlayer> players = m_music->followablePlayers().followablePlayers();
    const auto player = std::ranges::find(players, true, &FollowablePlayer::isFollowed);
    return player == players.end() ? QString() : player->id;
}

QString PlayersOnOneConnectionTest::title() const
{
    return m_music->currentTrack().value_or(MusicTrack()).name.value_or(QString());
}

QStringList PlayersOnOneConnectionTest::players() const
{
    QStringList texts;
    const QList<FollowablePlayer> players = m_music->followablePlayers().followablePlayers();
    for (const FollowablePlayer &player : players) {
        texts.append(u"%1: %2"_s.arg(player.name, player.title));
    }
    return texts;
}

QStringList PlayersOnOneConnectionTest::commands(const QString &name) const
{
    QStringList calls = m_players->takeCalls(name);
    calls.removeIf([](const QString &call) { return call.startsWith(u"Get"); });
    return calls;
}

void PlayersOnOneConnectionTest::eachNameIsAPlayerAndThePlayingOneIsFollowed()
{
    startWithTwo();
    QCOMPARE(players(), (QStringList{u"one: Lantern"_s, u"two: Harbour"_s}));
    QCOMPARE(title(), u"Harbour"_s);
    QCOMPARE(m_music->playerState(), PlayerState::playing);
    QCOMPARE(m_players->takeCalls(QString()), QStringList());
}

void PlayersOnOneConnectionTest::aCommandReachesThePlayerOnShow_data()
{
    using Command = std::function<bool(MusicApplication &)>;
    QTest::addColumn<Command>("command");
    QTest::addColumn<QString>("call");
    QTest::newRow("pause") << Command([](MusicApplication &music) { return music.playpause(); }) << u"PlayPause"_s;
    QTest::newRow("next") << Command([](MusicApplication &music) { return music.nextTrack(); }) << u"Next"_s;
    QTest::newRow("volume") << Command([](MusicApplication &music) { return music.setSoundVolume(50); })
                            << u"Set Volume"_s;
    QTest::newRow("its window") << Command([](MusicApplication &music) { return music.showPlayer({}); }) << u"Raise"_s;
}

void PlayersOnOneConnectionTest::aCommandReachesThePlayerOnShow()
{
    QFETCH(const std::function<bool(MusicApplication &)>, command);
    QFETCH(const QString, call);
    startWithTwo();
    QVERIFY(command(*m_music));
    QStringList calls;
    QTRY_COMPARE(calls += commands(u"two"_s), QStringList{call});
    QVERIFY(comesToRest());
    QCOMPARE(commands(u"two"_s), QStringList());
    QCOMPARE(commands(u"one"_s), QStringList());
    QCOMPARE(m_players->takeCalls(QString()), QStringList());
    QCOMPARE(followed(), u"two"_s);
}

void PlayersOnOneConnectionTest::thePinnedOneIsCommandedAlsoWhileTheOtherPlays()
{
    startWithTwo();
    m_defaults->setValue(u"FollowedPlayer"_s, u"one"_s);
    QCOMPARE(followed(), u"one"_s);
    QCOMPARE(title(), u"Lantern"_s);
    QVERIFY(m_music->playpause());
    QVERIFY(comesToRest());
    QCOMPARE(commands(u"one"_s), QStringList{u"PlayPause"_s});
    QCOMPARE(commands(u"two"_s), QStringList());
    QCOMPARE(m_music->playerState(), PlayerState::playing);
    QCOMPARE(title(), u"Lantern"_s);
}

void PlayersOnOneConnectionTest::aSignalMakesBothBeReadAgain()
{
    startWithTwo();
    m_players->set(u"one"_s, {.title = u"Meadow"_s});
    m_players->set(u"two"_s, {.title = u"Timetable"_s, .isPlaying = true});
    m_players->announce(u"one"_s);
    QTRY_COMPARE(players(), (QStringList{u"one: Meadow"_s, u"two: Timetable"_s}));
    QVERIFY(comesToRest());
    QCOMPARE(title(), u"Timetable"_s);
    m_players->set(u"one"_s, {.title = u"Meadow"_s, .isPlaying = true});
    m_players->set(u"two"_s, {.title = u"Timetable"_s});
    m_players->announce(u"two"_s);
    QTRY_COMPARE(followed(), u"one"_s);
}

void PlayersOnOneConnectionTest::aSignalIsNotBelievedOfTheOther_data()
{
    QTest::addColumn<bool>("isPlaying");
    QTest::newRow("a paused one's") << false;
    QTest::newRow("a playing one's") << true;
}

void PlayersOnOneConnectionTest::aSignalIsNotBelievedOfTheOther()
{
    QFETCH(const bool, isPlaying);
    startWithTwo();
    QStringList shown;
    connect(m_music.get(), &MusicApplication::playerInfo, this, [&shown](const QVariantMap &userInfo) {
        shown.append(userInfo.value(u"Name"_s).toString() + u' ' + userInfo.value(u"Player State"_s).toString());
    });
    m_players->set(u"one"_s, {.title = u"Meadow"_s, .isPlaying = isPlaying});
    m_players->announce(u"one"_s);
    QTRY_COMPARE(players().first(), u"one: Meadow"_s);
    QVERIFY(comesToRest());
    QCOMPARE(shown, QStringList());
    QCOMPARE(title(), u"Harbour"_s);
    QCOMPARE(m_music->playerState(), PlayerState::playing);
    QCOMPARE(players(), (QStringList{u"one: Meadow"_s, u"two: Harbour"_s}));
}

void PlayersOnOneConnectionTest::aNameThatComesLaterIsAPlayerOfItsOwn()
{
    QVERIFY(m_players->take(u"one"_s, {.title = u"Lantern"_s}));
    startMusic();
    QCOMPARE(followed(), u"one"_s);
    // The first one's words until now may have been about the second, so it is asked again.
    m_players->set(u"one"_s, {.title = u"Meadow"_s});
    QVERIFY(m_players->take(u"two"_s, {.title = u"Harbour"_s, .isPlaying = true}));
    QTRY_COMPARE(followed(), u"two"_s);
    QVERIFY(comesToRest());
    QCOMPARE(players(), (QStringList{u"one: Meadow"_s, u"two: Harbour"_s}));
    QVERIFY(m_music->playpause());
    QVERIFY(comesToRest());
    QCOMPARE(commands(u"two"_s), QStringList{u"PlayPause"_s});
    // The first was alone when it came.
    m_defaults->setValue(u"FollowedPlayer"_s, u"one"_s);
    QVERIFY(m_music->playpause());
    QVERIFY(comesToRest());
    QCOMPARE(commands(u"one"_s), QStringList{u"PlayPause"_s});
    QCOMPARE(commands(u"two"_s), QStringList());
    QCOMPARE(commands(QString()), QStringList());
}

void PlayersOnOneConnectionTest::aPlayerThatComesToShareItsConnectionIsAskedForItsPlaylistsByItsName()
{
    QVERIFY(m_players->take(u"one"_s, {.title = u"Lantern"_s, .isPlaying = true}));
    startMusic();
    QVERIFY(m_players->take(u"two"_s, {.title = u"Harbour"_s}));
    QTRY_COMPARE(players().size(), 2);
    QVERIFY(comesToRest());
    m_players->takeCalls(u"one"_s);
    m_players->takeCalls(QString());
    std::thread([this] { static_cast<void>(m_music->playlistIds()); }).join();
    QCOMPARE(m_players->takeCalls(QString()), QStringList());
    QVERIFY(m_players->takeCalls(u"one"_s).contains(u"GetAll org.mpris.MediaPlayer2.Playlists"_s));
}

void PlayersOnOneConnectionTest::whereOneNameGoesTheOtherStays()
{
    startWithTwo();
    QVERIFY(m_players->giveUp(u"two"_s));
    QTRY_COMPARE(followed(), u"one"_s);
    QVERIFY(comesToRest());
    QCOMPARE(players(), QStringList{u"one: Lantern"_s});
    QCOMPARE(title(), u"Lantern"_s);
    QVERIFY(m_music->playpause());
    QVERIFY(comesToRest());
    QCOMPARE(commands(u"one"_s), QStringList{u"PlayPause"_s});
    QCOMPARE(m_music->playerState(), PlayerState::playing);
    QVERIFY(m_players->take(u"two"_s, {.title = u"Timetable"_s}));
    QTRY_COMPARE(players(), (QStringList{u"one: Lantern"_s, u"two: Timetable"_s}));
    QVERIFY(m_music->nextTrack());
    QVERIFY(comesToRest());
    QCOMPARE(commands(u"one"_s), QStringList{u"Next"_s});
    QCOMPARE(commands(u"two"_s), QStringList());
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayersOnOneConnectionTest, QGuiApplication)
#include "PlayersOnOneConnectionTest.moc"
