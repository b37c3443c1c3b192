// SPDX-License-Identifier: MIT
#include "music/mpris/DemoPlayerProcess.h"
#include "support/PrivateBus.h"
#include "support/endWithParent.h"
#include "support/registerTest.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusReply>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QList>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <optional>
#include <sys/stat.h>
#include <utility>

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
        // The bus ends the programs that it has started, even if the test is killed.
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

    [[nodiscard]] QDBusMessage call(const QString &method, const QVariantList &arguments) const
    {
        const QDBusPendingCall answer = begin(method, arguments);
        return QTest::qWaitFor([&answer] { return answer.isFinished(); }, 20'000) ? answer.reply() : QDBusMessage();
    }
    /// Calls the program. The bus starts it if it is not running.
    [[nodiscard]] QDBusPendingCall begin(const QString &method, const QVariantList &arguments) const
    {
        QDBusMessage message = QDBusMessage::createMethodCall(
            u"org.tunedeck.Tunedeck"_s, u"/org/tunedeck/Tunedeck"_s, u"org.freedesktop.Application"_s, method);
        message.setArguments(arguments);
        return connection.asyncCall(message);
    }
    [[nodiscard]] bool isProgramRunning() const
    {
        return connection.interface()->isServiceRegistered(u"org.tunedeck.Tunedeck"_s);
    }
    /// Waits for `count` commands and returns those that came.
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

/// While it exists, programs that this one starts never finish reading fontconfig's settings.
class EndlessFonts {
public:
    EndlessFonts()
    {
        const QByteArray settings = QFile::encodeName(m_folder.filePath(u"fonts.conf"_s));
        ::mkfifo(settings.constData(), S_IRUSR | S_IWUSR);
        qputenv("FONTCONFIG_FILE", settings);
    }
    ~EndlessFonts() { qunsetenv("FONTCONFIG_FILE"); }
    EndlessFonts(const EndlessFonts &) = delete;
    EndlessFonts &operator=(const EndlessFonts &) = delete;

private:
    QTemporaryDir m_folder;
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

/// The text of the command line's help.
struct Texts {
    QString program;
    QString qt;
};

/// An environment without languages except those in `variables`, such as "LANG=de_DE.UTF-8".
QProcessEnvironment environmentWith(const QStringList &variables)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto &name : {u"LANGUAGE"_s, u"LC_ALL"_s, u"LC_MESSAGES"_s, u"LC_NUMERIC"_s, u"LANG"_s}) {
        environment.remove(name);
    }
    for (const QString &variable : variables) {
        environment.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    }
    return environment;
}

QString helpIn(const QStringList &variables)
{
    QProcess process;
    process.setProcessEnvironment(environmentWith(variables));
    process.start(QStringLiteral(TUNEDECK_PROGRAM), {u"--help"_s});
    return process.waitForFinished(20'000) ? QString::fromUtf8(process.readAllStandardOutput()) : QString();
}

/// A dock with the menu of the program's icon. It reads the menu once, and again whenever a change is reported.
class Dock : public QObject {
    Q_OBJECT

public:
    explicit Dock(const Session &session)
        : m_connection(session.connection)
    {
        // clang-format off
        m_connection.connect(QString(), menuPath, menuInterface, u"LayoutUpdated"_s, this, SLOT(takeUpdate()));
        // clang-format on
    }

    [[nodiscard]] bool showsSoon(const QString &label)
    {
        return QTest::qWaitFor([this, &label] { return shows(label); });
    }
    [[nodiscard]] bool shows(const QString &label)
    {
        if (m_labels.isEmpty() || std::exchange(m_isOutdated, false)) {
            m_labels = readLabels();
        }
        return m_labels.contains(label);
    }
    [[nodiscard]] bool click(const QString &label) const
    {
        const QVariant noData = QVariant::fromValue(QDBusVariant(0));
        return ask(u"Event"_s, {m_labels.value(label, -1), u"clicked"_s, noData, 0U}).type()
            == QDBusMessage::ReplyMessage;
    }

private Q_SLOTS:
    void takeUpdate() { m_isOutdated = true; }

private:
    struct Item {
        int id = 0;
        QVariantMap properties;
        QVariantList children;
    };
    static Item readItem(const QDBusArgument &argument)
    {
        Item item;
        if (argument.currentType() == QDBusArgument::StructureType) {
            argument.beginStructure();
            argument >> item.id >> item.properties >> item.children;
            argument.endStructure();
        }
        return item;
    }

    [[nodiscard]] QDBusMessage ask(const QString &method, const QVariantList &arguments) const
    {
        QDBusMessage message =
            QDBusMessage::createMethodCall(u"org.tunedeck.Tunedeck"_s, menuPath, menuInterface, method);
        message.setArguments(arguments);
        const QDBusPendingCall answer = m_connection.asyncCall(message);
        return QTest::qWaitFor([&answer] { return answer.isFinished(); }) ? answer.reply() : QDBusMessage();
    }
    [[nodiscard]] QHash<QString, int> readLabels() const
    {
        const QDBusMessage answer = ask(u"GetLayout"_s, {0, -1, QStringList{u"label"_s}});
        QHash<QString, int> labels;
        for (const QVariant &child : readItem(answer.arguments().value(1).value<QDBusArgument>()).children) {
            const Item item = readItem(child.value<QDBusArgument>());
            labels.insert(item.properties.value(u"label"_s).toString(), item.id);
        }
        return labels;
    }

    const QString menuPath = u"/org/tunedeck/Tunedeck/DockMenu"_s;
    const QString menuInterface = u"com.canonical.dbusmenu"_s;
    QDBusConnection m_connection;
    QHash<QString, int> m_labels; ///< the items' numbers
    bool m_isOutdated = false;
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

    void aProgramWhosePlayerIsPausedLoadsNoSoundLibrary()
    {
        const Session session(QStringList{u"--play"_s, u"--do"_s, u"pause"_s});
        QCOMPARE(session.call(u"Activate"_s, {QVariantMap()}).type(), QDBusMessage::ReplyMessage);
        const uint process = session.connection.interface()->servicePid(u"org.tunedeck.Tunedeck"_s);
        QFile maps(u"/proc/%1/maps"_s.arg(process));
        QVERIFY(maps.open(QIODevice::ReadOnly));
        const QByteArray loaded = maps.readAll();
        QVERIFY(loaded.contains("/libQt6Widgets.so"));
        for (const char *library : {"/libpulse.so", "/tunedeck-audio.so"}) {
            QVERIFY2(!loaded.contains(library), library);
        }
    }

    void aProgramThatLooksForNoUpdateLoadsNoNetwork()
    {
        const Session session(QStringList{u"--play"_s});
        QCOMPARE(session.call(u"Activate"_s, {QVariantMap()}).type(), QDBusMessage::ReplyMessage);
        const uint process = session.connection.interface()->servicePid(u"org.tunedeck.Tunedeck"_s);
        QFile maps(u"/proc/%1/maps"_s.arg(process));
        QVERIFY(maps.open(QIODevice::ReadOnly));
        const QByteArray loaded = maps.readAll();
        QVERIFY(loaded.contains("/libQt6Widgets.so"));
        for (const char *library : {"/libcurl.so", "/libsodium.so", "/libQt6Network.so", "/tunedeck-updates.so"}) {
            QVERIFY2(!loaded.contains(library), library);
        }
    }

    void aProgramThatReadsNoDesktopEntryLoadsNoGIO()
    {
        const Session session(QStringList{u"--play"_s});
        QCOMPARE(session.call(u"Activate"_s, {QVariantMap()}).type(), QDBusMessage::ReplyMessage);
        const uint process = session.connection.interface()->servicePid(u"org.tunedeck.Tunedeck"_s);
        QFile maps(u"/proc/%1/maps"_s.arg(process));
        QVERIFY(maps.open(QIODevice::ReadOnly));
        const QByteArray loaded = maps.readAll();
        QVERIFY(loaded.contains("/libQt6Widgets.so"));
        QVERIFY(!loaded.contains("/libgio-2.0.so"));
    }

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
        QCOMPARE(session.call(u"ActivateAction"_s, action(u"no such action"_s)).type(), QDBusMessage::ErrorMessage);
        QCOMPARE(session.call(u"ActivateAction"_s, action(u"next"_s)).type(), QDBusMessage::ReplyMessage);
        QCOMPARE(session.commands(1), {u"Next"_s});
    }

    void aStrangerFillsNoLog()
    {
        const Session session({u"--play"_s});
        qputenv("QT_LOGGING_RULES", "tunedeck.window=true");
        CommandLine program(session, {});
        qunsetenv("QT_LOGGING_RULES");
        QTRY_VERIFY(session.isProgramRunning());
        QList<QDBusPendingCall> answers;
        for (int number = 0; number < 2'000; ++number) {
            answers.append(session.begin(u"ActivateAction"_s, action(u"no such action %1"_s.arg(number))));
        }
        for (int number = 0; number < 2'000; ++number) {
            const QString method =
                u"NoSuchMethod_%1%2"_s.arg(QChar(u'a' + number / 26 % 26)).arg(QChar(u'a' + number % 26));
            answers.append(session.begin(method, {}));
        }
        QTRY_VERIFY(answers.constLast().isFinished());
        const QString said = program.said();
        QCOMPARE(said.count(u"refused: unknown action"_s), 10);
        QVERIFY2(said.count(u'\n') < 40, qPrintable(said.left(4'000)));
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

    void aCommandLineSaysWhyItsActionIsRefused()
    {
        const Session session({u"--play"_s});
        QCOMPARE(session.call(u"Activate"_s, {QVariantMap()}).type(), QDBusMessage::ReplyMessage);
        CommandLine line(session, {u"--action"_s, u"raise-player"_s});
        QCOMPARE(line.exitCode(), 1);
        QCOMPARE(line.said(), u"tunedeck: Tunedeck Demo Player cannot show its window\n"_s);
    }

    void aCommandLineStartsTheProgramWithItsAction()
    {
        const Session session({u"--play"_s});
        const CommandLine line(session, {u"--action"_s, u"next"_s});
        QCOMPARE(session.commands(1), {u"Next"_s});
        QVERIFY(session.isProgramRunning());
    }

    void theProgramIsOnTheBusWhileTheFontsAreListed()
    {
        const Session session({});
        const EndlessFonts fonts;
        const CommandLine line(session, {});
        QVERIFY(QTest::qWaitFor([&session] { return session.isProgramRunning(); }, 20'000));
    }

    void aCommandLineAsksTheProgramThatRunsWhileTheFontsAreListed()
    {
        const Session session({u"--play"_s});
        QCOMPARE(session.call(u"Activate"_s, {QVariantMap()}).type(), QDBusMessage::ReplyMessage);
        const EndlessFonts fonts;
        const CommandLine line(session, {u"--action"_s, u"next"_s});
        QCOMPARE(session.commands(1), {u"Next"_s});
    }

    void aCommandLineShowsThePlayersOwnWindow()
    {
        const Session session({u"--play"_s, u"--do"_s, u"wrong CanRaise bool true"_s});
        const CommandLine first(session, {u"--action"_s, u"raise-player"_s});
        QCOMPARE(session.commands(1), {u"Raise"_s});
        CommandLine second(session, {u"--action"_s, u"raise-player"_s});
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(session.commands(1), {u"Raise"_s});
    }

    void aWindowIsKeptAboveBeforeThePlayerHasAnswered()
    {
        const Session session({u"--play"_s, u"--do"_s, u"late 500"_s});
        const QDBusPendingCall next = session.begin(u"ActivateAction"_s, action(u"next"_s));
        QCOMPARE(session.call(u"ActivateAction"_s, action(u"keep-above"_s)).type(), QDBusMessage::ReplyMessage);
        QFile settings(qEnvironmentVariable("XDG_CONFIG_HOME") + u"/tunedeck/tunedeck.conf"_s);
        const auto isKeptAbove = [&settings] {
            const bool isOpen = settings.open(QIODevice::ReadOnly);
            const QByteArray text = isOpen ? settings.readAll() : QByteArray();
            settings.close();
            return text.contains("KeepMainWindowAboveAllOtherWindows=true");
        };
        QVERIFY(QTest::qWaitFor(isKeptAbove));
        QCOMPARE(session.player.takeCommands(), QStringList());
        QCOMPARE(session.commands(1), {u"Next"_s});
    }

    void theDocksMenuFollowsThePlayerAndCommandsIt()
    {
        const Session session({u"--play"_s, u"--track"_s, u"0"_s});
        QCOMPARE(session.call(u"Activate"_s, {QVariantMap()}).type(), QDBusMessage::ReplyMessage);
        Dock dock(session);
        QVERIFY(dock.showsSoon(u"    Track: Quince Harbour Timetable"_s));
        QVERIFY(session.player.tell(u"track 1"_s));
        QVERIFY(dock.showsSoon(u"    Track: Borrowed Thimble Waltz"_s));
        QVERIFY(!dock.shows(u"    Track: Quince Harbour Timetable"_s));
        QVERIFY(session.player.tell(u"pause"_s));
        QVERIFY(dock.showsSoon(u"Play"_s));
        QVERIFY(dock.click(u"Next"_s));
        QCOMPARE(session.commands(1), {u"Next"_s});
        session.player.kill();
        QVERIFY(dock.showsSoon(u"Open \"Music\""_s));
    }

    void aCommandLineWithAnUnknownActionDoesNothing()
    {
        const Session session({u"--play"_s});
        CommandLine line(session, {u"--action"_s, u"quit"_s});
        QCOMPARE(line.exitCode(), 1);
        QVERIFY(line.said().endsWith(u"tunedeck: unknown action; see --help\n"_s));
        QVERIFY(!session.isProgramRunning());
    }

    void itSpeaksOneLanguageWhateverTheEnvironmentMixes_data()
    {
        const Texts english{u"A small window that controls the running music player"_s, u"\nOptions:\n"_s};
        const Texts german{u"Ein kleines Fenster, das den laufenden Musikplayer steuert"_s, u"\nOptionen:\n"_s};
        const Texts spanish{
            u"Una ventana pequeña que controla el reproductor de música en marcha"_s, u"\nOpciones:\n"_s};
        const Texts finnish{u"Pieni ikkuna, joka ohjaa käynnissä olevaa musiikkisoitinta"_s, u"\nValitsimet:\n"_s};
        const Texts polish{u"Małe okno, które steruje działającym odtwarzaczem muzyki"_s, u"\nOpcje:\n"_s};
        QTest::addColumn<QStringList>("environment");
        QTest::addColumn<Texts>("texts");
        QTest::newRow("nothing") << QStringList{} << english;
        QTest::newRow("C") << QStringList{u"LC_ALL=C.UTF-8"_s} << english;
        QTest::newRow("a locale") << QStringList{u"LANG=de_AT.UTF-8"_s} << german;
        QTest::newRow("languages without a locale") << QStringList{u"LANGUAGE=de:en"_s, u"LC_ALL=C.UTF-8"_s} << german;
        QTest::newRow("languages before the locale")
            << QStringList{u"LANGUAGE=fi:de"_s, u"LANG=de_DE.UTF-8"_s} << finnish;
        QTest::newRow("the second language is known")
            << QStringList{u"LANGUAGE=fr:pl"_s, u"LANG=fr_FR.UTF-8"_s} << polish;
        QTest::newRow("English before what else is known")
            << QStringList{u"LANGUAGE=en_GB:de"_s, u"LANG=de_DE.UTF-8"_s} << english;
        QTest::newRow("numbers as elsewhere")
            << QStringList{u"LANG=es_ES.UTF-8"_s, u"LC_NUMERIC=de_DE.UTF-8"_s} << spanish;
        QTest::newRow("none that is known") << QStringList{u"LANGUAGE=fr"_s, u"LANG=fr_FR.UTF-8"_s} << english;
        QTest::newRow("nonsense") << QStringList{u"LANGUAGE=../../de:xx:pl"_s, u"LANG=fi_FI.UTF-8"_s} << polish;
    }
    void itSpeaksOneLanguageWhateverTheEnvironmentMixes()
    {
        QFETCH(const QStringList, environment);
        QFETCH(const Texts, texts);
        const QString help = helpIn(environment);
        QVERIFY2(help.contains(texts.program), qPrintable(help));
        QVERIFY2(help.contains(texts.qt), qPrintable(help));
    }

    void whatGoesWrongOnACommandLineIsToldInTheUsersLanguage()
    {
        const Home home;
        QProcess process;
        process.setProcessEnvironment(environmentWith({u"LANG=de_DE.UTF-8"_s}));
        process.start(QStringLiteral(TUNEDECK_PROGRAM), {u"--action"_s, u"quit"_s});
        QVERIFY(process.waitForFinished(20'000));
        QCOMPARE(process.exitCode(), 1);
        QVERIFY(QString::fromUtf8(process.readAllStandardError())
                .endsWith(u"tunedeck: unbekannte Aktion; siehe --help\n"_s));
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

TUNEDECK_TEST(tunedeck::StartOnTheBusTest, QCoreApplication)
#include "StartOnTheBusTest.moc"
