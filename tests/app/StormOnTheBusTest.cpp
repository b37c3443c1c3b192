// SPDX-License-Identifier: MIT
#include "app/ApplicationInstance.h"
#include "music/mpris/DemoPlayerProcess.h"
#include "support/PrivateBus.h"
#include "support/TurnWatch.h"
#include "support/endWithParent.h"
#include "support/registerTest.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

constexpr int startTime = 20'000; // milliseconds
constexpr int longestStorm = 120'000; // milliseconds
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr qint64 longestTurn = 1'000; // milliseconds
#else
constexpr qint64 longestTurn = 100; // milliseconds
#endif
constexpr int recovery = 5'000; // milliseconds after a storm

QProcessEnvironment environmentOf(const PrivateBus &bus, const QTemporaryDir &home)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
    for (const auto &variable : {u"HOME"_s, u"XDG_CONFIG_HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_RUNTIME_DIR"_s}) {
        environment.insert(variable, home.path());
    }
    return environment;
}

/// The program on a bus of its own, with a player that it follows.
class Session {
public:
    Session()
        : m_player(m_bus, m_connection, {u"--play"_s})
    {
        QProcessEnvironment environment = environmentOf(m_bus, m_home);
        // The address sanitizer would keep 256 MB of what the program has freed.
        environment.insert(u"ASAN_OPTIONS"_s,
            environment.value(u"ASAN_OPTIONS"_s)
                + u":quarantine_size_mb=1:thread_local_quarantine_size_kb=64:allocator_release_to_os_interval_ms=500"_s);
        m_program.setProcessEnvironment(environment);
        endWithParent(m_program);
        m_program.start(QStringLiteral(TUNEDECK_PROGRAM), QStringList());
    }
    ~Session()
    {
        m_program.kill();
        m_program.waitForFinished();
        QDBusConnection::disconnectFromBus(u"the session's"_s);
    }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /// Kilobytes that the program has in memory.
    [[nodiscard]] qint64 memory() const
    {
        QFile status(u"/proc/%1/status"_s.arg(m_program.processId()));
        const QString text = status.open(QIODevice::ReadOnly) ? QString::fromUtf8(status.readAll()) : QString();
        return QRegularExpression(u"VmRSS:\\s+(\\d+)"_s).match(text).captured(1).toLongLong();
    }
    [[nodiscard]] bool isRight(int patience) const
    {
        (void)m_player.takeCommands();
        QElapsedTimer clock;
        clock.start();
        return QTest::qWaitFor([this] { return isHeardWithin(1'000); }, patience)
            && QTest::qWaitFor(
                [this] { return m_player.takeCommands().contains(u"Next"_s); }, int(patience - clock.elapsed()));
    }
    /// Runs a storm to its end. False if it cannot be run.
    [[nodiscard]] bool endures(const QStringList &storm) const
    {
        QProcess process;
        process.setProcessEnvironment(environmentOf(m_bus, m_home));
        endWithParent(process);
        process.start(QStringLiteral(STORM), storm);
        return QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; }, longestStorm)
            && process.exitCode() == 0;
    }
    /// Exit status of a second start that carries out an action.
    [[nodiscard]] int secondStart() const
    {
        QProcess process;
        process.setProcessEnvironment(environmentOf(m_bus, m_home));
        endWithParent(process);
        process.start(QStringLiteral(TUNEDECK_PROGRAM), {u"--action"_s, u"next"_s});
        return process.waitForFinished(recovery) ? process.exitCode() : -1;
    }

private:
    /// Whether the program answers when it is asked for the next track.
    [[nodiscard]] bool isHeardWithin(int milliseconds) const
    {
        QDBusMessage call = QDBusMessage::createMethodCall(u"org.tunedeck.Tunedeck"_s, u"/org/tunedeck/Tunedeck"_s,
            u"org.freedesktop.Application"_s, u"ActivateAction"_s);
        call.setAutoStartService(false);
        call << u"next"_s << QVariantList() << QVariantMap();
        const QDBusPendingCall answer = m_connection.asyncCall(call, milliseconds);
        return QTest::qWaitFor([&answer] { return answer.isFinished(); }, milliseconds) && !answer.isError();
    }

    QTemporaryDir m_home;
    PrivateBus m_bus;
    QDBusConnection m_connection = m_bus.connect(u"the session's"_s);
    DemoPlayerProcess m_player;
    QProcess m_program;
};

} // namespace

/// Any program of the session may send anything. When it is gone, the program hears the others again.
class StormOnTheBusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theProgramHearsAgainAfterAStorm_data()
    {
        QTest::addColumn<QStringList>("storm");
        const QString large = u"10000000"_s;
        QTest::newRow("large metadata") << QStringList{
            u"containers"_s, u"--count"_s, u"30"_s, u"--size"_s, large, u"--seconds"_s, u"0"_s};
        QTest::newRow("large answers") << QStringList{
            u"answers"_s, u"--count"_s, u"30"_s, u"--size"_s, large, u"--seconds"_s, u"1"_s};
        QTest::newRow("metadata larger than may wait to be read")
            << QStringList{u"containers"_s, u"--size"_s, u"66500000"_s, u"--type"_s, u"ay"_s, u"--seconds"_s, u"0"_s};
        QTest::newRow("calls larger than may wait to be read") << QStringList{u"open"_s, u"--size"_s, u"66500000"_s};
        QTest::newRow("large calls") << QStringList{u"open"_s, u"--count"_s, u"30"_s, u"--size"_s, large};
        QTest::newRow("signals") << QStringList{u"signals"_s, u"--rate"_s, u"20000"_s, u"--seconds"_s, u"10"_s};
    }
    void theProgramHearsAgainAfterAStorm()
    {
        QFETCH(const QStringList, storm);
        const Session session;
        QVERIFY(session.isRight(startTime));
        const qint64 before = session.memory();
        QVERIFY(before > 10'000);
        QVERIFY(session.endures(storm));
        QVERIFY(session.isRight(recovery));
        // glibc keeps what Qt has unpacked of a call before the program sees it.
        if (storm.first() != u"open") {
            QTRY_VERIFY_WITH_TIMEOUT(session.memory() < before + before / 10, 10'000);
        }
        qInfo("memory %lld kB before, %lld kB afterwards", before, session.memory());
        QCOMPARE(session.secondStart(), 0);
    }

    void thousandsOfFilesAreNotFelt()
    {
        const PrivateBus bus;
        const ApplicationInstance instance(bus.connect(u"the program's"_s));
        const QSignalSpy activated(&instance, &ApplicationInstance::activated);
        QProcess storm;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
        storm.setProcessEnvironment(environment);
        endWithParent(storm);
        TurnWatch turns;
        storm.start(QStringLiteral(STORM), {u"open"_s, u"--size"_s, u"40000000"_s, u"--seconds"_s, u"0"_s});
        QTRY_COMPARE_WITH_TIMEOUT(activated.count(), 1, 30'000);
        QTRY_COMPARE_WITH_TIMEOUT(storm.state(), QProcess::NotRunning, 30'000);
        qInfo("longest turn %lld ms", turns.longest());
        QVERIFY(turns.longest() < longestTurn);
        QDBusConnection::disconnectFromBus(u"the program's"_s);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::StormOnTheBusTest, QCoreApplication)
#include "StormOnTheBusTest.moc"
