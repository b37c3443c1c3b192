// SPDX-License-Identifier: MIT
#include "DemoPlayerProcess.h"
#include "MusicAtRest.h"
#include "music/MusicConnector.h"
#include "music/mpris/MprisMusicApplication.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "support/PrivateBus.h"
#include "support/endWithParent.h"
#include "support/registerTest.h"

#include <QDBusConnectionInterface>
#include <QGuiApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// How a program shows the players of a phone: all from one process, each under a name of its own.
struct Bridge {
    QString firstName; ///< after "org.mpris.MediaPlayer2."
    QString secondName;
    QString laterFirstName; ///< when the phone has come back
    QString laterSecondName;
};

const QString firstIdentity = u"Podcasts - Pixel"_s;
const QString secondIdentity = u"Music - Pixel"_s;
const QString firstTitle = u"Quince Harbour Timetable"_s;
const QString secondTitle = u"Nobody's Umbrella Stand"_s;
const QString localTitle = u"Borrowed Thimble Waltz"_s;

} // namespace

/// Players that share a process, with the demo player as that process, beside a player of this machine.
class PlayersOfOneProcessTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void eachPlayerIsListedOnce_data() { addBridges(); }
    void eachPlayerIsListedOnce();
    void theOneThatPlaysIsFollowed_data() { addBridges(); }
    void theOneThatPlaysIsFollowed();
    void aCommandReachesTheOneOnShowAlone_data() { addBridges(); }
    void aCommandReachesTheOneOnShowAlone();
    void aPinSurvivesNewBusNames_data() { addBridges(); }
    void aPinSurvivesNewBusNames();
    void playerctldIsNoPlayerBesideThem();

private:
    static void addBridges();
    [[nodiscard]] std::unique_ptr<DemoPlayerProcess> newPlayer(const QStringList &arguments);
    /// Starts the phone's players, which do not play yet.
    void startPhone(const QString &firstName, const QString &secondName);
    /// Starts a player of this machine.
    void startLocal(bool plays);
    bool tell(const QString &name, const QString &line) const;
    [[nodiscard]] QStringList takeCommands(const QString &name) const;
    void startMusic();
    [[nodiscard]] bool shows(const QString &title) const;
    /// The names of the players in the menus, in alphabetical order; the followed one's with a star.
    [[nodiscard]] QStringList listed() const;
    /// Whether one of them plays this.
    [[nodiscard]] bool isListed(const QString &title) const;
    [[nodiscard]] QString idOf(const QString &identity) const;

    std::unique_ptr<PrivateBus> m_bus;
    QDBusConnection m_control{u"none"_s};
    std::unique_ptr<DemoPlayerProcess> m_phone;
    std::unique_ptr<DemoPlayerProcess> m_local;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    ApplicationLauncher m_launcher;
    WindowActivation m_windowActivation;
    MusicAtRest m_rest;
    QDBusConnection m_musicConnection{u"none"_s};
    std::unique_ptr<MprisMusicApplication> m_music;
    std::unique_ptr<MusicConnector> m_connector;
};

void PlayersOfOneProcessTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
    m_control = m_bus->connect(u"control"_s);
    m_folder = std::make_unique<QTemporaryDir>();
    m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"settings.conf"_s));
}

void PlayersOfOneProcessTest::cleanup()
{
    m_connector.reset();
    m_music.reset();
    m_phone.reset();
    m_local.reset();
    m_defaults.reset();
    m_bus.reset();
    for (QDBusConnection *connection : {&m_control, &m_musicConnection}) {
        *connection = QDBusConnection(u"none"_s);
    }
    QDBusConnection::disconnectFromBus(u"control"_s);
    QDBusConnection::disconnectFromBus(u"music"_s);
}

void PlayersOfOneProcessTest::addBridges()
{
    QTest::addColumn<Bridge>("bridge");
    QTest::newRow("KDE Connect") << Bridge{u"kdeconnect.mpris_3f0b9a44c1de4c2f8f2f0d6a9be1c7aa"_s,
        u"kdeconnect.mpris_77d1e0a29f5b4b0c9a3c5d8e1f2a6b4c"_s, u"kdeconnect.mpris_0a1b2c3d4e5f60718293a4b5c6d7e8f9"_s,
        u"kdeconnect.mpris_f9e8d7c6b5a4938271605f4e3d2c1b0a"_s};
    QTest::newRow("GSConnect") << Bridge{u"GSConnect.Pixel.Podcasts"_s, u"GSConnect.Pixel.Music"_s,
        u"GSConnect.Pixel.Podcasts"_s, u"GSConnect.Pixel.Music"_s};
    QTest::newRow("mpris-proxy") << Bridge{u"Podcasts"_s, u"Music"_s, u"Podcasts"_s, u"Music"_s};
}

std::unique_ptr<DemoPlayerProcess> PlayersOfOneProcessTest::newPlayer(const QStringList &arguments)
{
    return std::make_unique<DemoPlayerProcess>(*m_bus, m_control, arguments);
}

void PlayersOfOneProcessTest::startPhone(const QString &firstName, const QString &secondName)
{
    m_phone = newPlayer({u"--name"_s, firstName, u"--also"_s, secondName});
    QVERIFY(m_phone->isReady());
    QVERIFY(tell(firstName, u"wrong Identity string "_s + firstIdentity));
    QVERIFY(tell(secondName, u"wrong Identity string "_s + secondIdentity));
    QVERIFY(tell(firstName, u"track 0"_s) && tell(firstName, u"pause"_s));
    QVERIFY(tell(secondName, u"track 2"_s) && tell(secondName, u"pause"_s));
}

void PlayersOfOneProcessTest::startLocal(bool plays)
{
    m_local = newPlayer({u"--name"_s, u"local"_s, u"--do"_s, u"wrong Identity string Local"_s, u"--do"_s, u"track 1"_s,
        u"--do"_s, plays ? u"play"_s : u"pause"_s});
    QVERIFY(m_local->isReady());
}

bool PlayersOfOneProcessTest::tell(const QString &name, const QString &line) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        u"org.mpris.MediaPlayer2."_s + name, u"/org/mpris/MediaPlayer2"_s, u"org.tunedeck.DemoPlayer"_s, u"Script"_s);
    message.setArguments({line});
    return m_control.call(message).type() == QDBusMessage::ReplyMessage;
}

QStringList PlayersOfOneProcessTest::takeCommands(const QString &name) const
{
    const QDBusMessage message = QDBusMessage::createMethodCall(u"org.mpris.MediaPlayer2."_s + name,
        u"/org/mpris/MediaPlayer2"_s, u"org.tunedeck.DemoPlayer"_s, u"TakeCalls"_s);
    QStringList calls = m_control.call(message).arguments().value(0).toStringList();
    calls.removeIf([](const QString &call) { return call.startsWith(u"Get"); });
    return calls;
}

void PlayersOfOneProcessTest::startMusic()
{
    m_musicConnection = m_bus->connect(u"music"_s);
    m_music = std::make_unique<MprisMusicApplication>(m_musicConnection, *m_defaults, m_launcher, m_rest.clock());
    m_connector = std::make_unique<MusicConnector>(*m_music, m_windowActivation);
    QTRY_VERIFY(m_music->isReady());
    QVERIFY(m_rest.isReached(*m_music, m_musicConnection));
}

bool PlayersOfOneProcessTest::shows(const QString &title) const
{
    return m_connector->currentTrack() && m_connector->currentTrack()->trackName == title;
}

QStringList PlayersOfOneProcessTest::listed() const
{
    QStringList names;
    const QList<FollowablePlayer> players = m_music->followablePlayers().followablePlayers();
    for (const FollowablePlayer &player : players) {
        names.append(player.name + (player.isFollowed ? u"*"_s : QString()));
    }
    names.sort();
    return names;
}

bool PlayersOfOneProcessTest::isListed(const QString &title) const
{
    const QList<FollowablePlayer> players = m_music->followablePlayers().followablePlayers();
    return std::ranges::any_of(players, [&](const FollowablePlayer &player) { return player.title == title; });
}

QString PlayersOfOneProcessTest::idOf(const QString &identity) const
{
    const QList<FollowablePlayer> players = m_music->followablePlayers().followablePlayers();
    for (const FollowablePlayer &player : players) {
        if (player.name == identity) {
            return player.id;
        }
    }
    return {};
}

void PlayersOfOneProcessTest::eachPlayerIsListedOnce()
{
    QFETCH(const Bridge, bridge);
    startLocal(true);
    startPhone(bridge.firstName, bridge.secondName);
    startMusic();
    QTRY_COMPARE(listed(), (QStringList{u"Local*"_s, secondIdentity, firstIdentity}));
}

void PlayersOfOneProcessTest::theOneThatPlaysIsFollowed()
{
    QFETCH(const Bridge, bridge);
    startLocal(false);
    startPhone(bridge.firstName, bridge.secondName);
    QVERIFY(tell(bridge.secondName, u"play"_s));
    startMusic();
    QTRY_VERIFY(shows(secondTitle));
    QVERIFY(tell(bridge.secondName, u"pause"_s));
    QVERIFY(tell(bridge.firstName, u"play"_s));
    QTRY_VERIFY(shows(firstTitle));
    QTRY_COMPARE(listed(), (QStringList{u"Local"_s, secondIdentity, firstIdentity + u'*'}));
}

void PlayersOfOneProcessTest::aCommandReachesTheOneOnShowAlone()
{
    QFETCH(const Bridge, bridge);
    startPhone(bridge.firstName, bridge.secondName);
    QVERIFY(tell(bridge.firstName, u"play"_s));
    startMusic();
    QTRY_VERIFY(shows(firstTitle));
    QVERIFY(tell(bridge.secondName, u"track 4"_s));
    // Music has seen it when it knows what it plays.
    QTRY_VERIFY(isListed(u"The Slow Drift over Lake Vennin"_s));
    QVERIFY(m_rest.isReached(*m_music, m_musicConnection));
    QVERIFY(m_music->playpause());
    QVERIFY(m_rest.isReached(*m_music, m_musicConnection));
    QCOMPARE(takeCommands(bridge.firstName), QStringList{u"PlayPause"_s});
    QCOMPARE(takeCommands(bridge.secondName), QStringList());
    QVERIFY(shows(firstTitle));
    QCOMPARE(m_connector->currentState(), PlayerState::paused);
}

void PlayersOfOneProcessTest::aPinSurvivesNewBusNames()
{
    QFETCH(const Bridge, bridge);
    startLocal(true);
    startPhone(bridge.firstName, bridge.secondName);
    startMusic();
    QTRY_VERIFY(!idOf(secondIdentity).isEmpty());
    m_defaults->setValue(u"FollowedPlayer"_s, idOf(secondIdentity));
    QTRY_VERIFY(shows(secondTitle));
    m_phone.reset();
    QTRY_VERIFY(shows(localTitle));
    QTRY_COMPARE(m_music->followablePlayers().awaitedPlayer(), secondIdentity);
    startPhone(bridge.laterFirstName, bridge.laterSecondName);
    QTRY_VERIFY(shows(secondTitle));
    QCOMPARE(m_music->followablePlayers().awaitedPlayer(), QString());
}

void PlayersOfOneProcessTest::playerctldIsNoPlayerBesideThem()
{
    if (QStandardPaths::findExecutable(u"playerctld"_s).isEmpty()) {
        QSKIP("playerctld is not installed");
    }
    QProcess daemon;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus->address());
    daemon.setProcessEnvironment(environment);
    endWithParent(daemon);
    daemon.start(u"playerctld"_s, QStringList());
    QTRY_VERIFY(m_control.interface()->isServiceRegistered(u"org.mpris.MediaPlayer2.playerctld"_s));
    startLocal(false);
    startPhone(u"kdeconnect.mpris_0a1b"_s, u"kdeconnect.mpris_2c3d"_s);
    QVERIFY(tell(u"kdeconnect.mpris_2c3d"_s, u"play"_s));
    startMusic();
    QTRY_VERIFY(shows(secondTitle));
    QTRY_COMPARE(listed(), (QStringList{u"Local"_s, secondIdentity + u'*', firstIdentity}));
    daemon.kill();
    daemon.waitForFinished();
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayersOfOneProcessTest, QGuiApplication)
#include "PlayersOfOneProcessTest.moc"
