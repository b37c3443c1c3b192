// SPDX-License-Identifier: MIT
#include "portal/AutostartEntry.h"

#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace tunedeck;

namespace {
const QString command = QStringLiteral("\"tunedeck\" \"--autostart\"");
const QByteArray portalsEntry = "[Desktop Entry]\nType=Application\nName=org.tunedeck.Tunedeck\n"
                                "X-XDP-Autostart=org.tunedeck.Tunedeck\nExec=tunedeck --autostart\n";

/// A folder of what starts with a session.
struct Folder {
    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("config/autostart")); }
    [[nodiscard]] QString entry() const { return path() + QStringLiteral("/org.tunedeck.Tunedeck.desktop"); }
    [[nodiscard]] QByteArray text() const
    {
        QFile file(entry());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }
    void write(const QByteArray &text) const
    {
        QVERIFY(QDir().mkpath(path()));
        QFile file(entry());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

private:
    QTemporaryDir m_folder;
};
} // namespace

class AutostartEntryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void itIsMadeWithItsFolderAndRemoved()
    {
        const Folder folder;
        QCOMPARE(addAutostartEntry(folder.path(), command), AutostartChange::Done);
        QVERIFY(folder.text().startsWith("[Desktop Entry]\nType=Application\nName=Tunedeck\n"));
        QVERIFY(folder.text().contains("\nExec=\"tunedeck\" \"--autostart\"\n"));
        QVERIFY(!hasUsersAutostartEntry(folder.path()));
        QCOMPARE(removeAutostartEntry(folder.path()), AutostartChange::Done);
        QCOMPARE(folder.text(), QByteArray("none"));
        QCOMPARE(removeAutostartEntry(folder.path()), AutostartChange::Done);
    }

    void oneOfAnotherVersionIsReplaced()
    {
        const Folder folder;
        QCOMPARE(addAutostartEntry(folder.path(), QStringLiteral("/old/tunedeck")), AutostartChange::Done);
        QCOMPARE(addAutostartEntry(folder.path(), command), AutostartChange::Done);
        QVERIFY(folder.text().contains("\nExec=\"tunedeck\" \"--autostart\"\n"));
    }

    void oneThatTheUserHasChangedIsKept_data()
    {
        QTest::addColumn<QByteArray>("added");
        QTest::newRow("a line at the end") << QByteArray("Hidden=true\n");
        QTest::newRow("nothing but a line end") << QByteArray("\n");
        QTest::newRow("a false mark") << QByteArray("X-Tunedeck-Unchanged=0\n");
    }
    void oneThatTheUserHasChangedIsKept()
    {
        QFETCH(QByteArray, added);
        const Folder folder;
        QCOMPARE(addAutostartEntry(folder.path(), command), AutostartChange::Done);
        const QByteArray changed = folder.text() + added;
        folder.write(changed);
        QVERIFY(hasUsersAutostartEntry(folder.path()));
        QCOMPARE(addAutostartEntry(folder.path(), command), AutostartChange::KeptUsersEntry);
        QCOMPARE(removeAutostartEntry(folder.path()), AutostartChange::KeptUsersEntry);
        QCOMPARE(folder.text(), changed);
    }

    void aChangedCommandIsKeptToo()
    {
        const Folder folder;
        QCOMPARE(addAutostartEntry(folder.path(), command), AutostartChange::Done);
        const QByteArray changed = folder.text().replace("Exec=", "Exec=nice ");
        folder.write(changed);
        QCOMPARE(removeAutostartEntry(folder.path()), AutostartChange::KeptUsersEntry);
        QCOMPARE(folder.text(), changed);
    }

    void oneThatIsNoPlainFileIsKeptAndNotRead()
    {
        const Folder folder;
        QVERIFY(QDir().mkpath(folder.path()));
        QCOMPARE(::mkfifo(qPrintable(folder.entry()), 0600), 0);
        QVERIFY(hasUsersAutostartEntry(folder.path()));
        QCOMPARE(addAutostartEntry(folder.path(), command), AutostartChange::KeptUsersEntry);
        QVERIFY(QFile::remove(folder.entry()));
        QVERIFY(QFile::link(QStringLiteral("/nowhere"), folder.entry()));
        QCOMPARE(addAutostartEntry(folder.path(), command), AutostartChange::KeptUsersEntry);
        QCOMPARE(removeAutostartEntry(folder.path()), AutostartChange::KeptUsersEntry);
    }

    void onlyAPortalsEntryIsNotTheUsers()
    {
        const Folder folder;
        QVERIFY(!hasUsersAutostartEntry(folder.path()));
        folder.write("[Desktop Entry]\nExec=tunedeck\nX-XDP-Autostart=org.tunedeck.Tunedeck\n");
        QVERIFY(!hasUsersAutostartEntry(folder.path()));
        folder.write("[Desktop Entry]\nExec=tunedeck\n");
        QVERIFY(hasUsersAutostartEntry(folder.path()));
        folder.write(QByteArray(10'000'000, 'x'));
        QVERIFY(hasUsersAutostartEntry(folder.path()));
    }

    void aPortalsEntryIsReplacedAndRemoved()
    {
        const Folder folder;
        folder.write(portalsEntry);
        QCOMPARE(addAutostartEntry(folder.path(), command), AutostartChange::Done);
        QVERIFY(folder.text().contains("\nExec=\"tunedeck\" \"--autostart\"\n"));
        folder.write(portalsEntry);
        QCOMPARE(removeAutostartEntry(folder.path()), AutostartChange::Done);
        QCOMPARE(folder.text(), QByteArray("none"));
    }

    void aPortalsEntryThatTheUserHasChangedIsKept_data()
    {
        QTest::addColumn<QByteArray>("added");
        QTest::newRow("switched off") << QByteArray("Hidden=true\n");
        QTest::newRow("switched off by GNOME") << QByteArray("X-GNOME-Autostart-enabled=false\n");
        QTest::newRow("a comment") << QByteArray("# mine\n");
        QTest::newRow("an action") << QByteArray("[Desktop Action Next]\nName=Next\n");
    }
    void aPortalsEntryThatTheUserHasChangedIsKept()
    {
        QFETCH(QByteArray, added);
        const Folder folder;
        folder.write(portalsEntry + added);
        QVERIFY(hasUsersAutostartEntry(folder.path()));
        QCOMPARE(addAutostartEntry(folder.path(), command), AutostartChange::KeptUsersEntry);
        QCOMPARE(removeAutostartEntry(folder.path()), AutostartChange::KeptUsersEntry);
        QCOMPARE(folder.text(), portalsEntry + added);
    }

    void aFolderThatCannotBeWrittenIsSaid()
    {
        const QTemporaryDir home;
        QFile file(home.filePath(QStringLiteral("autostart")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(addAutostartEntry(file.fileName(), command), AutostartChange::NotWritable);
        QCOMPARE(addAutostartEntry(QStringLiteral("/proc/autostart"), command), AutostartChange::NotWritable);
    }
};

TUNEDECK_TEST(AutostartEntryTest, QCoreApplication)
#include "AutostartEntryTest.moc"
