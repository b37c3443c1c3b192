// SPDX-License-Identifier: MIT
#include "DemoPlayerProcess.h"
#include "PrivateBus.h"
#include "endWithParent.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <optional>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {
/// A home whose bus starts the program when it is called, and nothing else.
class Home {
public:
    Home()
    {
        for (const char *variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"}) {
            qputenv(variable, m_folder.path().toUtf8());
        }
        QDir(m_folder.path()).mkpath(u"dbus-1/services"_s);
        // Even if the test is killed, what the bus has started ends.
        write(u"org.tunedeck.Tunedeck"_s, QStringLiteral("/usr/bin/timeout 60 " TUNEDECK_PROGRAM));
        write(u"org.freedesktop.portal.Desktop"_s, u"/bin/false"_s);
    }

private:
    void write(const QString &name, const QString &program)
    {
        QFile service(m_folder.filePath(u"dbus-1/services/%1.service"_s.arg(name)));
        if (service.open(QIODevice::WriteOnly)) {
            service.write(u"[D-BUS Service]\nName=%1\nExec=%2\n"_s.arg(name, program).toUtf8());
        }
    }

    QTemporaryDir m_folder;
};

/// A session with a player in it.
struct Session {
    explicit Session(const QStringList &playerArguments)
        : player(bus, connection, playerArguments)
    {
    }
    ~Session()
    {
        if (const QDBusReply<uint> program = connection.interface()->servicePid(u"org.tunedeck.Tunedeck"_s);
            program.isValid()) {
            ::kill(pid_t(program.value()), SIGKILL);
        }
        QDBusConnection::disconnectFromBus(u"the session's"_s);
    }
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /// Calls the program, which the bus starts where it does not run.
    [[nodiscard]] QDBusMessage call(const QString &method, const QVariantList &arguments) const
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            u"org.tunedeck.Tunedeck"_s, u"/org/tunedeck/Tunedeck"_s, u"org.freedesktop.Application"_s, method);
        message.setArguments(arguments);
        const QDBusPendingCall answer = connection.asyncCall(message);
        return QTest::qWaitFor([&answer] { return answer.isFinished(); }, 20'000) ? answer.reply() : QDBusMessage();
    }
    [[nodiscard]] bool isProgramRunning() const
    {
        return connection.interface()->isServiceRegistered(u"org.tunedeck.Tunedeck"_s);
    }
    /// The commands that came while `count` of them were waited for.
    [[nodiscard]] QStringList commands(qsizetype count) const
    {
        QStringList commands;
        const bool areAllThere = QTest::qWaitFor([this, &commands, count] {
            commands += player.takeCommands();
            return commands.size() >= count;
        });
        return areAllThere ? commands : commands + QStringList{u"and no more"_s};
    }

    Home home;
    PrivateBus bus;
    QDBusConnection connection = bus.connect(u"the session's"_s);
    DemoPlayerProcess player;
};

/// The program started from a command line.
class CommandLine {
public:
    CommandLine(const Session &session, const QStringList &arguments)
        : CommandLine(session.bus.address(), arguments)
    {
    }
    CommandLine(const QString &busAddress, const QStringList &arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, busAddress);
        m_process.setProcessEnvironment(environment);
        endWithParent(m_process);
        m_process.start(QStringLiteral(TUNEDECK_PROGRAM), arguments);
    }
    ~CommandLine()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    CommandLine(const CommandLine &) = delete;
    CommandLine &operator=(const CommandLine &) = delete;

    [[nodiscard]] bool isRunning() const { return m_process.state() == QProcess::Running; }
    [[nodiscard]] int exitCode() { return m_process.waitForFinished(20'000) ? m_process.exitCode() : -1; }
    [[nodiscard]] QString said() { return QString::fromUtf8(m_process.readAllStandardError()); }

private:
    QProcess m_process;
};

QVariantList action(const QString &name)
{
    return {name, QVariantList(), QVariantMap()};
}
} // namespace

class StartOnTheBusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void anActionStartsTheProgramAndIsCarriedOut_data()
    {
        QTest::addColumn<QStringList>("playerArguments");
        QTest::newRow("a player that answers at once") << QStringList{u"--play"_s};
        QTest::newRow("a player that answers when the window is there already")
            << QStringList{u"--play"_s, u"--do"_s, u"late 150"_s};
    }
    void anActionStartsTheProgramAndIsCarriedOut()
    {
        QFETCH(const QStringList, playerArguments);
        const Session session(playerArguments);
        QVERIFY(session.player.isReady());
        QVERIFY(!session.isProgramRunning());
        QCOMPARE(session.call(u"ActivateAction"_s, action(u"next"_s)).type(), QDBusMessage::ReplyMessage);
        QVERIFY(session.isProgramRunning());
        QCOMPARE(session.commands(1), {u"Next"_s});
    }

    void anActionReachesTheProgramThatRuns()
    {
        const Session session({u"--play"_s});
        QCOMPARE(session.call(u"Activate"_s, {QVariantMap()}).type(), QDBusMessage::ReplyMessage);
        QCOMPARE(session.call(u"ActivateAction"_s, action(u"no such action"_s)).type(), QDBusMessage::ReplyMessage);
        QCOMPARE(session.call(u"ActivateAction"_s, action(u"next"_s)).type(), QDBusMessage::ReplyMessage);
        QCOMPARE(session.commands(1), {u"Next"_s});
    }

    void aCommandLineAsksTheProgramThatRuns()
    {
        const Session session({u"--play"_s});
        QCOMPARE(session.call(u"Activate"_s, {QVariantMap()}).type(), QDBusMessage::ReplyMessage);
        CommandLine line(session, {u"--action"_s, u"play-pause"_s});
        QCOMPARE(line.exitCode(), 0);
        QCOMPARE(session.commands(1), {u"PlayPause"_s});
        QVERIFY(session.isProgramRunning());
    }

    void aCommandLineStartsTheProgramWithItsAction()
    {
        const Session session({u"--play"_s});
        const CommandLine line(session, {u"--action"_s, u"next"_s});
        QCOMPARE(session.commands(1), {u"Next"_s});
        QVERIFY(session.isProgramRunning());
    }

    void aCommandLineWithAnUnknownActionDoesNothing()
    {
        const Session session({u"--play"_s});
        CommandLine line(session, {u"--action"_s, u"quit"_s});
        QCOMPARE(line.exitCode(), 1);
        QVERIFY(line.said().endsWith(u"tunedeck: there is no such action; --help tells which there are\n"_s));
        QVERIFY(!session.isProgramRunning());
    }

    void aBusThatGoesAwayAndComesBackIsTakenUpAgain()
    {
        const Home home;
        const QTemporaryDir folder;
        const QString address = u"unix:path="_s + folder.filePath(u"bus"_s);
        std::optional<PrivateBus> bus(std::in_place, address);
        const CommandLine program(address, {});
        QTRY_VERIFY_WITH_TIMEOUT(isProgramOn(*bus), 20'000);
        bus.reset();
        bus.emplace(address);
        QVERIFY(!isProgramOn(*bus));
        const DemoPlayerProcess player(*bus, bus->connect(u"the player's"_s), {u"--play"_s});
        // It looks for the bus every five seconds.
        QTRY_VERIFY_WITH_TIMEOUT(isProgramOn(*bus), 20'000);
        QVERIFY(program.isRunning());
        QVERIFY(QTest::qWaitFor([&player] { return !player.takeCalls().isEmpty(); }));
        QDBusConnection::disconnectFromBus(u"the player's"_s);
    }

private:
    [[nodiscard]] static bool isProgramOn(const PrivateBus &bus)
    {
        const QString name = u"asking"_s;
        const bool isThere = bus.connect(name).interface()->isServiceRegistered(u"org.tunedeck.Tunedeck"_s);
        QDBusConnection::disconnectFromBus(name);
        return isThere;
    }
};

} // namespace tunedeck

QTEST_GUILESS_MAIN(tunedeck::StartOnTheBusTest)
#include "StartOnTheBusTest.moc"
