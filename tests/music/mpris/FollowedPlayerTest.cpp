// SPDX-License-Identifier: MIT
#include "music/mpris/FollowedPlayer.h"
#include "DemoPlayerProcess.h"
#include "platform/UserDefaults.h"
#include "support/PrivateBus.h"
#include "support/elapse.h"
#include "support/registerTest.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

/// The followed player over a real bus, with demo players as processes of their own.
class FollowedPlayerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theOneThatPlaysIsFollowed();
    void openingLaunchesThePinnedPlayerByTheEntryThatItNamed_data();
    void openingLaunchesThePinnedPlayerByTheEntryThatItNamed();
    void thePinnedPlayersNewEntryIsRememberedEvenIfItIsItsFamily();
    void thePinnedPlayersEntryIsOfNoUseForAnother();
    void onlyAPlayerThatHasPlayedIsRemembered();
    void whatIsRememberedIsWrittenOnceInTenSeconds();
    void anEntryThatIsNoFileNameIsNotRemembered_data();
    void anEntryThatIsNoFileNameIsNotRemembered();
    void aSandboxedPlayerIsRememberedByItsOwnEntryAlone();

private:
    [[nodiscard]] std::unique_ptr<DemoPlayerProcess> newPlayer(const QStringList &arguments);
    void startPlayer(const QStringList &arguments);
    void startFollowing();
    /// The text in the settings when all that has to be remembered is written.
    [[nodiscard]] QString remembered(const QString &key) const;
    /// Makes it look as if the player runs in the Flatpak of `application`.
    void putIntoFlatpak(const DemoPlayerProcess &player, const QString &application);

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<DemoPlayerProcess> m_player;
    std::unique_ptr<FollowedPlayer> m_followed;
    QString m_processes = u"/proc"_s;
    int m_connections = 0;
};

void FollowedPlayerTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
    m_folder = std::make_unique<QTemporaryDir>();
    m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"settings.conf"_s));
}

void FollowedPlayerTest::cleanup()
{
    m_followed.reset();
    m_player.reset();
    m_defaults.reset();
    m_bus.reset();
    m_processes = u"/proc"_s;
    for (; m_connections > 0; --m_connections) {
        QDBusConnection::disconnectFromBus(QString::number(m_connections));
    }
}

std::unique_ptr<DemoPlayerProcess> FollowedPlayerTest::newPlayer(const QStringList &arguments)
{
    const QDBusConnection control = m_bus->connect(QString::number(++m_connections));
    return std::make_unique<DemoPlayerProcess>(*m_bus, control, arguments);
}

void FollowedPlayerTest::startPlayer(const QStringList &arguments)
{
    m_player = newPlayer(arguments);
    QVERIFY(m_player->isReady());
}

void FollowedPlayerTest::startFollowing()
{
    m_followed = std::make_unique<FollowedPlayer>(m_bus->connect(QString::number(++m_connections)), *m_defaults,
        std::chrono::steady_clock::now, nullptr, m_processes);
    QTRY_VERIFY(m_followed->isReady());
}

void FollowedPlayerTest::putIntoFlatpak(const DemoPlayerProcess &player, const QString &application)
{
    m_processes = m_folder->filePath(u"processes"_s);
    const QString root = u"%1/%2/root"_s.arg(m_processes).arg(player.processId());
    QVERIFY(QDir().mkpath(root));
    QFile information(root + u"/.flatpak-info"_s);
    QVERIFY(information.open(QIODevice::WriteOnly));
    QVERIFY(information.write(u"[Application]\nname=%1\n"_s.arg(application).toUtf8()) > 0);
}

QString FollowedPlayerTest::remembered(const QString &key) const
{
    elapse(*m_followed->findChild<QTimer *>(u"memoryTimer"_s));
    return m_defaults->stringForKey(key);
}

void FollowedPlayerTest::theOneThatPlaysIsFollowed()
{
    startPlayer({u"--name"_s, u"idle"_s});
    const std::unique_ptr<DemoPlayerProcess> playing =
        newPlayer({u"--name"_s, u"playing"_s, u"--play"_s, u"--track"_s, u"1"_s});
    QVERIFY(playing->isReady());
    startFollowing();
    QCOMPARE(m_followed->player()->name(), u"playing"_s);
}

void FollowedPlayerTest::openingLaunchesThePinnedPlayerByTheEntryThatItNamed_data()
{
    QTest::addColumn<QString>("pin");
    QTest::newRow("its family") << u"favourite"_s;
    QTest::newRow("one of its family") << u"favourite/favourite/Tunedeck Demo Player"_s;
    QTest::newRow("whatever its name") << u"favourite//Tunedeck Demo Player"_s;
}

void FollowedPlayerTest::openingLaunchesThePinnedPlayerByTheEntryThatItNamed()
{
    QFETCH(const QString, pin);
    std::unique_ptr<DemoPlayerProcess> other = newPlayer({u"--name"_s, u"other"_s, u"--play"_s});
    QVERIFY(other->isReady());
    startPlayer({u"--play"_s, u"--name"_s, u"favourite"_s, u"--do"_s, u"wrong DesktopEntry string org.Favourite"_s});
    startFollowing();
    m_defaults->setValue(u"FollowedPlayer"_s, pin);
    QTRY_COMPARE(remembered(u"FollowedPlayerEntry"_s), pin + u"/org.Favourite"_s);
    m_player.reset();
    QTRY_COMPARE(remembered(u"LastFollowedPlayer"_s), u"tunedeck-demo-player"_s);
    other.reset();
    QTRY_VERIFY(!m_followed->player());
    QCOMPARE(
        m_followed->entriesToLaunch(), (QStringList{u"org.Favourite"_s, u"favourite"_s, u"tunedeck-demo-player"_s}));
}

void FollowedPlayerTest::thePinnedPlayersNewEntryIsRememberedEvenIfItIsItsFamily()
{
    m_defaults->setValue(u"FollowedPlayer"_s, u"favourite"_s);
    m_defaults->setValue(u"FollowedPlayerEntry"_s, u"favourite/org.Former"_s);
    startPlayer({u"--play"_s, u"--name"_s, u"favourite"_s, u"--do"_s, u"wrong DesktopEntry string favourite"_s});
    startFollowing();
    QTRY_COMPARE(remembered(u"FollowedPlayerEntry"_s), u"favourite/favourite"_s);
    QCOMPARE(remembered(u"LastFollowedPlayer"_s), u"favourite"_s);
}

void FollowedPlayerTest::onlyAPlayerThatHasPlayedIsRemembered()
{
    startPlayer({u"--name"_s, u"quiet"_s});
    startFollowing();
    QVERIFY(m_followed->player());
    QVERIFY(!m_followed->findChild<QTimer *>(u"memoryTimer"_s)->isActive());
    QCOMPARE(m_followed->entriesToLaunch(), QStringList());
    QVERIFY(m_player->tell(u"play"_s));
    QTRY_COMPARE(remembered(u"LastFollowedPlayer"_s), u"tunedeck-demo-player"_s);
}

void FollowedPlayerTest::whatIsRememberedIsWrittenOnceInTenSeconds()
{
    startPlayer({u"--play"_s, u"--name"_s, u"player"_s});
    startFollowing();
    QTRY_COMPARE(remembered(u"LastFollowedPlayer"_s), u"tunedeck-demo-player"_s);
    QVERIFY(m_player->tell(u"wrong DesktopEntry string org.Other"_s));
    QTRY_COMPARE(m_followed->entriesToLaunch(), QStringList{u"org.Other"_s});
    const QTimer &timer = *m_followed->findChild<QTimer *>(u"memoryTimer"_s);
    QVERIFY(timer.isActive() && timer.intervalAsDuration() > std::chrono::seconds(5));
    QCOMPARE(m_defaults->stringForKey(u"LastFollowedPlayer"_s), u"tunedeck-demo-player"_s);
    m_followed.reset();
    QCOMPARE(m_defaults->stringForKey(u"LastFollowedPlayer"_s), u"org.Other"_s);
}

void FollowedPlayerTest::thePinnedPlayersEntryIsOfNoUseForAnother()
{
    m_defaults->setValue(u"FollowedPlayer"_s, u"favourite"_s);
    m_defaults->setValue(u"FollowedPlayerEntry"_s, u"former/org.Former"_s);
    startFollowing();
    QCOMPARE(m_followed->entriesToLaunch(), QStringList{u"favourite"_s});
}

void FollowedPlayerTest::anEntryThatIsNoFileNameIsNotRemembered_data()
{
    QTest::addColumn<QString>("entry");
    QTest::newRow("a path") << u"string ../../bin/harm"_s;
    QTest::newRow("too long for a file") << u"string "_s + QString(256, u'x');
    QTest::newRow("no text") << u"int 7"_s;
    QTest::newRow("nothing") << u"empty"_s;
}

void FollowedPlayerTest::anEntryThatIsNoFileNameIsNotRemembered()
{
    QFETCH(const QString, entry);
    m_defaults->setValue(u"FollowedPlayer"_s, u"odd"_s);
    startPlayer({u"--play"_s, u"--name"_s, u"odd.instance1"_s, u"--do"_s, u"wrong DesktopEntry "_s + entry});
    startFollowing();
    QTRY_COMPARE(remembered(u"LastFollowedPlayer"_s), u"odd"_s);
    m_player.reset();
    QTRY_VERIFY(!m_followed->player());
    QCOMPARE(remembered(u"FollowedPlayerEntry"_s), QString());
    QCOMPARE(remembered(u"LastFollowedPlayer"_s), u"odd"_s);
}

void FollowedPlayerTest::aSandboxedPlayerIsRememberedByItsOwnEntryAlone()
{
    m_defaults->setValue(u"FollowedPlayer"_s, u"boxed"_s);
    startPlayer({u"--play"_s, u"--name"_s, u"boxed"_s, u"--do"_s, u"wrong DesktopEntry string victim"_s});
    putIntoFlatpak(*m_player, u"org.example.Boxed"_s);
    startFollowing();
    QTRY_COMPARE(remembered(u"LastFollowedPlayer"_s), u"org.example.Boxed"_s);
    QCOMPARE(remembered(u"FollowedPlayerEntry"_s), u"boxed/org.example.Boxed"_s);
    QCOMPARE(m_followed->entriesToLaunch(), (QStringList{u"org.example.Boxed"_s, u"boxed"_s, u"org.example.Boxed"_s}));
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::FollowedPlayerTest, QGuiApplication)
#include "FollowedPlayerTest.moc"
