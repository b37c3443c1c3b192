// SPDX-License-Identifier: MIT
#include "platform/DesktopEntries.h"
#include "support/registerTest.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

class DesktopEntriesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// GIO reads the environment and the folders once.
    void initTestCase()
    {
        QVERIFY(m_home.isValid());
        for (const char *variable : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
            qputenv(variable, m_home.path().toUtf8());
        }
        qputenv("XDG_DATA_DIRS", m_home.filePath(u"empty"_s).toUtf8());
        install(u"tapedeck"_s, u"Icon=tape"_s);
        install(u"org.example.Jukebox"_s, u"Icon=org.example.Jukebox\nDBusActivatable=true"_s);
        install(u"absolute"_s, u"Icon="_s + m_home.filePath(u"own.png"_s));
        install(u"endless"_s, u"Icon=/dev/zero"_s);
        install(u"broken"_s, u"Icon=broken"_s);
        install(u"vast"_s, u"Icon=vast"_s);
        draw(u"own.png"_s, {16, 16});
        draw(u"icons/hicolor/128x128/apps/tape.png"_s, {128, 64});
        draw(u"icons/hicolor/48x48/apps/org.example.Jukebox.png"_s, {48, 48});
        draw(u"icons/hicolor/48x48/apps/vast.png"_s, {2'000, 2'000});
        write(u"icons/hicolor/64x64/apps/broken.png"_s, "no picture");
    }

    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void anEntrysFactsAreAnnouncedWhenTheyAreKnown()
    {
        DesktopEntries entries;
        const QSignalSpy known(&entries, &DesktopEntries::factsKnown);
        QVERIFY(!entries.facts(u"org.example.Jukebox"_s));
        QCOMPARE(known.count(), 0);
        QTRY_COMPARE(known.count(), 1);
        QCOMPARE(known.at(0).at(0).toString(), u"org.example.Jukebox"_s);
        const DesktopEntryFacts facts = entries.facts(u"org.example.Jukebox"_s).value();
        QCOMPARE(facts.iconName, u"org.example.Jukebox"_s);
        QCOMPARE(facts.icon->size(), QSize(48, 48));
        QVERIFY(facts.isDBusActivatable);
    }

    void anIconIsNoLargerThanItIsShown()
    {
        DesktopEntries entries;
        const DesktopEntryFacts facts = read(entries, u"tapedeck"_s);
        QCOMPARE(facts.iconName, u"tape"_s);
        QCOMPARE(facts.icon->size(), QSize(64, 32));
        QVERIFY(!facts.isDBusActivatable);
    }

    void anIconMayBeAFile()
    {
        DesktopEntries entries;
        QCOMPARE(read(entries, u"absolute"_s).icon->size(), QSize(16, 16));
    }

    void aFileThatIsNoIconIsNotRead_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::newRow("not a file") << u"endless"_s;
        QTest::newRow("not a picture") << u"broken"_s;
        QTest::newRow("a vast picture") << u"vast"_s;
    }

    void aFileThatIsNoIconIsNotRead()
    {
        QFETCH(const QString, entry);
        DesktopEntries entries;
        const DesktopEntryFacts facts = read(entries, entry);
        QVERIFY(!facts.iconName.isEmpty());
        QVERIFY(!facts.icon);
    }

    void anEntryThatIsNotInstalledHasNoFacts_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::newRow("unknown") << u"nosuchplayer"_s;
        QTest::newRow("empty") << QString();
        QTest::newRow("a path") << m_home.filePath(u"applications/tapedeck.desktop"_s);
    }

    void anEntryThatIsNotInstalledHasNoFacts()
    {
        QFETCH(const QString, entry);
        DesktopEntries entries;
        const DesktopEntryFacts facts = read(entries, entry);
        QVERIFY(facts.iconName.isEmpty());
        QVERIFY(!facts.icon);
        QVERIFY(!facts.isDBusActivatable);
    }

    void eachEntryIsReadOnce()
    {
        DesktopEntries entries;
        const QSignalSpy known(&entries, &DesktopEntries::factsKnown);
        for (int i = 0; i < 3; ++i) {
            QVERIFY(!entries.facts(u"tapedeck"_s));
        }
        QVERIFY(!entries.facts(u"org.example.Jukebox"_s));
        QTRY_COMPARE(known.count(), 2);
        QVERIFY(entries.facts(u"tapedeck"_s) && entries.facts(u"org.example.Jukebox"_s));
        QCoreApplication::processEvents();
        QCOMPARE(known.count(), 2);
    }

    void neitherWhatIsKeptNorWhatWaitsGrowsWithoutEnd()
    {
        DesktopEntries entries;
        const QSignalSpy known(&entries, &DesktopEntries::factsKnown);
        for (int i = 0; i < 1'000; ++i) {
            QVERIFY(!entries.facts(QString::number(i)));
        }
        QTRY_COMPARE(known.count(), 129);
        // The first was read alone, while the others waited.
        QVERIFY(entries.facts(u"1"_s));
        QVERIFY(!entries.facts(u"0"_s));
        QTRY_COMPARE(known.count(), 130);
    }

private:
    void write(const QString &name, const QByteArray &text) const
    {
        QFile file(m_home.filePath(name));
        QVERIFY(QDir().mkpath(QFileInfo(file).path()));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
    }

    void install(const QString &identifier, const QString &more) const
    {
        write(u"applications/%1.desktop"_s.arg(identifier),
            u"[Desktop Entry]\nType=Application\nName=Player\nExec=true\n%1\n"_s.arg(more).toUtf8());
    }

    void draw(const QString &name, QSize size) const
    {
        QVERIFY(QDir().mkpath(QFileInfo(m_home.filePath(name)).path()));
        QImage image(size, QImage::Format_ARGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(m_home.filePath(name)));
    }

    static DesktopEntryFacts read(DesktopEntries &entries, const QString &identifier)
    {
        const QSignalSpy known(&entries, &DesktopEntries::factsKnown);
        if (entries.facts(identifier) || !QTest::qWaitFor([&] { return known.count() == 1; })) {
            qWarning("The entry was known before, or was not read.");
        }
        return entries.facts(identifier).value_or(DesktopEntryFacts());
    }

    QTemporaryDir m_home;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::DesktopEntriesTest, QGuiApplication)
#include "DesktopEntriesTest.moc"
