// SPDX-License-Identifier: MIT
#include "DemoPlayerProcess.h"
#include "music/MusicConnector.h"
#include "music/mpris/MprisMusicApplication.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "support/PrivateBus.h"
#include "support/TurnWatch.h"
#include "support/endWithParent.h"
#include "support/registerTest.h"

#include <QGuiApplication>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <vector>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

constexpr int observation = 10'000; // milliseconds
constexpr int freeze = 30'000; // milliseconds
/// A turn of the event loop that waits for a frozen player takes seconds.
#if defined(__SANITIZE_THREAD__)
constexpr qint64 longestTurn = 200; // milliseconds
#else
constexpr qint64 longestTurn = 50; // milliseconds
#endif

/// A player on a bus of its own, followed by Music and its connector.
struct Deck {
    explicit Deck(const QString &name, const QStringList &playerArguments)
        : m_name(name)
        , defaults(folder.filePath(u"settings.conf"_s))
        , player(bus, bus.connect(name + u" player"_s), playerArguments)
    {
    }
    ~Deck()
    {
        connector.reset();
        music.reset();
        QDBusConnection::disconnectFromBus(m_name + u" player"_s);
        QDBusConnection::disconnectFromBus(m_name + u" music"_s);
    }
    void startFollowing()
    {
        const QDBusConnection connection = bus.connect(m_name + u" music"_s);
        uniqueName = connection.baseService();
        music = std::make_unique<MprisMusicApplication>(connection, defaults, launcher);
        connector = std::make_unique<MusicConnector>(*music, windowActivation);
    }
    [[nodiscard]] bool showsATrack() const { return connector && connector->currentTrack().has_value(); }

    QString m_name;
    PrivateBus bus;
    QTemporaryDir folder;
    UserDefaults defaults;
    ApplicationLauncher launcher;
    WindowActivation windowActivation;
    DemoPlayerProcess player;
    QString uniqueName;
    std::unique_ptr<MprisMusicApplication> music;
    std::unique_ptr<MusicConnector> connector;
};

/// Records when a connection sends a message, as a monitor of the bus sees it.
class SentMessages {
public:
    SentMessages(const PrivateBus &bus, const QString &sender)
    {
        endWithParent(m_monitor);
        m_monitor.start(
            u"dbus-monitor"_s, {u"--address"_s, bus.address(), u"--profile"_s, u"sender='%1'"_s.arg(sender)});
        m_monitor.waitForStarted();
    }
    ~SentMessages()
    {
        m_monitor.kill();
        m_monitor.waitForFinished();
    }
    SentMessages(const SentMessages &) = delete;
    SentMessages &operator=(const SentMessages &) = delete;

    /// Seconds, on the monitor's clock, at which there were messages; each as often as there were.
    [[nodiscard]] std::vector<double> takeTimes()
    {
        std::vector<double> times;
        while (m_monitor.canReadLine()) {
            // "mc" (call) or "sig", "mr", "err"; then the time stamp.
            const QList<QByteArray> fields = m_monitor.readLine().split('\t');
            if (fields.size() > 2 && (fields[0] == "mc" || fields[0] == "sig")) {
                times.push_back(fields[1].toDouble());
            }
        }
        return times;
    }

private:
    QProcess m_monitor;
};

qsizetype secondsWithMessages(const std::vector<double> &times)
{
    QSet<qint64> seconds;
    for (const double time : times) {
        seconds.insert(qint64(time));
    }
    return seconds.size();
}

} // namespace

/// Observations in real time, over half a minute. Those that need the same time share it.
class PlayerEnduranceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void steadyPlayersAreHardlyEverAskedAnything();
    void frozenPlayersAreNotFeltAndAreBackWithinTwoSeconds();
};

void PlayerEnduranceTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void PlayerEnduranceTest::steadyPlayersAreHardlyEverAskedAnything()
{
    Deck announcing(u"announcing"_s, {u"--play"_s, u"--track"_s, u"4"_s});
    Deck unannouncing(u"unannouncing"_s, {u"--play"_s, u"--track"_s, u"4"_s, u"--do"_s, u"signals seeked off"_s});
    Deck paused(u"paused"_s, {u"--play"_s, u"--track"_s, u"4"_s});
    Deck unwatched(u"unwatched"_s, {u"--play"_s, u"--track"_s, u"4"_s, u"--do"_s, u"signals seeked off"_s});
    const std::array decks{&announcing, &unannouncing, &paused, &unwatched};
    for (Deck *deck : decks) {
        QVERIFY(deck->player.isReady());
        deck->startFollowing();
    }
    for (const Deck *deck : decks) {
        QTRY_VERIFY(deck->showsATrack());
    }
    QVERIFY(announcing.player.tell(u"seek 100"_s));
    QVERIFY(paused.player.tell(u"pause"_s));
    unwatched.connector->setWatched(false);
    QTRY_COMPARE(paused.music->playerState(), PlayerState::paused);
    QTRY_VERIFY(announcing.music->playerPosition() > 99.0);
    // The reads that follow the seek and the pause end within two seconds.
    QTest::qWait(2'000);

    SentMessages fromAnnouncing(announcing.bus, announcing.uniqueName);
    SentMessages fromUnannouncing(unannouncing.bus, unannouncing.uniqueName);
    SentMessages fromPaused(paused.bus, paused.uniqueName);
    SentMessages fromUnwatched(unwatched.bus, unwatched.uniqueName);
    QTest::qWait(500);
    (void)fromAnnouncing.takeTimes();
    (void)fromUnannouncing.takeTimes();
    (void)fromPaused.takeTimes();
    (void)fromUnwatched.takeTimes();
    QTest::qWait(observation);

    const std::vector<double> announcingTimes = fromAnnouncing.takeTimes();
    const std::vector<double> unannouncingTimes = fromUnannouncing.takeTimes();
    const std::vector<double> pausedTimes = fromPaused.takeTimes();
    const std::vector<double> unwatchedTimes = fromUnwatched.takeTimes();
    qInfo("messages in 10 s: %zu to a player that announces its seeks, %zu to one that does not, %zu to a paused one, "
          "%zu to one that nobody watches",
        announcingTimes.size(), unannouncingTimes.size(), pausedTimes.size(), unwatchedTimes.size());
    QVERIFY(secondsWithMessages(announcingTimes) <= 1);
    // The monitor works: the other player is asked, once in two seconds.
    QVERIFY(unannouncingTimes.size() >= 4 && unannouncingTimes.size() <= 6);
    QCOMPARE(pausedTimes.size(), size_t(0));
    QCOMPARE(unwatchedTimes.size(), size_t(0));
    for (const Deck *quiet : {&paused, &unwatched}) {
        QVERIFY(!quiet->connector->isProgressPollingTimerActive());
        QVERIFY(!quiet->connector->isRefreshTrackTimerActive());
        for (const QTimer *timer : quiet->music->findChildren<QTimer *>()) {
            QVERIFY(!timer->isActive());
        }
    }
}

void PlayerEnduranceTest::frozenPlayersAreNotFeltAndAreBackWithinTwoSeconds()
{
    Deck frozenBefore(u"before"_s, {u"--play"_s, u"--track"_s, u"4"_s});
    Deck frozenWhilePlaying(u"while playing"_s, {u"--play"_s, u"--track"_s, u"4"_s});
    QVERIFY(frozenBefore.player.isReady());
    QVERIFY(frozenWhilePlaying.player.isReady());
    frozenWhilePlaying.startFollowing();
    QTRY_VERIFY(frozenWhilePlaying.showsATrack());

    TurnWatch turns;
    frozenBefore.player.freeze();
    frozenWhilePlaying.player.freeze();
    frozenBefore.startFollowing();
    QTest::qWait(3'000);
    // The user goes on using the window.
    frozenWhilePlaying.music->playpause();
    frozenWhilePlaying.connector->adjustVolume(4);
    frozenWhilePlaying.connector->refreshPlayerState();
    QTest::qWait(freeze - 3'000);
    QVERIFY(!frozenBefore.music->isRunning());
    QVERIFY(frozenWhilePlaying.music->isRunning());
    QVERIFY(!frozenWhilePlaying.music->isResponding());
    QVERIFY(frozenWhilePlaying.showsATrack());
    const double stood = *frozenWhilePlaying.music->playerPosition();
    QVERIFY(stood < 5.0);

    frozenBefore.player.thaw();
    frozenWhilePlaying.player.thaw();
    QElapsedTimer sinceThaw;
    sinceThaw.start();
    // The player's own clock went on, so the position has to jump by half a minute.
    QTRY_VERIFY_WITH_TIMEOUT(frozenBefore.showsATrack() && frozenWhilePlaying.music->isResponding()
            && frozenWhilePlaying.music->playerPosition() > stood + 20,
        5'000);
    qInfo("longest turn of the event loop %lld ms; right again %lld ms after the thaw", turns.longest(),
        sinceThaw.elapsed());
    QVERIFY(turns.longest() < longestTurn);
    QVERIFY(sinceThaw.elapsed() < 2'000);
    QCOMPARE(frozenWhilePlaying.player.takeCommands(), QStringList());

    // The measure itself works: a turn that is too long is noticed.
    QTimer::singleShot(0, this, [] { QThread::msleep(60); });
    QTest::qWait(100);
    QVERIFY(turns.longest() >= 60);
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayerEnduranceTest, QGuiApplication)
#include "PlayerEnduranceTest.moc"
