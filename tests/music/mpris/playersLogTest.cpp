// SPDX-License-Identifier: MIT
#include "music/mpris/bus/playersLog.h"
#include "DemoPlayerProcess.h"
#include "music/mpris/MprisMusicApplication.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"
#include "support/PrivateBus.h"
#include "support/registerTest.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

/// The lines that following a player writes to the log.
class playersLogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void itIsOffByDefault();
    void aTextIsCutTo200Characters();
    void controlCharactersOfATextAreSpaces();
    void aFollowedPlayerIsLoggedWithTheReason();
    void aDeadlineThatPassesIsLogged();
    void aPlayerThatRefusesToBeReadIsLogged();
    void aWrongTypeIsLoggedOnceHoweverOftenItComes();
    void nothingIsLoggedWhileTheCategoryIsOff();

private:
    void startFollowing(const QStringList &arguments);
    static bool hasLine(const QString &pattern);

    static inline QStringList m_lines;
    QtMessageHandler m_formerHandler = nullptr;
    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    ApplicationLauncher m_launcher;
    std::unique_ptr<DemoPlayerProcess> m_player;
    std::unique_ptr<MprisMusicApplication> m_music;
};

void playersLogTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
    m_folder = std::make_unique<QTemporaryDir>();
    m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"settings.conf"_s));
    m_lines.clear();
    m_formerHandler = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &context, const QString &line) {
        if (qstrcmp(context.category, "tunedeck.players") == 0) {
            m_lines.append(line);
        }
    });
    QLoggingCategory::setFilterRules(u"tunedeck.players.debug=true"_s);
}

void playersLogTest::cleanup()
{
    QLoggingCategory::setFilterRules(QString());
    qInstallMessageHandler(m_formerHandler);
    m_music.reset();
    m_player.reset();
    m_defaults.reset();
    m_bus.reset();
    QDBusConnection::disconnectFromBus(u"player"_s);
    QDBusConnection::disconnectFromBus(u"music"_s);
}

void playersLogTest::startFollowing(const QStringList &arguments)
{
    m_player = std::make_unique<DemoPlayerProcess>(*m_bus, m_bus->connect(u"player"_s), arguments);
    QVERIFY(m_player->isReady());
    m_music = std::make_unique<MprisMusicApplication>(m_bus->connect(u"music"_s), *m_defaults, m_launcher);
    QTRY_VERIFY(m_music->isReady());
}

bool playersLogTest::hasLine(const QString &pattern)
{
    return m_lines.indexOf(QRegularExpression(QRegularExpression::anchoredPattern(pattern))) >= 0;
}

void playersLogTest::itIsOffByDefault()
{
    QLoggingCategory::setFilterRules(QString());
    QVERIFY(!playersLog().isDebugEnabled());
    QVERIFY(!playersLog().isInfoEnabled());
    QVERIFY(playersLog().isWarningEnabled());
}

void playersLogTest::aTextIsCutTo200Characters()
{
    QCOMPARE(loggable(QString(200, u'x')), QString(200, u'x'));
    QCOMPARE(loggable(QString(10'000'000, u'x')).size(), 200);
}

void playersLogTest::controlCharactersOfATextAreSpaces()
{
    QCOMPARE(loggable(u"a\nb\x1b[31m\u2028c"_s), u"a b [31m c"_s);
}

void playersLogTest::aFollowedPlayerIsLoggedWithTheReason()
{
    startFollowing({u"--play"_s});
    QTRY_VERIFY(m_music->isRunning());
    QVERIFY(hasLine(u"tunedeckdemo at :1\\.\\d+ is attached"_s));
    QVERIFY(hasLine(u"Following tunedeckdemo because it plays"_s));
}

void playersLogTest::aDeadlineThatPassesIsLogged()
{
    startFollowing({u"--play"_s});
    QTRY_VERIFY(m_music->isRunning());
    m_player->freeze();
    m_music->refreshPlayer();
    QTRY_VERIFY(hasLine(u":1\\.\\d+ did not answer GetAll within 1000 ms"_s));
    m_player->thaw();
}

void playersLogTest::aPlayerThatRefusesToBeReadIsLogged()
{
    // The name has no player's object behind it, so the bus library refuses.
    QDBusConnection refusing = m_bus->connect(u"player"_s);
    QVERIFY(refusing.registerService(u"org.mpris.MediaPlayer2.refusing"_s));
    m_music = std::make_unique<MprisMusicApplication>(m_bus->connect(u"music"_s), *m_defaults, m_launcher);
    QTRY_VERIFY(
        hasLine(u"refusing at :1\\.\\d+ refused to be read: org\\.freedesktop\\.DBus\\.Error\\.UnknownObject .*"_s));
}

void playersLogTest::aWrongTypeIsLoggedOnceHoweverOftenItComes()
{
    startFollowing({u"--play"_s, u"--do"_s, u"wrong xesam:genre string Jazz"_s});
    QTRY_VERIFY(m_music->isRunning());
    const QString title = u"Once More"_s;
    QVERIFY(m_player->tell(u"title "_s + title));
    QTRY_COMPARE(m_music->currentTrack()->name, std::optional(title));
    QCOMPARE(m_lines.filter(u"xesam:genre"_s),
        QStringList{u"tunedeckdemo sends xesam:genre with the type s instead of as"_s});
}

void playersLogTest::nothingIsLoggedWhileTheCategoryIsOff()
{
    QLoggingCategory::setFilterRules(QString());
    startFollowing({u"--play"_s, u"--do"_s, u"wrong xesam:genre string Jazz"_s});
    QTRY_VERIFY(m_music->isRunning());
    QCOMPARE(m_lines, QStringList());
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::playersLogTest, QGuiApplication)
#include "playersLogTest.moc"
