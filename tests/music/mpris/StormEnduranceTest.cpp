// SPDX-License-Identifier: MIT
#include "music/MusicConnector.h"
#include "music/mpris/MprisMusicApplication.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "support/PrivateBus.h"
#include "support/TurnWatch.h"
#include "support/endWithParent.h"
#include "support/registerTest.h"

#include <QDBusConnection>
#include <QGuiApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <optional>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

constexpr int start = 20'000; // milliseconds
constexpr int longestStorm = 120'000; // milliseconds
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr qint64 longestTurn = 500; // milliseconds
#else
constexpr qint64 longestTurn = 100; // milliseconds
#endif

} // namespace

/// A hostile player is followed, and does its worst.
class StormEnduranceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void noTurnIsLong_data();
    void noTurnIsLong();
    void aWindowThatStandsStillIsRightAfterwards();

private:
    void startStorm(const QStringList &arguments);
    [[nodiscard]] bool isOver() { return m_storm->state() == QProcess::NotRunning; }

    std::optional<PrivateBus> m_bus;
    std::optional<QTemporaryDir> m_folder;
    std::optional<UserDefaults> m_defaults;
    ApplicationLauncher m_launcher;
    WindowActivation m_windowActivation;
    std::optional<QProcess> m_storm;
    std::optional<MprisMusicApplication> m_music;
    std::optional<MusicConnector> m_connector;
};

void StormEnduranceTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus.emplace();
    QVERIFY(m_bus->isRunning());
    m_folder.emplace();
    m_defaults.emplace(m_folder->filePath(u"settings.conf"_s));
    m_music.emplace(m_bus->connect(u"music"_s), *m_defaults, m_launcher);
    m_connector.emplace(*m_music, m_windowActivation);
}

void StormEnduranceTest::cleanup()
{
    m_connector.reset();
    m_music.reset();
    if (m_storm) {
        m_storm->kill();
        m_storm->waitForFinished();
        m_storm.reset();
    }
    m_defaults.reset();
    m_bus.reset();
    QDBusConnection::disconnectFromBus(u"music"_s);
}

void StormEnduranceTest::startStorm(const QStringList &arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus->address());
    m_storm.emplace();
    m_storm->setProcessEnvironment(environment);
    endWithParent(*m_storm);
    m_storm->start(QStringLiteral(STORM), arguments);
}

void StormEnduranceTest::noTurnIsLong_data()
{
    QTest::addColumn<QStringList>("storm");
    QTest::newRow("20,000 signals a second for a minute")
        << QStringList{u"signals"_s, u"--rate"_s, u"20000"_s, u"--seconds"_s, u"60"_s};
    for (const QString &type : {u"as"_s, u"av"_s, u"ay"_s, u"s"_s, u"a{sv}"_s}) {
        QTest::addRow("30 megabytes of %s in signals", qPrintable(type))
            << QStringList{u"containers"_s, u"--count"_s, u"3"_s, u"--type"_s, type, u"--seconds"_s, u"2"_s};
    }
    QTest::newRow("30 megabytes in answers") << QStringList{u"answers"_s, u"--count"_s, u"3"_s, u"--seconds"_s, u"2"_s};
}

void StormEnduranceTest::noTurnIsLong()
{
    QFETCH(const QStringList, storm);
    startStorm(storm);
    QTRY_VERIFY_WITH_TIMEOUT(m_connector->currentTrack().has_value(), start);
    TurnWatch turns;
    QTRY_VERIFY_WITH_TIMEOUT(isOver(), longestStorm);
    QTRY_VERIFY(!m_music->isRunning());
    qInfo("longest turn %lld ms", turns.longest());
    QCOMPARE(m_storm->exitCode(), 0);
    QVERIFY(turns.longest() < longestTurn);
}

void StormEnduranceTest::aWindowThatStandsStillIsRightAfterwards()
{
    startStorm({u"signals"_s, u"--rate"_s, u"20000"_s, u"--seconds"_s, u"26"_s});
    QTRY_VERIFY_WITH_TIMEOUT(m_connector->currentTrack().has_value(), start);
    // The X server seems to answer nothing for so long.
    QThread::msleep(25'000);
    QTRY_VERIFY_WITH_TIMEOUT(isOver(), longestStorm);
    QTRY_VERIFY(!m_music->isRunning());
    startStorm({u"signals"_s, u"--rate"_s, u"1"_s, u"--seconds"_s, u"20"_s});
    QTRY_VERIFY(m_connector->currentTrack().has_value());
    QCOMPARE(m_connector->currentTrack()->trackName, u"Storm"_s);
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::StormEnduranceTest, QGuiApplication)
#include "StormEnduranceTest.moc"
