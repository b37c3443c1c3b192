// SPDX-License-Identifier: MIT
#include "music/mpris/choice/PlayerMemory.h"
#include "platform/LaunchEntry.h"
#include "platform/UserDefaults.h"
#include "support/elapse.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tunedeck {

namespace {

constexpr qint64 process = 7;

PlayerDescription player(const QString &name, const QString &entry)
{
    return {.name = name, .identity = u"Name of "_s + name, .desktopEntry = entry, .processId = process};
}

} // namespace

class PlayerMemoryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void theEntryOfAPlayerThatHasPlayedIsRemembered();
    void ofAPlayerThatHasNotPlayedNothingIsRemembered();
    void ofThePinnedPlayerTheNameIsRememberedThoughItHasNotPlayed();
    void aPlayerOfNoKnownProcessIsNotRemembered();
    void theSettingsAreWrittenOnceInTenSeconds();
    void whatHasNotBeenWrittenIsWrittenAtTheEnd();
    void whatIsRememberedAlreadyIsNotWrittenAgain();
    void thePinnedPlayerIsLaunchedBeforeTheLast();
    void whatIsRememberedOfAFormerPinIsOfNoUse();

private:
    void start();
    [[nodiscard]] QTimer &timer() const { return *m_memory->findChild<QTimer *>(u"memoryTimer"_s); }
    /// Remembers a player that has played, and waits until its entry is known.
    void rememberPlaying(const PlayerDescription &player);
    /// How often the settings have been written, by key.
    [[nodiscard]] QStringList writes() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<QSignalSpy> m_writes;
    std::unique_ptr<PlayerMemory> m_memory;
};

void PlayerMemoryTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_folder = std::make_unique<QTemporaryDir>();
    // A process outside of any sandbox.
    QDir processes(m_folder->path());
    QVERIFY(processes.mkpath(u"%1/root"_s.arg(process)));
    QFile group(m_folder->filePath(u"%1/cgroup"_s.arg(process)));
    QVERIFY(group.open(QIODevice::WriteOnly));
    QVERIFY(group.write("0::/app.slice/app-player.scope\n") > 0);
    m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"settings.conf"_s));
    start();
}

void PlayerMemoryTest::cleanup()
{
    m_memory.reset();
    m_writes.reset();
    m_defaults.reset();
}

void PlayerMemoryTest::start()
{
    m_memory.reset();
    m_memory = std::make_unique<PlayerMemory>(*m_defaults, m_folder->path());
    m_writes = std::make_unique<QSignalSpy>(m_defaults.get(), &UserDefaults::valueChanged);
}

void PlayerMemoryTest::rememberPlaying(const PlayerDescription &player)
{
    m_memory->remember(player, true);
    QTRY_VERIFY(m_memory->entriesToLaunch().contains(player.desktopEntry));
}

QStringList PlayerMemoryTest::writes() const
{
    QStringList keys;
    for (const QList<QVariant> &write : *m_writes) {
        keys.append(write.first().toString());
    }
    keys.sort();
    return keys;
}

void PlayerMemoryTest::theEntryOfAPlayerThatHasPlayedIsRemembered()
{
    rememberPlaying(player(u"player"_s, u"org.Player"_s));
    QCOMPARE(writes(), QStringList());
    QVERIFY(elapse(timer()));
    QCOMPARE(writes(), QStringList{u"LastFollowedPlayer"_s});
    QCOMPARE(m_defaults->stringForKey(u"LastFollowedPlayer"_s), u"org.Player"_s);
    start();
    QCOMPARE(m_memory->entriesToLaunch(), QStringList{u"org.Player"_s});
}

void PlayerMemoryTest::ofAPlayerThatHasNotPlayedNothingIsRemembered()
{
    m_memory->remember(player(u"quiet"_s, u"org.Quiet"_s), false);
    // A search that began now would be over when one that begins later is.
    LaunchEntry later(m_folder->path());
    const QSignalSpy finished(&later, &LaunchEntry::finished);
    later.find(process, u"org.Later"_s);
    QTRY_COMPARE(finished.count(), 1);
    QVERIFY(!timer().isActive());
    QCOMPARE(m_memory->entriesToLaunch(), QStringList());
    rememberPlaying(player(u"player"_s, u"org.Player"_s));
    m_memory->remember(player(u"quiet"_s, u"org.Quiet"_s), false);
    QCOMPARE(m_memory->entriesToLaunch(), QStringList{u"org.Player"_s});
    m_memory.reset();
    QCOMPARE(writes(), QStringList{u"LastFollowedPlayer"_s});
    QCOMPARE(m_defaults->stringForKey(u"LastFollowedPlayer"_s), u"org.Player"_s);
}

void PlayerMemoryTest::ofThePinnedPlayerTheNameIsRememberedThoughItHasNotPlayed()
{
    m_defaults->setValue(u"FollowedPlayer"_s, u"quiet"_s);
    start();
    QCOMPARE(m_memory->pinnedPlayersName(), u"quiet"_s);
    m_memory->remember(player(u"quiet"_s, u"org.Quiet"_s), false);
    QCOMPARE(m_memory->pinnedPlayersName(), u"Name of quiet"_s);
    QVERIFY(elapse(timer()));
    QCOMPARE(writes(), QStringList{u"FollowedPlayerName"_s});
    QCOMPARE(m_memory->entriesToLaunch(), QStringList{u"quiet"_s});
    start();
    QCOMPARE(m_memory->pinnedPlayersName(), u"Name of quiet"_s);
}

void PlayerMemoryTest::aPlayerOfNoKnownProcessIsNotRemembered()
{
    PlayerDescription unknown = player(u"unknown"_s, u"org.Unknown"_s);
    unknown.processId.reset();
    m_memory->remember(unknown, true);
    QVERIFY(!timer().isActive());
    QCOMPARE(m_memory->entriesToLaunch(), QStringList());
}

void PlayerMemoryTest::theSettingsAreWrittenOnceInTenSeconds()
{
    rememberPlaying(player(u"player"_s, u"org.First"_s));
    // All that is known at first is written together, soon.
    QVERIFY(timer().intervalAsDuration() <= 1s);
    QVERIFY(elapse(timer()));
    QCOMPARE(writes().size(), 1);
    for (int i = 0; i < 5; ++i) {
        rememberPlaying(player(u"player"_s, u"org.Next%1"_s.arg(i)));
        QVERIFY(timer().isActive());
        QVERIFY(timer().intervalAsDuration() > 5s && timer().intervalAsDuration() <= 10s);
    }
    QCOMPARE(writes().size(), 1);
    QVERIFY(elapse(timer()));
    QCOMPARE(writes().size(), 2);
    QCOMPARE(m_defaults->stringForKey(u"LastFollowedPlayer"_s), u"org.Next4"_s);
    QVERIFY(!timer().isActive());
}

void PlayerMemoryTest::whatHasNotBeenWrittenIsWrittenAtTheEnd()
{
    rememberPlaying(player(u"player"_s, u"org.First"_s));
    QVERIFY(elapse(timer()));
    rememberPlaying(player(u"player"_s, u"org.Last"_s));
    m_memory.reset();
    QCOMPARE(writes().size(), 2);
    QCOMPARE(m_defaults->stringForKey(u"LastFollowedPlayer"_s), u"org.Last"_s);
}

void PlayerMemoryTest::whatIsRememberedAlreadyIsNotWrittenAgain()
{
    rememberPlaying(player(u"player"_s, u"org.Player"_s));
    start();
    QCOMPARE(m_defaults->stringForKey(u"LastFollowedPlayer"_s), u"org.Player"_s);
    rememberPlaying(player(u"player"_s, u"org.Player"_s));
    // Another entry shows that the first has been found as well.
    rememberPlaying(player(u"player"_s, u"org.Other"_s));
    rememberPlaying(player(u"player"_s, u"org.Player"_s));
    m_memory->remember(player(u"player"_s, u"org.Player"_s), true);
    QVERIFY(elapse(timer()));
    m_memory->remember(player(u"player"_s, u"org.Player"_s), true);
    QVERIFY(!timer().isActive());
    m_memory.reset();
    QCOMPARE(writes().size(), 1);
}

void PlayerMemoryTest::thePinnedPlayerIsLaunchedBeforeTheLast()
{
    m_defaults->setValue(u"FollowedPlayer"_s, u"favourite"_s);
    rememberPlaying(player(u"favourite.instance12"_s, u"org.Favourite"_s));
    rememberPlaying(player(u"other"_s, u"org.Other"_s));
    QCOMPARE(m_memory->entriesToLaunch(), (QStringList{u"org.Favourite"_s, u"favourite"_s, u"org.Other"_s}));
    QCOMPARE(m_memory->pinnedPlayersName(), u"Name of favourite.instance12"_s);
    start();
    QCOMPARE(m_memory->entriesToLaunch(), (QStringList{u"org.Favourite"_s, u"favourite"_s, u"org.Other"_s}));
    QCOMPARE(m_memory->pinnedPlayersName(), u"Name of favourite.instance12"_s);
}

void PlayerMemoryTest::whatIsRememberedOfAFormerPinIsOfNoUse()
{
    m_defaults->setValue(u"FollowedPlayer"_s, u"former"_s);
    rememberPlaying(player(u"former"_s, u"org.Former"_s));
    m_defaults->setValue(u"FollowedPlayer"_s, u"next"_s);
    QCOMPARE(m_memory->pinnedPlayersName(), u"next"_s);
    QCOMPARE(m_memory->entriesToLaunch(), (QStringList{u"next"_s, u"org.Former"_s}));
    m_defaults->setValue(u"FollowedPlayer"_s, QString());
    QCOMPARE(m_memory->pinnedPlayersName(), QString());
    QCOMPARE(m_memory->entriesToLaunch(), QStringList{u"org.Former"_s});
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayerMemoryTest, QCoreApplication)
#include "PlayerMemoryTest.moc"
