// SPDX-License-Identifier: MIT
#include "music/mpris/MprisFollowablePlayers.h"
#include "DemoPlayerProcess.h"
#include "music/mpris/FollowedPlayer.h"
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

const QString followedPlayer = u"FollowedPlayer"_s;

} // namespace

/// The list for the menus over a real bus, with demo players as processes of their own.
class MprisFollowablePlayersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aPlayerIsListedWhileItRuns();
    void whatItPlaysIsShown();
    void aNameIsShortAndKeepsItsDirection();
    void oneThatIsNeverFollowedIsNotListed();
    void onePinnedIsListedThoughItIsNeverFollowed();
    void thePinnedPlayerKeepsItsIdentifierWhenASecondOfItsFamilyComes();
    void thePinnedPlayerKeepsItsIdentifierWhenTheOtherOfItsFamilyGoes();
    void onlyARunningPlayerCanBeLeftOut();
    void thePinnedPlayerIsAwaitedByItsName();
    void changesAreAnnouncedTogether();

private:
    std::unique_ptr<DemoPlayerProcess> start(const QStringList &arguments);
    void startFollowing();
    [[nodiscard]] QStringList ids() const;

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<FollowedPlayer> m_followed;
    std::unique_ptr<MprisFollowablePlayers> m_players;
    int m_connections = 0;
};

void MprisFollowablePlayersTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
    m_folder = std::make_unique<QTemporaryDir>();
    m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"settings.conf"_s));
}

void MprisFollowablePlayersTest::cleanup()
{
    m_players.reset();
    m_followed.reset();
    m_defaults.reset();
    m_bus.reset();
    for (; m_connections > 0; --m_connections) {
        QDBusConnection::disconnectFromBus(QString::number(m_connections));
    }
}

std::unique_ptr<DemoPlayerProcess> MprisFollowablePlayersTest::start(const QStringList &arguments)
{
    const QDBusConnection control = m_bus->connect(QString::number(++m_connections));
    return std::make_unique<DemoPlayerProcess>(*m_bus, control, arguments);
}

void MprisFollowablePlayersTest::startFollowing()
{
    m_followed = std::make_unique<FollowedPlayer>(
        m_bus->connect(QString::number(++m_connections)), *m_defaults, std::chrono::steady_clock::now);
    m_players = std::make_unique<MprisFollowablePlayers>(*m_followed, *m_defaults);
    QTRY_VERIFY(m_followed->isReady());
}

QStringList MprisFollowablePlayersTest::ids() const
{
    QStringList ids;
    const QList<FollowablePlayer> players = m_players->followablePlayers();
    for (const FollowablePlayer &player : players) {
        ids.append(player.id);
    }
    return ids;
}

void MprisFollowablePlayersTest::aPlayerIsListedWhileItRuns()
{
    startFollowing();
    QSignalSpy changed(m_players.get(), &FollowablePlayers::followablePlayersChanged);
    QCOMPARE(ids(), QStringList());
    std::unique_ptr<DemoPlayerProcess> player = start({u"--name"_s, u"player.instance12"_s});
    QVERIFY(changed.wait());
    QTRY_COMPARE(m_players->followablePlayers(),
        (QList<FollowablePlayer>{{.id = u"player"_s,
            .name = u"Tunedeck Demo Player"_s,
            .desktopEntry = u"tunedeck-demo-player"_s,
            .title = {},
            .isFollowed = true}}));
    player.reset();
    QVERIFY(changed.wait());
    QTRY_COMPARE(ids(), QStringList());
}

void MprisFollowablePlayersTest::whatItPlaysIsShown()
{
    const auto player = start({u"--play"_s, u"--track"_s, u"1"_s, u"--do"_s, u"title Quince Harbour Timetable"_s});
    startFollowing();
    QCOMPARE(m_players->followablePlayers().value(0).title, u"Quince Harbour Timetable"_s);
    QVERIFY(player->tell(u"title "_s + QString(100, u'x')));
    QTRY_COMPARE(m_players->followablePlayers().value(0).title, QString(59, u'x') + u'…');
    QVERIFY(player->tell(u"stop"_s));
    QTRY_COMPARE(m_players->followablePlayers().value(0).title, QString());
}

void MprisFollowablePlayersTest::aNameIsShortAndKeepsItsDirection()
{
    const auto player = start({u"--do"_s, u"wrong Identity string \u202e"_s + QString(100, u'x')});
    startFollowing();
    QCOMPARE(m_players->followablePlayers().value(0).name, QString(59, u'x') + u'…');
}

void MprisFollowablePlayersTest::oneThatIsNeverFollowedIsNotListed()
{
    const auto first = start({u"--name"_s, u"first"_s});
    const auto second = start({u"--name"_s, u"second"_s, u"--play"_s});
    startFollowing();
    QCOMPARE(m_followed->player()->name(), u"second"_s);
    m_players->neverFollow(u"second"_s);
    QTRY_COMPARE(m_followed->player()->name(), u"first"_s);
    QCOMPARE(ids(), QStringList{u"first"_s});
    QCOMPARE(m_players->neverFollowedPlayers(), (QList<NeverFollowedPlayer>{{u"second"_s, u"Tunedeck Demo Player"_s}}));
    m_players->allowToFollow(u"second"_s);
    QTRY_COMPARE(m_followed->player()->name(), u"second"_s);
    QCOMPARE(m_players->neverFollowedPlayers(), QList<NeverFollowedPlayer>());
}

void MprisFollowablePlayersTest::onePinnedIsListedThoughItIsNeverFollowed()
{
    const auto player = start({u"--name"_s, u"player"_s});
    startFollowing();
    m_defaults->setValue(followedPlayer, u"player"_s);
    m_players->neverFollow(u"player"_s);
    QCOMPARE(m_defaults->stringForKey(followedPlayer), QString());
    QTRY_VERIFY(!m_followed->player());
    m_defaults->setValue(followedPlayer, u"player"_s);
    QTRY_VERIFY(m_followed->player());
    QCOMPARE(ids(), QStringList{u"player"_s});
}

void MprisFollowablePlayersTest::thePinnedPlayerKeepsItsIdentifierWhenASecondOfItsFamilyComes()
{
    const auto first = start({u"--name"_s, u"player"_s});
    startFollowing();
    m_defaults->setValue(followedPlayer, u"player"_s);
    const auto second = start({u"--name"_s, u"player.instance12"_s});
    QTRY_COMPARE(ids(), (QStringList{u"player"_s, u"player/player.instance12/Tunedeck Demo Player"_s}));
    m_players->neverFollow(ids().constFirst());
    QCOMPARE(m_defaults->stringForKey(followedPlayer), QString());
    QTRY_VERIFY(!m_followed->player());
}

void MprisFollowablePlayersTest::thePinnedPlayerKeepsItsIdentifierWhenTheOtherOfItsFamilyGoes()
{
    const QString pinned = u"player/player/Tunedeck Demo Player"_s;
    const auto first = start({u"--name"_s, u"player"_s});
    startFollowing();
    QCOMPARE(ids(), QStringList{u"player"_s});
    m_defaults->setValue(followedPlayer, pinned);
    QCOMPARE(ids(), QStringList{pinned});
    m_players->neverFollow(pinned);
    QCOMPARE(m_defaults->stringForKey(followedPlayer), QString());
    QTRY_VERIFY(!m_followed->player());
}

void MprisFollowablePlayersTest::onlyARunningPlayerCanBeLeftOut()
{
    startFollowing();
    m_players->neverFollow(u"anything"_s);
    QCOMPARE(m_players->neverFollowedPlayers(), QList<NeverFollowedPlayer>());
}

void MprisFollowablePlayersTest::thePinnedPlayerIsAwaitedByItsName()
{
    std::unique_ptr<DemoPlayerProcess> player = start({u"--name"_s, u"player"_s, u"--play"_s});
    startFollowing();
    QCOMPARE(m_players->awaitedPlayer(), QString());
    m_defaults->setValue(followedPlayer, u"other"_s);
    QCOMPARE(m_players->awaitedPlayer(), u"other"_s);
    m_defaults->setValue(followedPlayer, u"player"_s);
    QCOMPARE(m_players->awaitedPlayer(), QString());
    QSignalSpy changed(m_players.get(), &FollowablePlayers::followablePlayersChanged);
    player.reset();
    QVERIFY(changed.wait());
    QTRY_COMPARE(m_players->awaitedPlayer(), u"Tunedeck Demo Player"_s);
}

void MprisFollowablePlayersTest::changesAreAnnouncedTogether()
{
    const auto player = start({u"--play"_s});
    startFollowing();
    QSignalSpy changed(m_players.get(), &FollowablePlayers::followablePlayersChanged);
    m_defaults->setValue(followedPlayer, u"player"_s);
    QVERIFY(changed.wait());
    changed.clear();
    for (int i = 0; i < 20; ++i) {
        m_defaults->setValue(followedPlayer, QString::number(i));
    }
    QVERIFY(changed.wait());
    QCOMPARE(changed.count(), 1);
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::MprisFollowablePlayersTest, QGuiApplication)
#include "MprisFollowablePlayersTest.moc"
