// SPDX-License-Identifier: MIT
#include "platform/LaunchEntry.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

class LaunchEntryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QDir(m_processes.path()).mkpath(u"1/root"_s));
        QVERIFY(QDir(m_processes.path()).mkpath(u"2/root"_s));
        QVERIFY(QDir(m_processes.path()).mkpath(u"3/root"_s));
        write(u"1/cgroup"_s, "0::/app.slice/app-player.scope\n");
        write(u"2/root/.flatpak-info"_s, "[Application]\nname=org.example.Player\n");
        write(u"3/cgroup"_s, "0::/app.slice/snap.tape.player-1.scope\n");
    }

    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aSandboxedPlayerIsLaunchedByItsOwnEntryAlone_data()
    {
        QTest::addColumn<qint64>("process");
        QTest::addColumn<QString>("named");
        QTest::addColumn<QString>("entry");
        QTest::newRow("not sandboxed") << qint64(1) << u"player"_s << u"player"_s;
        QTest::newRow("a Flatpak's own") << qint64(2) << u"org.example.Player"_s << u"org.example.Player"_s;
        QTest::newRow("another's, named by a Flatpak") << qint64(2) << u"vlc"_s << u"org.example.Player"_s;
        QTest::newRow("a Snap's own") << qint64(3) << u"tape_player"_s << u"tape_player"_s;
        QTest::newRow("another's, named by a Snap") << qint64(3) << u"vlc"_s << u"tape_tape"_s;
        QTest::newRow("of a Snap with a similar name") << qint64(3) << u"tapedeck_player"_s << u"tape_tape"_s;
    }

    void aSandboxedPlayerIsLaunchedByItsOwnEntryAlone()
    {
        QFETCH(const qint64, process);
        QFETCH(const QString, named);
        LaunchEntry launchEntry(m_processes.path());
        const QSignalSpy finished(&launchEntry, &LaunchEntry::finished);
        launchEntry.find(process, named);
        QVERIFY(launchEntry.entry().isEmpty());
        QTRY_COMPARE(finished.count(), 1);
        QTEST(launchEntry.entry(), "entry");
        launchEntry.find(process, named);
        QTEST(launchEntry.entry(), "entry");
    }

    void theProcessAskedForLastCounts()
    {
        LaunchEntry launchEntry(m_processes.path());
        const QSignalSpy finished(&launchEntry, &LaunchEntry::finished);
        launchEntry.find(1, u"first"_s);
        launchEntry.find(1, u"second"_s);
        launchEntry.find(1, u"third"_s);
        QTRY_COMPARE(finished.count(), 1);
        QCOMPARE(launchEntry.entry(), u"third"_s);
        launchEntry.find(std::nullopt, u"third"_s);
        QVERIFY(launchEntry.entry().isEmpty());
    }

    void aProcessOfWhichNothingIsKnownIsNotLaunchedAgain()
    {
        LaunchEntry launchEntry(m_processes.path());
        const QSignalSpy finished(&launchEntry, &LaunchEntry::finished);
        launchEntry.find(4, u"player"_s);
        QTRY_COMPARE(finished.count(), 1);
        QCOMPARE(launchEntry.entry(), QString());
    }

private:
    void write(const QString &name, const QByteArray &text) const
    {
        QFile file(m_processes.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
    }

    QTemporaryDir m_processes;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::LaunchEntryTest, QCoreApplication)
#include "LaunchEntryTest.moc"
