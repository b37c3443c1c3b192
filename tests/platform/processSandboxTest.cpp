// SPDX-License-Identifier: MIT
#include "platform/processSandbox.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace tunedeck {

using Kind = ProcessSandbox::Kind;

class processSandboxTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_processes = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(m_processes->path()).mkpath(u"7/root"_s));
        write(u"7/cgroup"_s, "0::/user.slice/user-1000.slice/user@1000.service/app.slice/app-player.scope\n");
    }

    void thisProcessIsExamined() { QVERIFY(sandboxOfProcess(QCoreApplication::applicationPid())); }

    void anOrdinaryProcessIsInNone() { QCOMPARE(found(), ProcessSandbox()); }

    void aFlatpakSaysItsApplication()
    {
        write(u"7/root/.flatpak-info"_s,
            "[Application]\nruntime=runtime/org.Platform\nname=org.example.Player\n[Instance]\nname=other\n");
        QCOMPARE(found(), (ProcessSandbox{Kind::Flatpak, u"org.example.Player"_s}));
    }

    void aSnapIsKnownByItsControlGroup_data()
    {
        QTest::addColumn<QByteArray>("groups");
        QTest::addColumn<QString>("snap");
        QTest::newRow("version 2") << QByteArray("0::/user.slice/user-1000.slice/user@1000.service/app.slice/"
                                                 "snap.tape-deck.player-5a1e2b3c-0000-4000-8000-000000000000.scope\n")
                                   << u"tape-deck"_s;
        QTest::newRow("version 1") << QByteArray("1:name=systemd:/user.slice/snap.tape.tape.5a1e2b3c.scope\n0::/\n")
                                   << u"tape"_s;
        QTest::newRow("second instance") << QByteArray("0::/app.slice/snap.tape_two.player.5a1e2b3c.scope\n")
                                         << u"tape_two"_s;
        QTest::newRow("service") << QByteArray("0::/system.slice/snap.tape.daemon.service\n") << u"tape"_s;
    }

    void aSnapIsKnownByItsControlGroup()
    {
        QFETCH(const QByteArray, groups);
        QFETCH(const QString, snap);
        write(u"7/cgroup"_s, groups);
        QCOMPARE(found(), (ProcessSandbox{Kind::Snap, snap}));
    }

    void aGroupWithinAnotherIsNoSnap()
    {
        write(u"7/cgroup"_s, "0::/snap.tape.tape.scope/below\n");
        QCOMPARE(found(), ProcessSandbox());
    }

    void nothingIsKnownOfAProcessThatHidesItself_data()
    {
        QTest::addColumn<QString>("trick");
        for (const char *trick : {"gone", "link", "pipe", "folder", "huge", "nameless", "binary", "no groups"}) {
            QTest::newRow(trick) << QString::fromLatin1(trick);
        }
    }

    void nothingIsKnownOfAProcessThatHidesItself()
    {
        QFETCH(const QString, trick);
        hide(trick);
        QCOMPARE(sandboxOfProcess(7, m_processes->path()), std::nullopt);
    }

private:
    void hide(const QString &trick) const
    {
        const QString information = u"7/root/.flatpak-info"_s;
        const QByteArray path = m_processes->filePath(information).toLocal8Bit();
        if (trick == u"gone") {
            QVERIFY(QDir(m_processes->filePath(u"7"_s)).removeRecursively());
        } else if (trick == u"link") {
            QVERIFY(QFile::link(u"/dev/null"_s, m_processes->filePath(information)));
        } else if (trick == u"pipe") {
            QCOMPARE(::mkfifo(path.constData(), 0600), 0);
        } else if (trick == u"folder") {
            QVERIFY(QDir(m_processes->path()).mkpath(information));
        } else if (trick == u"huge") {
            write(information, "[Application]\nname=org.example.Player\n" + QByteArray(100'000, '#'));
        } else if (trick == u"nameless") {
            write(information, "[Runtime]\nname=org.example.Player\n");
        } else if (trick == u"binary") {
            write(information, QByteArray(1'000, '\xff'));
        } else {
            QVERIFY(QFile::remove(m_processes->filePath(u"7/cgroup"_s)));
        }
    }

    [[nodiscard]] ProcessSandbox found() const
    {
        return sandboxOfProcess(7, m_processes->path()).value_or(ProcessSandbox{Kind::None, u"unknown"_s});
    }

    void write(const QString &name, const QByteArray &text) const
    {
        QFile file(m_processes->filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
    }

    std::unique_ptr<QTemporaryDir> m_processes;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::processSandboxTest, QCoreApplication)
#include "processSandboxTest.moc"
