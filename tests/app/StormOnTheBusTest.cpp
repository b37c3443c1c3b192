// SPDX-License-Identifier: MIT
#include "app/ApplicationInstance.h"
#include "music/mpris/DemoPlayerProcess.h"
#include "platform/Appearance.h"
#include "platform/UserDefaults.h"
#include "support/PrivateBus.h"
#include "support/TurnWatch.h"
#include "support/endWithParent.h"
#include "support/registerTest.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QSet>
#include <QSignalSpy>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <QVariantMap>

#include <chrono>
#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

constexpr int longestStorm = 120'000; // milliseconds
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
/// A sanitizer and what else runs on the machine take most of the processor's time. What never ends is still found.
constexpr int slowness = 6;
constexpr qint64 longestTurn = 1'000; // milliseconds
/// The sanitizer's own allocator keeps the memory of millions of small values.
constexpr bool canGiveSmallBlocksBack = false;
/// In percent. On Debian 13 it keeps a tenth after hundreds of thousands of signals, and no more after millions.
constexpr qint64 mostGrowth = 15;
constexpr auto manyLarge = "10"_L1; // of 10 MB each, more than may wait to be read
#else
constexpr int slowness = 1;
constexpr qint64 longestTurn = 100; // milliseconds
constexpr bool canGiveSmallBlocksBack = true;
constexpr qint64 mostGrowth = 10; // percent
constexpr auto manyLarge = "30"_L1;
#endif
constexpr int startTime = slowness * 20'000; // milliseconds
constexpr int recovery = slowness * 5'000; // milliseconds after a storm
constexpr int longestAnswer = slowness * 1'000; // milliseconds

QProcessEnvironment environmentOf(const PrivateBus &bus, const QTemporaryDir &home)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
    for (const auto &variable : {u"HOME"_s, u"XDG_CONFIG_HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_RUNTIME_DIR"_s}) {
        environment.insert(variable, home.path());
    }
    return environment;
}

QDBusMessage callOfProgram(const QString &method)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"org.tunedeck.Tunedeck"_s, u"/org/tunedeck/Tunedeck"_s, u"org.freedesktop.Application"_s, method);
    call.setAutoStartService(false);
    return call;
}

/// Ends connections with its scope, also where a test fails: the next one uses their names for a bus of its own.
auto disconnectionFrom(const QStringList &names)
{
    return qScopeGuard([names] {
        for (const QString &name : names) {
            QDBusConnection::disconnectFromBus(name);
        }
    });
}

/// An X server of the test's own, which can stand still.
class Screen {
public:
    Screen()
    {
        endWithParent(m_server);
        m_server.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s});
        while (m_server.state() != QProcess::NotRunning && !m_server.canReadLine()) {
            if (!m_server.waitForReadyRead(startTime)) {
                return;
            }
        }
        m_display = u':' + QString::fromUtf8(m_server.readLine()).trimmed();
    }
    ~Screen()
    {
        thaw();
        m_server.terminate();
        m_server.waitForFinished();
    }
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;

    [[nodiscard]] const QString &display() const { return m_display; }
    void freeze() const { ::kill(pid_t(m_server.processId()), SIGSTOP); }
    void thaw() const
    {
        if (m_server.state() != QProcess::NotRunning) {
            ::kill(pid_t(m_server.processId()), SIGCONT);
        }
    }

private:
    QProcess m_server;
    QString m_display;
};

/// Hears how often a window on a screen asks the window manager for the keyboard.
class FocusRequests {
public:
    explicit FocusRequests(const QString &display)
    {
        endWithParent(m_listener);
        m_listener.start(
            u"stdbuf"_s, {u"-oL"_s, u"xev"_s, u"-display"_s, display, u"-root"_s, u"-event"_s, u"substructure"_s});
    }
    ~FocusRequests()
    {
        m_listener.kill();
        m_listener.waitForFinished();
    }
    FocusRequests(const FocusRequests &) = delete;
    FocusRequests &operator=(const FocusRequests &) = delete;

    /// Whether it has heard of anything on the screen.
    [[nodiscard]] bool listens() { return !heard().isEmpty(); }
    [[nodiscard]] qsizetype count() { return heard().count("(_NET_ACTIVE_WINDOW)"); }

private:
    const QByteArray &heard()
    {
        m_heard += m_listener.readAllStandardOutput();
        return m_heard;
    }

    QProcess m_listener;
    QByteArray m_heard;
};

/// A token of a start that the user has asked for now, by the clock of a screen on this machine.
QVariantMap tokenOfNow()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto time = quint32(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
    return {{u"desktop-startup-id"_s, u"user_TIME%1"_s.arg(time)}};
}

/// The program on a bus of its own, with a player that it follows.
class Session {
public:
    /// The program's window is on `display`, or nowhere.
    explicit Session(const QString &display = {})
        : m_player(m_bus, m_connection, {u"--play"_s})
    {
        QProcessEnvironment environment = environmentOf(m_bus, m_home);
        if (!display.isEmpty()) {
            environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
            environment.insert(u"DISPLAY"_s, display);
        }
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
    /// What the program has in memory once that no longer grows: it answers before all that it uses is loaded.
    [[nodiscard]] qint64 settledMemory() const
    {
        constexpr qint64 rest = 500; // milliseconds
        qint64 most = 0;
        QElapsedTimer since;
        (void)QTest::qWaitFor(
            [&] {
                if (const qint64 now = memory(); now > most + most / 100) {
                    most = now;
                    since.start();
                }
                return since.hasExpired(rest);
            },
            startTime);
        return most;
    }
    [[nodiscard]] bool isRight(int patience) const
    {
        (void)m_player.takeCommands();
        QElapsedTimer clock;
        clock.start();
        return QTest::qWaitFor([this] { return isHeardWithin(longestAnswer); }, patience)
            && QTest::qWaitFor(
                [this] { return m_player.takeCommands().contains(u"Next"_s); }, int(patience - clock.elapsed()));
    }
    /// Shows the window, for which the program needs the screen's answers.
    void activate(const QVariantMap &token = {}) const
    {
        QDBusMessage call = callOfProgram(u"Activate"_s);
        call << token;
        m_connection.send(call);
    }
    [[nodiscard]] bool standsStill() const { return !isHeardWithin(500); }
    /// A further player that plays, says that it is the tab of the first one, and names a program to launch.
    [[nodiscard]] std::unique_ptr<DemoPlayerProcess> startPretender() const
    {
        return std::make_unique<DemoPlayerProcess>(m_bus, m_connection,
            QStringList{u"--name"_s, u"pretender"_s, u"--play"_s, u"--do"_s,
                u"wrong kde:pid int %1"_s.arg(m_player.processId()), u"--do"_s, u"wrong DesktopEntry string xterm"_s});
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
        QDBusMessage call = callOfProgram(u"ActivateAction"_s);
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
            u"containers"_s, u"--count"_s, manyLarge, u"--size"_s, large, u"--seconds"_s, u"0"_s};
        QTest::newRow("large answers") << QStringList{
            u"answers"_s, u"--count"_s, manyLarge, u"--size"_s, large, u"--seconds"_s, u"1"_s};
        QTest::newRow("metadata larger than may wait to be read")
            << QStringList{u"containers"_s, u"--size"_s, u"66500000"_s, u"--type"_s, u"ay"_s, u"--seconds"_s, u"0"_s};
        QTest::newRow("calls larger than may wait to be read") << QStringList{u"open"_s, u"--size"_s, u"66500000"_s};
        QTest::newRow("arguments larger than may wait to be read")
            << QStringList{u"arguments"_s, u"--size"_s, u"66500000"_s, u"--seconds"_s, u"0"_s};
        QTest::newRow("large arguments") << QStringList{
            u"arguments"_s, u"--count"_s, u"3"_s, u"--size"_s, large, u"--seconds"_s, u"0"_s};
        QTest::newRow("large messages that nobody receives")
            << QStringList{u"strays"_s, u"--size"_s, u"30000000"_s, u"--seconds"_s, u"0"_s};
        QTest::newRow("activations") << QStringList{u"activate"_s, u"--rate"_s, u"5000"_s, u"--seconds"_s, u"3"_s};
        QTest::newRow("forged changes of owners")
            << QStringList{u"forgeries"_s, u"--rate"_s, u"20000"_s, u"--seconds"_s, u"3"_s};
        QTest::newRow("made-up tokens") << QStringList{u"tokens"_s, u"--rate"_s, u"2500"_s, u"--seconds"_s, u"3"_s};
        QTest::newRow("large settings") << QStringList{
            u"settings"_s, u"--count"_s, u"3"_s, u"--size"_s, large, u"--seconds"_s, u"0"_s};
        QTest::newRow("500 players") << QStringList{
            u"players"_s, u"--count"_s, u"500"_s, u"--rate"_s, u"2200"_s, u"--seconds"_s, u"3"_s};
        QTest::newRow("3,000 names") << QStringList{
            u"names"_s, u"--count"_s, u"3000"_s, u"--rate"_s, u"2200"_s, u"--seconds"_s, u"3"_s};
        QTest::newRow("large calls") << QStringList{u"open"_s, u"--count"_s, manyLarge, u"--size"_s, large};
        QTest::newRow("signals") << QStringList{u"signals"_s, u"--rate"_s, u"20000"_s, u"--seconds"_s, u"10"_s};
    }
    void theProgramHearsAgainAfterAStorm()
    {
        QFETCH(const QStringList, storm);
        static const QSet<QString> stormsOfSmallBlocks{u"open"_s, u"arguments"_s, u"settings"_s, u"strays"_s};
        const bool hasSmallBlocks = stormsOfSmallBlocks.contains(storm.first());
        const Session session;
        QVERIFY(session.isRight(startTime));
        const qint64 before = session.settledMemory();
        QVERIFY(before > 10'000);
        QVERIFY(session.endures(storm));
        QVERIFY(session.isRight(recovery));
        const auto isBack = [&] { return session.memory() < before * (100 + mostGrowth) / 100; };
        const bool comesBack = QTest::qWaitFor(isBack, canGiveSmallBlocksBack || !hasSmallBlocks ? 2 * recovery : 0);
        qInfo("memory %lld kB before, %lld kB afterwards", before, session.memory());
        QVERIFY(comesBack || (hasSmallBlocks && !canGiveSmallBlocksBack));
        QCOMPARE(session.secondStart(), 0);
    }

    void theProgramHearsAgainAfterTheScreenStoodStill()
    {
        const Screen screen;
        QVERIFY(!screen.display().isEmpty());
        const Session session(screen.display());
        QVERIFY(session.isRight(startTime));
        screen.freeze();
        session.activate();
        QTRY_VERIFY(session.standsStill());
        QVERIFY(session.endures({u"signals"_s, u"--rate"_s, u"20000"_s, u"--seconds"_s, u"5"_s}));
        QVERIFY(session.endures(
            {u"containers"_s, u"--count"_s, u"10"_s, u"--size"_s, u"10000000"_s, u"--seconds"_s, u"0"_s}));
        QVERIFY(session.endures(
            {u"arguments"_s, u"--count"_s, u"3"_s, u"--size"_s, u"10000000"_s, u"--seconds"_s, u"0"_s}));
        QVERIFY(session.endures({u"activate"_s, u"--rate"_s, u"5000"_s, u"--seconds"_s, u"3"_s}));
        QVERIFY(session.standsStill());
        screen.thaw();
        QVERIFY(session.isRight(recovery));
        QCOMPARE(session.secondStart(), 0);
    }

    void aPlayerThatPretendsToBeAnotherLeavesNothingBehind()
    {
        const Session session;
        QVERIFY(session.isRight(startTime));
        {
            const auto pretender = session.startPretender();
            QVERIFY(pretender->isReady());
            QVERIFY(session.isRight(recovery));
        }
        QVERIFY(session.isRight(recovery));
    }

    void nobodyOnTheBusTakesTheKeyboard()
    {
        const Screen screen;
        QVERIFY(!screen.display().isEmpty());
        FocusRequests requests(screen.display());
        const Session session(screen.display());
        QVERIFY(session.isRight(startTime));
        QTRY_VERIFY(requests.listens());
        QVERIFY(session.endures({u"tokens"_s, u"--rate"_s, u"2500"_s, u"--seconds"_s, u"3"_s}));
        QVERIFY(session.isRight(recovery));
        QCOMPARE(requests.count(), 0);
        session.activate(tokenOfNow());
        QTRY_COMPARE(requests.count(), 1);
    }

    void largeSettingsAreNotFelt()
    {
        const PrivateBus bus;
        const auto disconnects = disconnectionFrom({u"the portal's"_s, u"the program's"_s});
        const QTemporaryDir home;
        UserDefaults defaults(home.filePath(u"tunedeck.conf"_s));
        const Appearance appearance(defaults, bus.connect(u"the program's"_s));
        // Qt waits for the thread that reads every connection when it makes one.
        const QDBusConnection portal = bus.connect(u"the portal's"_s);
        QProcess process;
        process.setProcessEnvironment(environmentOf(bus, home));
        endWithParent(process);
        TurnWatch turns;
        for (const auto &type : {u"as"_s, u"av"_s, u"s"_s}) {
            process.start(QStringLiteral(STORM),
                {u"settings"_s, u"--size"_s, u"40000000"_s, u"--type"_s, type, u"--seconds"_s, u"0"_s});
            QTRY_COMPARE_WITH_TIMEOUT(process.state(), QProcess::NotRunning, 60'000);
            QCOMPARE(process.exitCode(), 0);
        }
        QDBusMessage change = QDBusMessage::createSignal(
            u"/org/freedesktop/portal/desktop"_s, u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s);
        change << u"org.freedesktop.appearance"_s << u"color-scheme"_s << QVariant::fromValue(QDBusVariant(1U));
        portal.send(change);
        QTRY_COMPARE_WITH_TIMEOUT(appearance.effectiveAppearance(), AppearanceName::DarkAqua, 30'000);
        qInfo("longest turn %lld ms, most work in a turn %lld ms", turns.longest(), turns.mostWork());
        // A turn lasts by the clock as long as a thread that holds a lock is kept waiting by other programs.
        QVERIFY(turns.mostWork() < longestTurn);
    }

    void largeCallsAreNotFelt_data()
    {
        QTest::addColumn<QStringList>("storm");
        QTest::newRow("thousands of files") << QStringList{u"open"_s, u"--size"_s, u"40000000"_s};
        QTest::newRow("large arguments") << QStringList{u"arguments"_s, u"--size"_s, u"40000000"_s};
        QTest::newRow("many calls") << QStringList{u"arguments"_s, u"--size"_s, u"60000"_s, u"--count"_s, u"300"_s};
    }
    void largeCallsAreNotFelt()
    {
        QFETCH(const QStringList, storm);
        const PrivateBus bus;
        const auto disconnects = disconnectionFrom({u"a caller's"_s, u"the program's"_s});
        const ApplicationInstance instance(bus.connect(u"the program's"_s));
        const QSignalSpy activated(&instance, &ApplicationInstance::activated);
        // Qt waits for the thread that reads every connection when it makes one.
        const QDBusConnection caller = bus.connect(u"a caller's"_s);
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
        process.setProcessEnvironment(environment);
        endWithParent(process);
        TurnWatch turns;
        process.start(QStringLiteral(STORM), storm + QStringList{u"--seconds"_s, u"0"_s});
        QTRY_COMPARE_WITH_TIMEOUT(process.state(), QProcess::NotRunning, 60'000);
        // An answer to a call comes after those before it have been refused or handled.
        const auto isAnswered = [&caller] {
            QDBusMessage call = callOfProgram(u"Activate"_s);
            call << QVariantMap();
            const QDBusPendingCall answer = caller.asyncCall(call);
            return QTest::qWaitFor([&answer] { return answer.isFinished(); }, 30'000) && !answer.isError();
        };
        QTRY_VERIFY_WITH_TIMEOUT(isAnswered(), 30'000);
        qInfo("longest turn %lld ms, most work in a turn %lld ms", turns.longest(), turns.mostWork());
        // A turn lasts by the clock as long as a thread that holds a lock is kept waiting by other programs.
        QVERIFY(turns.mostWork() < longestTurn);
        QTRY_VERIFY(activated.count() > 0);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::StormOnTheBusTest, QGuiApplication)
#include "StormOnTheBusTest.moc"
