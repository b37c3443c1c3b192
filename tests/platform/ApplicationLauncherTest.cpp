// SPDX-License-Identifier: MIT
#include "platform/ApplicationLauncher.h"
#include "support/registerTest.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLocalServer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <memory>

namespace tunedeck {

class ApplicationLauncherTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// GIO reads the environment and the folders once.
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        for (const char *variable : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
            qputenv(variable, m_home.path().toUtf8());
        }
        qputenv("XDG_DATA_DIRS", m_home.filePath(QStringLiteral("empty")).toUtf8());
        qputenv("XDG_CONFIG_DIRS", m_home.filePath(QStringLiteral("empty")).toUtf8());
        // Nothing is at this address, so the connection fails at once.
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + m_home.filePath(QStringLiteral("bus")).toUtf8());

        const QString isPlayer = QStringLiteral("Categories=AudioVideo;\n");
        install(
            QStringLiteral("applications/tapedeck.desktop"), QStringLiteral("Tape"), QStringLiteral("touch"), isPlayer);
        install(QStringLiteral("applications/org.example.Jukebox.desktop"), QStringLiteral("Box"),
            QStringLiteral("touch"), isPlayer);
        install(QStringLiteral("applications/dangling.desktop"), QStringLiteral("Gone"),
            QStringLiteral("/nonexistent/program"), isPlayer);
        install(QStringLiteral("outside.desktop"), QStringLiteral("Outside"), QStringLiteral("touch"), isPlayer);
        install(QStringLiteral("applications/busy.desktop"), QStringLiteral("Busy"), QStringLiteral("touch"),
            QStringLiteral("DBusActivatable=true\n") + isPlayer);
        const auto installWith = [this](const QString &name, const QString &more) {
            install(QStringLiteral("applications/%1.desktop").arg(name), name, QStringLiteral("touch"), more);
        };
        installWith(QStringLiteral("terminal"), QStringLiteral("Categories=System;TerminalEmulator;\n"));
        installWith(QStringLiteral("handler"),
            QStringLiteral("Categories=AudioVideo;Player;\nMimeType=audio/flac;\nNoDisplay=true\n"));
        installWith(QStringLiteral("removed"), QStringLiteral("Categories=AudioVideo;Player;\nHidden=true\n"));
        installWith(QStringLiteral("nearly"), QStringLiteral("Categories=AudioVideoEditing;X-Player;\n"));
        installWith(QStringLiteral("viewer"), QStringLiteral("Categories=Office;\nMimeType=text/plain;image/png;\n"));
        installWith(QStringLiteral("plain"), QString());
        installWith(QStringLiteral("org.tunedeck.Tunedeck"), isPlayer);
        installWith(QStringLiteral("radio"), QStringLiteral("Categories=Qt;Audio;\n"));
        installWith(QStringLiteral("cinema"), QStringLiteral("Categories=AudioVideo\n"));
        installWith(QStringLiteral("gramophone"), QStringLiteral("Categories=Player;\n"));
        installWith(QStringLiteral("browser"), QStringLiteral("Categories=Network;WebBrowser;\n"));
        installWith(QStringLiteral("changing"), QStringLiteral("Categories=Audio;\n"));
        installWith(QStringLiteral("opener"), QStringLiteral("Categories=Utility;\nMimeType=text/plain;audio/ogg;\n"));
        write(QStringLiteral("mimeapps.list"),
            QStringLiteral("[Default Applications]\naudio/mpeg=org.example.Jukebox.desktop\n"
                           "audio/flac=dangling.desktop\n"));
    }

    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void launchesTheFirstEntryThatIsInstalled_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::newRow("alone") << QStringList({QStringLiteral("tapedeck")});
        QTest::newRow("with the suffix") << QStringList({QStringLiteral("tapedeck.desktop")});
        QTest::newRow("after one that is not") << QStringList({QStringLiteral("nosuchplayer"), QString(),
            QStringLiteral("tapedeck"), QStringLiteral("org.example.Jukebox")});
        QTest::newRow("after one whose program is gone")
            << QStringList({QStringLiteral("dangling"), QStringLiteral("tapedeck")});
    }

    void launchesTheFirstEntryThatIsInstalled()
    {
        QFETCH(const QStringList, entries);
        QCOMPARE(launchedBy(entries, QStringLiteral("audio/mpeg")), QStringLiteral("tapedeck"));
        QTRY_VERIFY(hasRun(QStringLiteral("Tape")));
        QVERIFY(!hasRun(QStringLiteral("Box")));
        QVERIFY(QFile::remove(m_home.filePath(QStringLiteral("Tape"))));
    }

    void launchesTheDefaultApplicationWhereNoEntryIsInstalled_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::newRow("none given") << QStringList();
        QTest::newRow("none installed") << QStringList({QStringLiteral("nosuchplayer")});
    }

    void launchesTheDefaultApplicationWhereNoEntryIsInstalled()
    {
        QFETCH(const QStringList, entries);
        QCOMPARE(launchedBy(entries, QStringLiteral("audio/mpeg")), QStringLiteral("org.example.Jukebox"));
        QTRY_VERIFY(hasRun(QStringLiteral("Box")));
        QVERIFY(QFile::remove(m_home.filePath(QStringLiteral("Box"))));
    }

    void failsWhereThereIsNothingToLaunch_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QString>("contentType");
        QTest::newRow("nothing asked for") << QStringList() << QString();
        QTest::newRow("no default") << QStringList({QStringLiteral("nosuchplayer")}) << QStringLiteral("audio/ogg");
        QTest::newRow("no such type") << QStringList() << QStringLiteral("not a type");
        QTest::newRow("its program is gone") << QStringList({QStringLiteral("dangling")}) << QString();
        QTest::newRow("the default's program is gone") << QStringList() << QStringLiteral("audio/flac");
    }

    void failsWhereThereIsNothingToLaunch()
    {
        QFETCH(const QStringList, entries);
        QFETCH(const QString, contentType);
        QCOMPARE(launchedBy(entries, contentType), std::nullopt);
    }

    void launchesAnyApplicationThatPlaysAudio_data()
    {
        QTest::addColumn<QString>("entry");
        for (const char *entry : {"radio", "cinema", "gramophone", "browser", "opener"}) {
            QTest::newRow(entry) << QString::fromLatin1(entry);
        }
    }

    void launchesAnyApplicationThatPlaysAudio()
    {
        QFETCH(const QString, entry);
        QCOMPARE(launchedBy({entry}, QString()), entry);
        QTRY_VERIFY(hasRun(entry));
    }

    /// A player may name any entry as its own.
    void launchesNoOtherApplication_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::newRow("a terminal") << QStringLiteral("terminal");
        QTest::newRow("not shown in menus") << QStringLiteral("handler");
        QTest::newRow("removed by the user") << QStringLiteral("removed");
        QTest::newRow("categories that only look similar") << QStringLiteral("nearly");
        QTest::newRow("opens other files") << QStringLiteral("viewer");
        QTest::newRow("no category") << QStringLiteral("plain");
        QTest::newRow("this program") << QStringLiteral("org.tunedeck.Tunedeck");
    }

    void launchesNoOtherApplication()
    {
        QFETCH(const QString, entry);
        QCOMPARE(launchedBy({entry}, QString()), std::nullopt);
        QCOMPARE(launchedBy({entry, QStringLiteral("tapedeck")}, QString()), QStringLiteral("tapedeck"));
        QTRY_VERIFY(hasRun(QStringLiteral("Tape")));
        QVERIFY(!hasRun(entry));
        QVERIFY(QFile::remove(m_home.filePath(QStringLiteral("Tape"))));
    }

    void anEntryIsLookedAtRightBeforeItIsLaunched()
    {
        QCOMPARE(launchedBy({QStringLiteral("changing")}, QString()), QStringLiteral("changing"));
        install(QStringLiteral("applications/changing.desktop"), QStringLiteral("changing"), QStringLiteral("touch"),
            QStringLiteral("Categories=System;\n"));
        QCOMPARE(launchedBy({QStringLiteral("changing")}, QString()), std::nullopt);
    }

    void anEntryThatNoPlayerNamesMayBeAny()
    {
        ApplicationLauncher launcher(ApplicationLauncher::Accepts::AnyEntry);
        QSignalSpy launched(&launcher, &ApplicationLauncher::launched);
        launcher.launch({QStringLiteral("terminal")}, QString());
        QTRY_COMPARE(launched.count(), 1);
        QTRY_VERIFY(hasRun(QStringLiteral("terminal")));
        QVERIFY(QFile::remove(m_home.filePath(QStringLiteral("terminal"))));
    }

    void neverLooksOutsideTheFoldersOfTheDesktop_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::newRow("beside") << QStringLiteral("../outside");
        QTest::newRow("below") << QStringLiteral("./tapedeck");
        QTest::newRow("absolute") << m_home.filePath(QStringLiteral("outside.desktop"));
        QTest::newRow("empty") << QString();
        QTest::newRow("suffix alone") << QStringLiteral(".desktop");
        QTest::newRow("endless") << QString(100'000, u'x');
    }

    void neverLooksOutsideTheFoldersOfTheDesktop()
    {
        QFETCH(const QString, entry);
        QCOMPARE(launchedBy({entry}, QString()), std::nullopt);
        QVERIFY(!hasRun(QStringLiteral("Outside")));
    }

    void aLaunchAskedForWhileOneIsUnderWayIsIgnored()
    {
        ApplicationLauncher launcher;
        const QSignalSpy launched(&launcher, &ApplicationLauncher::launched);
        const QSignalSpy failed(&launcher, &ApplicationLauncher::failed);
        launcher.launch({QStringLiteral("tapedeck")}, QString());
        launcher.launch({QStringLiteral("org.example.Jukebox")}, QString());
        QTRY_COMPARE(launched.count(), 1);
        QCOMPARE(launched.at(0).at(0).toString(), QStringLiteral("tapedeck"));
        launcher.launch({QStringLiteral("nosuchplayer")}, QString());
        QTRY_COMPARE(failed.count(), 1);
        QCOMPARE(launched.count(), 1);
    }

    void theSignalsComeOnTheThreadOfTheObject()
    {
        ApplicationLauncher launcher;
        const QThread *thread = nullptr;
        connect(
            &launcher, &ApplicationLauncher::failed, &launcher, [&thread] { thread = QThread::currentThread(); },
            Qt::DirectConnection);
        launcher.launch({}, QString());
        QVERIFY(!thread);
        QTRY_COMPARE(thread, QThread::currentThread());
    }

    void aLaunchUnderWayIsFinishedWhenTheObjectEnds()
    {
        QFile::remove(m_home.filePath(QStringLiteral("Tape")));
        std::make_unique<ApplicationLauncher>()->launch({QStringLiteral("tapedeck")}, QString());
        QTRY_VERIFY(hasRun(QStringLiteral("Tape")));
    }

    void aFrozenBusHoldsNobodyUp()
    {
        // This server accepts connections and never answers.
        QLocalServer frozenBus;
        QVERIFY(frozenBus.listen(m_home.filePath(QStringLiteral("bus"))));
        QElapsedTimer timer;
        auto launcher = std::make_unique<ApplicationLauncher>();
        const QSignalSpy launched(launcher.get(), &ApplicationLauncher::launched);
        timer.start();
        launcher->launch({QStringLiteral("busy")}, QString());
        QVERIFY(timer.elapsed() < 250);
        QTRY_VERIFY(frozenBus.hasPendingConnections());
        QCOMPARE(launched.count(), 0);
        timer.start();
        launcher.reset();
        QVERIFY(timer.elapsed() < 5000);
    }

private:
    void write(const QString &name, const QString &text) const
    {
        QFile file(m_home.filePath(name));
        QVERIFY(QDir().mkpath(QFileInfo(file).path()));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.write(text.toUtf8()) > 0);
    }

    /// Writes a desktop entry whose program creates a file with the entry's name.
    void install(
        const QString &path, const QString &name, const QString &program, const QString &more = QString()) const
    {
        write(path,
            QStringLiteral("[Desktop Entry]\nType=Application\nName=%1\nExec=%2 %3\n%4")
                .arg(name, program, m_home.filePath(name), more));
    }

    [[nodiscard]] bool hasRun(const QString &name) const { return QFile::exists(m_home.filePath(name)); }

    /// The desktop entry that was launched, if any.
    static std::optional<QString> launchedBy(const QStringList &entries, const QString &contentType)
    {
        ApplicationLauncher launcher;
        QSignalSpy launched(&launcher, &ApplicationLauncher::launched);
        const QSignalSpy failed(&launcher, &ApplicationLauncher::failed);
        launcher.launch(entries, contentType);
        const bool isDone = QTest::qWaitFor([&] { return launched.count() + failed.count() == 1; });
        if (!isDone || launched.isEmpty()) {
            return isDone ? std::nullopt : std::optional(QStringLiteral("no answer"));
        }
        return launched.at(0).at(0).toString();
    }

    QTemporaryDir m_home;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::ApplicationLauncherTest, QCoreApplication)
#include "ApplicationLauncherTest.moc"
