// SPDX-License-Identifier: MIT
#include "support/PrivateBus.h"
#include "support/registerTest.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <csignal>
#include <limits>

using namespace Qt::StringLiterals;
using tunedeck::PrivateBus;

namespace {

const QString service = u"org.mpris.MediaPlayer2.tunedeckdemo"_s;
const QString path = u"/org/mpris/MediaPlayer2"_s;
const QString playerInterface = u"org.mpris.MediaPlayer2.Player"_s;
const QString playlistsInterface = u"org.mpris.MediaPlayer2.Playlists"_s;
const QString propertiesInterface = u"org.freedesktop.DBus.Properties"_s;
const QString controlInterface = u"org.tunedeck.DemoPlayer"_s;
constexpr int patience = 10'000;

QVariantMap mapOf(const QVariant &value)
{
    return qdbus_cast<QVariantMap>(value);
}

/// A demo player that runs on the bus until the test ends.
class DemoPlayer {
public:
    DemoPlayer(const PrivateBus &bus, const QStringList &arguments)
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
        m_process.setProcessEnvironment(environment);
        m_process.start(QStringLiteral(DEMO_PLAYER), arguments);
    }
    ~DemoPlayer()
    {
        m_process.kill();
        m_process.waitForFinished(patience);
    }
    DemoPlayer(const DemoPlayer &) = delete;
    DemoPlayer &operator=(const DemoPlayer &) = delete;

    bool isReady() { return m_process.waitForReadyRead(patience) && m_process.readAllStandardOutput() == "ready\n"; }
    QProcess &process() { return m_process; }
    pid_t pid() const { return static_cast<pid_t>(m_process.processId()); }

private:
    QProcess m_process;
};

} // namespace

/// Everything is asked over a bus, as a client would.
class DemoPlayerTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<PrivateBus> m_bus;
    QDBusConnection m_connection{QString()};
    QList<QVariantMap> m_changes;
    QList<qlonglong> m_seeks;

    QDBusMessage call(const QString &interface, const QString &member, const QVariantList &arguments = {},
        int deadline = patience) const
    {
        auto message = QDBusMessage::createMethodCall(service, path, interface, member);
        message.setArguments(arguments);
        return m_connection.call(message, QDBus::Block, deadline);
    }
    QDBusMessage tell(const QString &line) const { return call(controlInterface, u"Script"_s, {line}); }
    bool understands(const QString &line) const { return tell(line).type() == QDBusMessage::ReplyMessage; }
    bool does(const QString &member, const QVariantList &arguments = {}) const
    {
        return call(playerInterface, member, arguments).type() == QDBusMessage::ReplyMessage;
    }
    QVariant get(const QString &name, const QString &interface = playerInterface) const
    {
        const QVariantList answer = call(propertiesInterface, u"Get"_s, {interface, name}).arguments();
        return answer.value(0).value<QDBusVariant>().variant();
    }
    bool set(const QString &name, const QVariant &value) const
    {
        const QVariantList arguments{playerInterface, name, QVariant::fromValue(QDBusVariant(value))};
        return call(propertiesInterface, u"Set"_s, arguments).type() == QDBusMessage::ReplyMessage;
    }
    QVariantMap getAll() const
    {
        return mapOf(call(propertiesInterface, u"GetAll"_s, {playerInterface}).arguments().value(0));
    }
    QVariantMap metadata() const { return mapOf(get(u"Metadata"_s)); }
    QString trackId() const { return metadata().value(u"mpris:trackid"_s).value<QDBusObjectPath>().path(); }
    QString status() const { return get(u"PlaybackStatus"_s).toString(); }
    qlonglong position() const { return get(u"Position"_s).toLongLong(); }
    QStringList takeCalls() const { return call(controlInterface, u"TakeCalls"_s).arguments().value(0).toStringList(); }
    QVariantMap lastChange() const { return m_changes.value(m_changes.size() - 1); }
    static QVariant track(int number)
    {
        return QVariant::fromValue(QDBusObjectPath(u"/org/tunedeck/demo/track/%1"_s.arg(number)));
    }

private Q_SLOTS:
    void init();
    void cleanup();

    void propertiesChanged(const QString &, const QVariantMap &changed, const QStringList &) { m_changes += changed; }
    void seeked(qlonglong position) { m_seeks += position; }

    void itStartsStoppedWithNothingToShow();
    void itPlaysAndPauses();
    void itsPositionRunsWithTheClockTimesTheRate();
    void aTrackThatEndsIsFollowedByTheNextAndTheLastByNothing();
    void loopingRepeatsTheTrackOrTheList();
    void theSameSeedShufflesTheSameWay();
    void itSeeksByTheRulesOfMpris();
    void anOpenedAddressIsAnUntitledTrack();
    void itAnnouncesWhatChangedAndNothingElse();
    void volumeIsSetWithinItsRange();
    void playlistsArePagedOrderedAndActivated();
    void thousandsOfPlaylistsOrNone();
    void pagesOfPlaylistsCanBeShortAndEndInAnError();
    void theCallsCanBeTakenInOrder();

    void aLateAnswerAndItsEffectComeLate();
    void heldCallsAreCarriedOutInOrderOnceReleased();
    void aSilentPlayerNeitherAnswersNorObeys();
    void wrongValuesArriveWronglyTyped_data();
    void wrongValuesArriveWronglyTyped();
    void aWrongPropertyIsAnnouncedAndRightedAgain();
    void anAbsentKeyIsMissing();
    void aDeadlyPropertyKillsWhenAskedFor();
    void aDyingPlayerSaysNoGoodbye();
    void theNextCallCanBeTheLast();
    void aFrozenPlayerObeysAfterItThaws();
    void aNewTrackBlinks();
    void aNewTrackIsPartialAtFirst();
    void aVolumeEchoes();
    void aFloodIsCompleteAndLeavesRoomForAnswers();
    void refusedAndImpossibleThingsDoNothing();
    void trackIdsTakeTheKindsOfRealPlayers();
    void signalsCanBeMissing();
    void onePropertyCanChangeQuietly();
    void playAndPauseCanToggle();
    void aShuffleCanFlipAtEveryRead();
    void seeksCanBeAnnouncedUnasked();
    void aPositionCanBeOld();
    void aTrackCanHaveNoTexts();
    void aStationCanHaveItsSongUnderAKeyOfItsOwn_data();
    void aStationCanHaveItsSongUnderAKeyOfItsOwn();
    void theActivePlaylistCanBeTheViewedOne();
    void theNameCanBeGivenUpAndTakenAgain();

    void aLineThatIsWrongAtItsEndDoesNothing();
    void tellSendsALine();
    void aSecondPlayerTakesANameOfItsOwn();
    void severalPlayersOfOneProcessHaveANameAndAConnectionEach();
    void aPlayerThatReplacesAnotherTakesItsNameWithoutAGap();
    void terminationIsClean();
    void itEndsWithItsBus();
};

void DemoPlayerTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_changes.clear();
    m_seeks.clear();
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
    m_connection = m_bus->connect(u"client"_s);
    QVERIFY(m_connection.connect(service, path, propertiesInterface, u"PropertiesChanged"_s, this,
        SLOT(propertiesChanged(QString, QVariantMap, QStringList))));
    QVERIFY(m_connection.connect(service, path, playerInterface, u"Seeked"_s, this, SLOT(seeked(qlonglong))));
}

void DemoPlayerTest::cleanup()
{
    QDBusConnection::disconnectFromBus(u"client"_s);
    m_connection = QDBusConnection(QString());
    m_bus.reset();
    // Signals that the test did not wait for must not reach the next one.
    QCoreApplication::removePostedEvents(this);
}

void DemoPlayerTest::itStartsStoppedWithNothingToShow()
{
    DemoPlayer player(*m_bus, {u"--track"_s, u"4"_s});
    QVERIFY(player.isReady());
    QCOMPARE(status(), u"Stopped"_s);
    QVERIFY(metadata().isEmpty());
    QVERIFY(does(u"Play"_s));
    QCOMPARE(metadata().value(u"mpris:length"_s), QVariant(4'200'000'000LL));
    QCOMPARE(get(u"Identity"_s, u"org.mpris.MediaPlayer2"_s).toString(), u"Tunedeck Demo Player"_s);
}

void DemoPlayerTest::itPlaysAndPauses()
{
    DemoPlayer player(*m_bus, {});
    QVERIFY(player.isReady());
    QVERIFY(does(u"PlayPause"_s));
    QCOMPARE(status(), u"Playing"_s);
    QTRY_VERIFY(position() > 0);
    QVERIFY(does(u"PlayPause"_s));
    QCOMPARE(status(), u"Paused"_s);
    const qlonglong paused = position();
    QCOMPARE(position(), paused);
    QVERIFY(does(u"Next"_s));
    QCOMPARE(status(), u"Paused"_s);
    QCOMPARE(trackId(), u"/org/tunedeck/demo/track/1"_s);
    QCOMPARE(metadata().value(u"xesam:artist"_s).toStringList(), QStringList({u"Odalune Brack"_s, u"Mirek Soothe"_s}));
    QVERIFY(does(u"Previous"_s));
    QCOMPARE(trackId(), u"/org/tunedeck/demo/track/0"_s);
    QVERIFY(does(u"Stop"_s));
    QCOMPARE(status(), u"Stopped"_s);
    QCOMPARE(position(), 0);
}

void DemoPlayerTest::itsPositionRunsWithTheClockTimesTheRate()
{
    DemoPlayer player(*m_bus, {u"--play"_s});
    QVERIFY(player.isReady());
    QVERIFY(set(u"Rate"_s, 4.0));
    QElapsedTimer outer;
    outer.start();
    const qlonglong before = position();
    QElapsedTimer inner;
    inner.start();
    QTRY_VERIFY(position() > before + 100'000);
    const qlonglong least = 4 * inner.nsecsElapsed() / 1000;
    const qlonglong passed = position() - before;
    const qlonglong most = 4 * outer.nsecsElapsed() / 1000;
    constexpr qlonglong rounding = 10;
    QVERIFY2(passed >= least - rounding && passed <= most + rounding, qPrintable(QString::number(passed)));
}

void DemoPlayerTest::aTrackThatEndsIsFollowedByTheNextAndTheLastByNothing()
{
    DemoPlayer player(*m_bus, {});
    QVERIFY(player.isReady());
    QVERIFY(call(playlistsInterface, u"ActivatePlaylist"_s,
                {QVariant::fromValue(QDBusObjectPath(u"/org/tunedeck/demo/playlist/2"_s))})
                .type()
        == QDBusMessage::ReplyMessage);
    QCOMPARE(trackId(), u"/org/tunedeck/demo/track/5"_s);
    QCOMPARE(metadata().value(u"xesam:title"_s).toString(), u"硝子の停留所にて"_s);
    QVERIFY(understands(u"length 0"_s));
    QTRY_COMPARE(trackId(), u"/org/tunedeck/demo/track/6"_s);
    QCOMPARE(status(), u"Playing"_s);
    QCOMPARE(get(u"CanGoNext"_s).toBool(), false);
    QVERIFY(does(u"Next"_s));
    QCOMPARE(trackId(), u"/org/tunedeck/demo/track/6"_s);
    QVERIFY(understands(u"length 0"_s));
    QTRY_COMPARE(status(), u"Stopped"_s);
    QVERIFY(metadata().isEmpty());
}

void DemoPlayerTest::loopingRepeatsTheTrackOrTheList()
{
    DemoPlayer player(*m_bus, {u"--play"_s, u"--track"_s, u"9"_s});
    QVERIFY(player.isReady());
    QVERIFY(set(u"LoopStatus"_s, u"Playlist"_s));
    QVERIFY(does(u"Next"_s));
    QCOMPARE(trackId(), u"/org/tunedeck/demo/track/0"_s);
    QVERIFY(set(u"LoopStatus"_s, u"Track"_s));
    QVERIFY(set(u"LoopStatus"_s, u"Sometimes"_s));
    QCOMPARE(get(u"LoopStatus"_s).toString(), u"Track"_s);
    QVERIFY(understands(u"length 0"_s));
    QTRY_COMPARE(metadata().value(u"mpris:length"_s), QVariant(204'000'000LL));
    QCOMPARE(trackId(), u"/org/tunedeck/demo/track/0"_s);
}

void DemoPlayerTest::theSameSeedShufflesTheSameWay()
{
    const auto order = [this] {
        DemoPlayer player(*m_bus, {u"--play"_s, u"--seed"_s, u"7"_s, u"--do"_s, u"shuffle on"_s});
        QStringList ids;
        if (!player.isReady()) {
            return ids;
        }
        do {
            ids += trackId();
        } while (get(u"CanGoNext"_s).toBool() && does(u"Next"_s));
        return ids;
    };
    const QStringList first = order();
    QCOMPARE(first.size(), 10);
    QCOMPARE(QSet<QString>(first.cbegin(), first.cend()).size(), 10);
    QCOMPARE(first.constFirst(), u"/org/tunedeck/demo/track/0"_s);
    QStringList sorted = first;
    sorted.sort();
    QVERIFY(first != sorted);
    QCOMPARE(order(), first);
}

void DemoPlayerTest::itSeeksByTheRulesOfMpris()
{
    DemoPlayer player(*m_bus, {u"--play"_s, u"--do"_s, u"pause"_s});
    QVERIFY(player.isReady());
    QVERIFY(does(u"SetPosition"_s, {track(0), 100'000'000LL}));
    QCOMPARE(position(), 100'000'000);
    QVERIFY(does(u"SetPosition"_s, {track(3), 15'000'000LL}));
    QVERIFY(does(u"SetPosition"_s, {track(0), -1LL}));
    QVERIFY(does(u"SetPosition"_s, {track(0), 204'000'001LL}));
    QCOMPARE(position(), 100'000'000);
    QVERIFY(does(u"Seek"_s, {-10'000'000LL}));
    QCOMPARE(position(), 90'000'000);
    QVERIFY(does(u"Seek"_s, {std::numeric_limits<qlonglong>::min()}));
    QCOMPARE(position(), 0);
    QTRY_COMPARE(m_seeks, QList<qlonglong>({100'000'000, 90'000'000, 0}));
    QVERIFY(does(u"Seek"_s, {std::numeric_limits<qlonglong>::max()}));
    QCOMPARE(trackId(), u"/org/tunedeck/demo/track/1"_s);
    QVERIFY(understands(u"track 9"_s));
    QCOMPARE(get(u"CanSeek"_s).toBool(), false);
    QVERIFY(!metadata().contains(u"mpris:length"_s));
}

void DemoPlayerTest::anOpenedAddressIsAnUntitledTrack()
{
    DemoPlayer player(*m_bus, {});
    QVERIFY(player.isReady());
    QVERIFY(does(u"OpenUri"_s, {u"https://music.example/new.ogg"_s}));
    QCOMPARE(status(), u"Playing"_s);
    QCOMPARE(metadata().value(u"xesam:url"_s).toString(), u"https://music.example/new.ogg"_s);
    QVERIFY(!metadata().contains(u"xesam:title"_s));
}

void DemoPlayerTest::itAnnouncesWhatChangedAndNothingElse()
{
    DemoPlayer player(*m_bus, {u"--play"_s});
    QVERIFY(player.isReady());
    QVERIFY(does(u"Pause"_s));
    QTRY_COMPARE(m_changes, QList<QVariantMap>({{{u"PlaybackStatus"_s, u"Paused"_s}}}));
    QVERIFY(does(u"Pause"_s));
    QVERIFY(understands(u"restart"_s));
    QTRY_COMPARE(m_changes.size(), 2);
    QCOMPARE(lastChange().keys(), QStringList({u"Metadata"_s}));
    QVERIFY(does(u"Next"_s));
    QTRY_COMPARE(m_changes.size(), 3);
    QCOMPARE(lastChange().keys(), QStringList({u"CanGoPrevious"_s, u"Metadata"_s}));
    QVERIFY(understands(u"title Another One"_s));
    QTRY_COMPARE(m_changes.size(), 4);
    QCOMPARE(mapOf(lastChange().value(u"Metadata"_s)).value(u"xesam:title"_s).toString(), u"Another One"_s);
}

void DemoPlayerTest::volumeIsSetWithinItsRange()
{
    DemoPlayer player(*m_bus, {});
    QVERIFY(player.isReady());
    QVERIFY(set(u"Volume"_s, 0.504));
    QCOMPARE(get(u"Volume"_s).toDouble(), 0.504);
    QVERIFY(set(u"Volume"_s, 3.0));
    QCOMPARE(get(u"Volume"_s).toDouble(), 1.0);
    QVERIFY(!set(u"Volume"_s, 1));
    QVERIFY(!set(u"Position"_s, 1LL));
    QVERIFY(set(u"Volume"_s, std::numeric_limits<double>::quiet_NaN()));
    QCOMPARE(get(u"Volume"_s).toDouble(), 1.0);
    QVERIFY(understands(u"volume 1.3"_s));
    QCOMPARE(get(u"Volume"_s).toDouble(), 1.3);
}

void DemoPlayerTest::playlistsArePagedOrderedAndActivated()
{
    DemoPlayer player(*m_bus, {});
    QVERIFY(player.isReady());
    const auto names = [this](uint index, uint maximum, const QString &order, bool isReversed) {
        const QDBusMessage reply = call(playlistsInterface, u"GetPlaylists"_s, {index, maximum, order, isReversed});
        const auto list = reply.arguments().value(0).value<QDBusArgument>();
        QStringList found;
        list.beginArray();
        while (!list.atEnd()) {
            QDBusObjectPath id;
            QString name;
            QString icon;
            list.beginStructure();
            list >> id >> name >> icon;
            list.endStructure();
            found += name;
        }
        list.endArray();
        return found;
    };
    QCOMPARE(names(0, 100, u"UserDefined"_s, false),
        QStringList(
            {u"Everything"_s, u"Short Ones"_s, u"Far Away"_s, u"Odd Ones"_s, u"From the Air"_s, u"Nothing Yet"_s}));
    QCOMPARE(names(1, 2, u"Alphabetical"_s, false), QStringList({u"Far Away"_s, u"From the Air"_s}));
    QCOMPARE(names(0, 1, u"Alphabetical"_s, true), QStringList({u"Short Ones"_s}));
    QCOMPARE(names(50, 1, u"Alphabetical"_s, true), QStringList());

    const auto activate = [this](const QString &id) {
        call(playlistsInterface, u"ActivatePlaylist"_s, {QVariant::fromValue(QDBusObjectPath(id))});
    };
    activate(u"/org/tunedeck/demo/playlist/99"_s);
    activate(u"/somewhere/else"_s);
    QCOMPARE(status(), u"Stopped"_s);
    activate(u"/org/tunedeck/demo/playlist/3"_s);
    QCOMPARE(status(), u"Playing"_s);
    QCOMPARE(trackId(), u"/org/tunedeck/demo/track/2"_s);
    activate(u"/org/tunedeck/demo/playlist/5"_s);
    QCOMPARE(status(), u"Stopped"_s);
    QCOMPARE(get(u"CanPlay"_s).toBool(), false);
}

void DemoPlayerTest::thousandsOfPlaylistsOrNone()
{
    DemoPlayer player(*m_bus, {u"--do"_s, u"playlists 10000"_s});
    QVERIFY(player.isReady());
    QCOMPARE(get(u"PlaylistCount"_s, playlistsInterface), QVariant(10'000U));
    QVERIFY(understands(u"playlists off"_s));
    QCOMPARE(call(propertiesInterface, u"GetAll"_s, {playlistsInterface}).errorName(),
        u"org.freedesktop.DBus.Error.UnknownInterface"_s);
    QCOMPARE(call(playlistsInterface, u"GetPlaylists"_s, {0U, 1U, u"UserDefined"_s, false}).errorName(),
        u"org.freedesktop.DBus.Error.UnknownInterface"_s);
}

void DemoPlayerTest::pagesOfPlaylistsCanBeShortAndEndInAnError()
{
    DemoPlayer player(*m_bus, {u"--do"_s, u"playlists 5"_s, u"--do"_s, u"pages 2 lenient"_s});
    QVERIFY(player.isReady());
    const auto page = [this](uint index) {
        return call(playlistsInterface, u"GetPlaylists"_s, {index, 1'000U, u"UserDefined"_s, false});
    };
    const auto lengthOf = [](const QDBusMessage &reply) {
        return qdbus_cast<QVariantList>(reply.arguments().value(0)).size();
    };
    QCOMPARE(lengthOf(page(0)), 2);
    QCOMPARE(lengthOf(page(4)), 1);
    QCOMPARE(page(5).type(), QDBusMessage::ReplyMessage);
    QCOMPARE(lengthOf(page(5)), 0);
    QVERIFY(understands(u"pages 3 strict"_s));
    QCOMPARE(lengthOf(page(0)), 3);
    QCOMPARE(page(5).errorName(), u"org.freedesktop.DBus.Error.InvalidArgs"_s);
}

void DemoPlayerTest::theCallsCanBeTakenInOrder()
{
    DemoPlayer player(*m_bus, {u"--play"_s});
    QVERIFY(player.isReady());
    QVERIFY(does(u"PlayPause"_s));
    QVERIFY(does(u"SetPosition"_s, {track(3), 15'000'000LL}));
    QVERIFY(set(u"Volume"_s, 0.5));
    QVERIFY(set(u"Shuffle"_s, true));
    getAll();
    position();
    QVERIFY(understands(u"next"_s));
    QCOMPARE(takeCalls(),
        QStringList({u"PlayPause"_s, u"SetPosition /org/tunedeck/demo/track/3 15000000"_s, u"Set Volume 0.5"_s,
            u"Set Shuffle true"_s, u"GetAll org.mpris.MediaPlayer2.Player"_s, u"Get Position"_s}));
    QCOMPARE(takeCalls(), QStringList());
}

void DemoPlayerTest::aLateAnswerAndItsEffectComeLate()
{
    DemoPlayer player(*m_bus, {});
    QVERIFY(player.isReady());
    QVERIFY(understands(u"late 300"_s));
    QElapsedTimer timer;
    timer.start();
    const auto pending =
        m_connection.asyncCall(QDBusMessage::createMethodCall(service, path, playerInterface, u"Play"_s));
    QVERIFY(understands(u"volume 0.1"_s));
    QVERIFY2(timer.elapsed() < 300, "the control interface is never late");
    QTRY_COMPARE(m_changes.size(), 1);
    QVERIFY(m_changes.constFirst().contains(u"Volume"_s));
    QTRY_COMPARE(m_changes.size(), 2);
    QVERIFY(lastChange().contains(u"PlaybackStatus"_s));
    QTRY_VERIFY(pending.isFinished());
    QVERIFY(timer.elapsed() >= 300);
    QVERIFY(!pending.isError());
}

void DemoPlayerTest::heldCallsAreCarriedOutInOrderOnceReleased()
{
    DemoPlayer player(*m_bus, {});
    QVERIFY(player.isReady());
    QVERIFY(understands(u"hold on"_s));
    const auto send = [this](const QString &member) {
        return m_connection.asyncCall(QDBusMessage::createMethodCall(service, path, playerInterface, member));
    };
    const auto first = send(u"Play"_s);
    const auto second = send(u"Next"_s);
    const auto third = send(u"Pause"_s);
    QVERIFY(understands(u"volume 0.1"_s));
    QCOMPARE(takeCalls(), QStringList({u"Play"_s, u"Next"_s, u"Pause"_s}));
    QVERIFY(!first.isFinished() && !second.isFinished() && !third.isFinished());
    QVERIFY(understands(u"hold off"_s));
    QVERIFY(first.isFinished() && second.isFinished() && third.isFinished());
    QCOMPARE(status(), u"Paused"_s);
    QCOMPARE(trackId(), u"/org/tunedeck/demo/track/1"_s);
    QCoreApplication::sendPostedEvents();
    QVERIFY(m_changes.constFirst().contains(u"Volume"_s));
    QVERIFY(m_changes.at(1).contains(u"PlaybackStatus"_s));
}

void DemoPlayerTest::aSilentPlayerNeitherAnswersNorObeys()
{
    DemoPlayer player(*m_bus, {u"--play"_s});
    QVERIFY(player.isReady());
    QVERIFY(understands(u"silent on"_s));
    QCOMPARE(call(playerInterface, u"PlayPause"_s, {}, 100).errorName(), u"org.freedesktop.DBus.Error.NoReply"_s);
    QVERIFY(understands(u"silent off"_s));
    QCOMPARE(takeCalls(), QStringList({u"PlayPause"_s}));
    QCOMPARE(status(), u"Playing"_s);
}

void DemoPlayerTest::wrongValuesArriveWronglyTyped_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QMetaType>("type");
    QTest::addColumn<QString>("signature");
    const auto add = [](const char *kind, QMetaType type, const QString &signature = {}) {
        QTest::newRow(kind) << QString::fromLatin1(kind) << type << signature;
    };
    const auto compound = QMetaType::fromType<QDBusArgument>();
    add("string", QMetaType::fromType<QString>());
    add("number-string", QMetaType::fromType<QString>());
    add("int", QMetaType::fromType<int>());
    add("uint", QMetaType::fromType<uint>());
    add("int64", QMetaType::fromType<qlonglong>());
    add("uint64", QMetaType::fromType<qulonglong>());
    add("double", QMetaType::fromType<double>());
    add("nan", QMetaType::fromType<double>());
    add("inf", QMetaType::fromType<double>());
    add("negative", QMetaType::fromType<double>());
    add("zero", QMetaType::fromType<double>());
    add("int64max", QMetaType::fromType<qlonglong>());
    add("int64min", QMetaType::fromType<qlonglong>());
    add("uint64max", QMetaType::fromType<qulonglong>());
    add("bool", QMetaType::fromType<bool>());
    add("empty", QMetaType::fromType<QString>());
    add("huge", QMetaType::fromType<QString>());
    add("control", QMetaType::fromType<QString>());
    add("array", QMetaType::fromType<QStringList>());
    add("path", QMetaType::fromType<QDBusObjectPath>());
    add("bytes", QMetaType::fromType<QByteArray>());
    add("nested", QMetaType::fromType<QDBusVariant>());
    add("int-array", compound, u"ai"_s);
    add("dict", compound, u"a{sv}"_s);
    add("struct", compound, u"(oss)"_s);
}

void DemoPlayerTest::wrongValuesArriveWronglyTyped()
{
    QFETCH(const QString, kind);
    QFETCH(const QMetaType, type);
    QFETCH(const QString, signature);

    DemoPlayer player(*m_bus, {u"--play"_s});
    QVERIFY(player.isReady());
    QVERIFY(understands(u"wrong Volume "_s + kind));
    QVERIFY(understands(u"wrong icy-title "_s + kind));
    const auto signatureOf = [](const QVariant &value) { return value.value<QDBusArgument>().currentSignature(); };
    for (const QVariant &value : {get(u"Volume"_s), getAll().value(u"Volume"_s)}) {
        QCOMPARE(value.metaType(), type);
        QCOMPARE(signatureOf(value), signature);
    }
    // A number of either type is as wrong where no type is right.
    const bool isAnyNumber = kind == u"negative"_s || kind == u"zero"_s;
    const QVariant tag = metadata().value(u"icy-title"_s);
    QCOMPARE(tag.metaType(), isAnyNumber ? QMetaType::fromType<qlonglong>() : type);
    QCOMPARE(signatureOf(tag), signature);
}

void DemoPlayerTest::aWrongPropertyIsAnnouncedAndRightedAgain()
{
    DemoPlayer player(*m_bus, {u"--play"_s});
    QVERIFY(player.isReady());
    QVERIFY(understands(u"wrong LoopStatus string Round and Round"_s));
    QTRY_COMPARE(m_changes, QList<QVariantMap>({{{u"LoopStatus"_s, u"Round and Round"_s}}}));
    QVERIFY(understands(u"wrong Position nan"_s));
    QTRY_COMPARE(m_changes.size(), 2);
    QVERIFY(std::isnan(lastChange().value(u"Position"_s).toDouble()));
    QVERIFY(understands(u"wrong mpris:length uint64 5000000"_s));
    QTRY_COMPARE(mapOf(lastChange().value(u"Metadata"_s)).value(u"mpris:length"_s), QVariant(5'000'000ULL));
    QVERIFY(understands(u"right all"_s));
    QTRY_COMPARE(lastChange().value(u"LoopStatus"_s).toString(), u"None"_s);
    QVERIFY(!lastChange().contains(u"Position"_s));
    QCOMPARE(metadata().value(u"mpris:length"_s), QVariant(204'000'000LL));
    QCOMPARE(get(u"Position"_s).metaType(), QMetaType::fromType<qlonglong>());
}

void DemoPlayerTest::anAbsentKeyIsMissing()
{
    DemoPlayer player(*m_bus, {u"--play"_s});
    QVERIFY(player.isReady());
    QVERIFY(understands(u"absent Volume"_s));
    QVERIFY(understands(u"absent xesam:title"_s));
    QVERIFY(!getAll().contains(u"Volume"_s));
    QVERIFY(getAll().contains(u"Shuffle"_s));
    QCOMPARE(call(propertiesInterface, u"Get"_s, {playerInterface, u"Volume"_s}).errorName(),
        u"org.freedesktop.DBus.Error.UnknownProperty"_s);
    QVERIFY(!metadata().contains(u"xesam:title"_s));
    QVERIFY(metadata().contains(u"xesam:url"_s));
    QVERIFY(understands(u"right Volume"_s));
    QVERIFY(getAll().contains(u"Volume"_s));
}

void DemoPlayerTest::aDeadlyPropertyKillsWhenAskedFor()
{
    DemoPlayer player(*m_bus, {});
    QVERIFY(player.isReady());
    QVERIFY(understands(u"die-on-get Shuffle"_s));
    QVERIFY(getAll().contains(u"Shuffle"_s));
    QVERIFY(!get(u"Shuffle"_s).isValid());
    QVERIFY(player.process().waitForFinished(patience));
    QCOMPARE(player.process().exitStatus(), QProcess::CrashExit);
}

void DemoPlayerTest::aDyingPlayerSaysNoGoodbye()
{
    DemoPlayer player(*m_bus, {u"--play"_s});
    QVERIFY(player.isReady());
    QVERIFY(understands(u"die"_s));
    QVERIFY(player.process().waitForFinished(patience));
    QCOMPARE(player.process().exitCode(), 1);
    QTRY_VERIFY(!m_connection.interface()->isServiceRegistered(service));
    QVERIFY(m_changes.isEmpty());
}

void DemoPlayerTest::theNextCallCanBeTheLast()
{
    DemoPlayer player(*m_bus, {u"--do"_s, u"dieoncall"_s});
    QVERIFY(player.isReady());
    QVERIFY(understands(u"play"_s));
    QCOMPARE(call(playerInterface, u"Pause"_s).type(), QDBusMessage::ErrorMessage);
    QVERIFY(player.process().waitForFinished(patience));
}

void DemoPlayerTest::aFrozenPlayerObeysAfterItThaws()
{
    DemoPlayer player(*m_bus, {});
    QVERIFY(player.isReady());
    QVERIFY(understands(u"freeze"_s));
    const auto isStopped = [&player] {
        QFile file(u"/proc/%1/stat"_s.arg(player.pid()));
        return file.open(QIODevice::ReadOnly) && file.readAll().contains(") T ");
    };
    QTRY_VERIFY(isStopped());
    QVERIFY(m_connection.interface()->isServiceRegistered(service));
    QCOMPARE(call(playerInterface, u"PlayPause"_s, {}, 100).errorName(), u"org.freedesktop.DBus.Error.NoReply"_s);
    QCOMPARE(kill(player.pid(), SIGCONT), 0);
    QCOMPARE(status(), u"Playing"_s);
}

void DemoPlayerTest::aNewTrackBlinks()
{
    DemoPlayer player(*m_bus, {u"--play"_s, u"--track"_s, u"1"_s, u"--do"_s, u"blink 300"_s});
    QVERIFY(player.isReady());
    QVERIFY(does(u"Next"_s));
    QCOMPARE(status(), u"Stopped"_s);
    QTRY_COMPARE(m_changes.size(), 3);
    QCOMPARE(m_changes.at(0).keys(), QStringList({u"Metadata"_s, u"PlaybackStatus"_s}));
    QCOMPARE(m_changes.at(0).value(u"PlaybackStatus"_s).toString(), u"Stopped"_s);
    QVERIFY(mapOf(m_changes.at(0).value(u"Metadata"_s)).isEmpty());
    QCOMPARE(m_changes.at(1).keys(), QStringList({u"Metadata"_s}));
    QCOMPARE(
        mapOf(m_changes.at(1).value(u"Metadata"_s)).value(u"xesam:title"_s).toString(), u"Nobody's Umbrella Stand"_s);
    QCOMPARE(m_changes.at(2), QVariantMap({{u"PlaybackStatus"_s, u"Playing"_s}}));
}

void DemoPlayerTest::aNewTrackIsPartialAtFirst()
{
    DemoPlayer player(*m_bus, {u"--play"_s, u"--track"_s, u"1"_s, u"--do"_s, u"partial 50"_s});
    QVERIFY(player.isReady());
    QVERIFY(does(u"Next"_s));
    QTRY_COMPARE(m_changes.size(), 2);
    QCOMPARE(mapOf(m_changes.at(0).value(u"Metadata"_s)).keys(), QStringList({u"mpris:length"_s, u"mpris:trackid"_s}));
    QVERIFY(mapOf(m_changes.at(1).value(u"Metadata"_s)).contains(u"xesam:title"_s));
}

void DemoPlayerTest::aVolumeEchoes()
{
    DemoPlayer player(*m_bus, {u"--do"_s, u"volume 0.25"_s, u"--do"_s, u"echo 3"_s});
    QVERIFY(player.isReady());
    QVERIFY(set(u"Volume"_s, 0.75));
    const QVariantMap before{{u"Volume"_s, 0.25}};
    const QVariantMap now{{u"Volume"_s, 0.75}};
    QTRY_COMPARE(m_changes, QList<QVariantMap>({before, now, now}));
}

void DemoPlayerTest::aFloodIsCompleteAndLeavesRoomForAnswers()
{
    DemoPlayer player(*m_bus, {u"--play"_s, u"--do"_s, u"pause"_s});
    QVERIFY(player.isReady());
    QVERIFY(understands(u"flood 2000"_s));
    QCOMPARE(status(), u"Paused"_s);
    // The truth comes after the last wave.
    QTRY_COMPARE(m_changes.size(), 2001);
    QCOMPARE(m_seeks.size(), 2000);
    QVERIFY(m_changes.at(0).value(u"PlaybackStatus"_s) != m_changes.at(1).value(u"PlaybackStatus"_s));
    const auto title = [this](int wave) {
        return mapOf(m_changes.at(wave).value(u"Metadata"_s)).value(u"xesam:title"_s).toString();
    };
    QCOMPARE(title(0), u"Flood 2000"_s);
    QCOMPARE(title(1999), u"Flood 1"_s);
    QCOMPARE(title(2000), u"Quince Harbour Timetable"_s);
    QCOMPARE(lastChange().value(u"PlaybackStatus"_s).toString(), u"Paused"_s);
}

void DemoPlayerTest::refusedAndImpossibleThingsDoNothing()
{
    DemoPlayer player(*m_bus, {u"--play"_s});
    QVERIFY(player.isReady());
    QVERIFY(understands(u"refuse Shuffle"_s));
    QVERIFY(set(u"Shuffle"_s, true));
    QCOMPARE(get(u"Shuffle"_s).toBool(), false);
    QVERIFY(understands(u"refuse none"_s));
    QVERIFY(set(u"Shuffle"_s, true));
    QCOMPARE(get(u"Shuffle"_s).toBool(), true);

    QVERIFY(understands(u"cannot CanPause on"_s));
    QTRY_COMPARE(lastChange(), QVariantMap({{u"CanPause"_s, false}}));
    QVERIFY(does(u"Pause"_s));
    QCOMPARE(status(), u"Playing"_s);
    QVERIFY(understands(u"cannot CanPause off"_s));
    QVERIFY(does(u"Pause"_s));
    QCOMPARE(status(), u"Paused"_s);
    QVERIFY(understands(u"cannot CanControl on"_s));
    QVERIFY(does(u"Play"_s));
    QCOMPARE(status(), u"Paused"_s);
    QCOMPARE(get(u"CanSeek"_s).toBool(), false);
}

void DemoPlayerTest::trackIdsTakeTheKindsOfRealPlayers()
{
    DemoPlayer player(*m_bus, {u"--play"_s, u"--do"_s, u"pause"_s, u"--do"_s, u"integration 4711"_s});
    QVERIFY(player.isReady());
    QCOMPARE(metadata().value(u"kde:pid"_s), QVariant(4711));
    QVERIFY(understands(u"trackid string"_s));
    QCOMPARE(metadata().value(u"mpris:trackid"_s), QVariant(u"/org/tunedeck/demo/track/0"_s));
    QVERIFY(does(u"SetPosition"_s, {track(0), 1'000'000LL}));
    QCOMPARE(position(), 1'000'000);
    QVERIFY(understands(u"trackid constant"_s));
    QCOMPARE(trackId(), u"/org/mpris/MediaPlayer2/CurrentTrack"_s);
    QVERIFY(understands(u"trackid none"_s));
    QVERIFY(!metadata().contains(u"mpris:trackid"_s));
    QVERIFY(does(u"SetPosition"_s, {QVariant::fromValue(QDBusObjectPath(u"/"_s)), 2'000'000LL}));
    QCOMPARE(position(), 2'000'000);
    QVERIFY(understands(u"stop"_s));
    QVERIFY(metadata().isEmpty());
    QVERIFY(understands(u"stoppedkeeps on"_s));
    QCOMPARE(metadata().value(u"xesam:title"_s).toString(), u"Quince Harbour Timetable"_s);
}

void DemoPlayerTest::signalsCanBeMissing()
{
    DemoPlayer player(*m_bus, {u"--play"_s});
    QVERIFY(player.isReady());
    QVERIFY(understands(u"signals properties off"_s));
    QVERIFY(understands(u"signals seeked off"_s));
    QVERIFY(understands(u"pause"_s));
    QVERIFY(understands(u"seek 10"_s));
    QVERIFY(understands(u"signals properties on"_s));
    QVERIFY(understands(u"play"_s));
    QTRY_COMPARE(m_changes, QList<QVariantMap>({{{u"PlaybackStatus"_s, u"Playing"_s}}}));
    QVERIFY(m_seeks.isEmpty());
    QVERIFY(position() >= 10'000'000);
}

void DemoPlayerTest::onePropertyCanChangeQuietly()
{
    DemoPlayer player(*m_bus, {});
    QVERIFY(player.isReady());
    QVERIFY(understands(u"quiet Volume"_s));
    QVERIFY(understands(u"volume 0.25"_s));
    QVERIFY(understands(u"shuffle on"_s));
    QTRY_COMPARE(m_changes, QList<QVariantMap>({{{u"Shuffle"_s, true}}}));
    QCOMPARE(get(u"Volume"_s), 0.25);
    QVERIFY(understands(u"quiet none"_s));
    QVERIFY(understands(u"volume 0.5"_s));
    QTRY_COMPARE(m_changes.size(), 2);
    QCOMPARE(m_changes.last(), QVariantMap({{u"Volume"_s, 0.5}}));
}

void DemoPlayerTest::playAndPauseCanToggle()
{
    DemoPlayer player(*m_bus, {u"--play"_s, u"--do"_s, u"toggling on"_s});
    QVERIFY(player.isReady());
    QVERIFY(does(u"Play"_s));
    QCOMPARE(status(), u"Paused"_s);
    QVERIFY(does(u"Pause"_s));
    QCOMPARE(status(), u"Playing"_s);
    QVERIFY(does(u"PlayPause"_s));
    QCOMPARE(status(), u"Paused"_s);
}

void DemoPlayerTest::aShuffleCanFlipAtEveryRead()
{
    DemoPlayer player(*m_bus, {u"--do"_s, u"flip on"_s});
    QVERIFY(player.isReady());
    const bool first = get(u"Shuffle"_s).toBool();
    QCOMPARE(getAll().value(u"Shuffle"_s).toBool(), !first);
    QVERIFY(set(u"Shuffle"_s, !first));
    QCOMPARE(get(u"Shuffle"_s).toBool(), first);
    QVERIFY(understands(u"play"_s));
    QTRY_COMPARE(m_changes.size(), 1);
    QVERIFY(!m_changes.constFirst().contains(u"Shuffle"_s));
}

void DemoPlayerTest::seeksCanBeAnnouncedUnasked()
{
    DemoPlayer player(*m_bus, {u"--play"_s, u"--do"_s, u"unasked 20"_s});
    QVERIFY(player.isReady());
    QTRY_VERIFY(m_seeks.size() >= 3);
    QVERIFY(m_seeks.at(2) > m_seeks.at(0));
    QVERIFY(understands(u"unasked 0"_s));
}

void DemoPlayerTest::aPositionCanBeOld()
{
    DemoPlayer player(*m_bus, {u"--play"_s, u"--do"_s, u"stale 2000"_s});
    QVERIFY(player.isReady());
    QVERIFY(understands(u"seek 11.9"_s));
    const qlonglong reported = position();
    QVERIFY2(reported == 10'000'000 || reported == 12'000'000, qPrintable(QString::number(reported)));
}

void DemoPlayerTest::aTrackCanHaveNoTexts()
{
    DemoPlayer player(*m_bus, {u"--play"_s, u"--do"_s, u"textless on"_s});
    QVERIFY(player.isReady());
    QCOMPARE(metadata().keys(), QStringList({u"mpris:length"_s, u"mpris:trackid"_s}));
    QVERIFY(understands(u"trackid none"_s));
    QCOMPARE(metadata().keys(), QStringList({u"mpris:length"_s}));
}

void DemoPlayerTest::aStationCanHaveItsSongUnderAKeyOfItsOwn_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("key");
    QTest::newRow("VLC") << u"station vlc"_s << u"vlc:nowplaying"_s;
    QTest::newRow("cmus") << u"station cmus"_s << u"cmus:stream_title"_s;
    QTest::newRow("Celluloid") << u"station celluloid"_s << u"icy-title"_s;
}

void DemoPlayerTest::aStationCanHaveItsSongUnderAKeyOfItsOwn()
{
    QFETCH(QString, line);
    QFETCH(QString, key);
    DemoPlayer player(*m_bus, {u"--play"_s, u"--track"_s, u"9"_s, u"--do"_s, line});
    QVERIFY(player.isReady());
    QCOMPARE(metadata().value(u"xesam:title"_s), u"Pelican Radio"_s);
    QCOMPARE(metadata().value(key), u"Tin Orchid - Sleeper Carriage Nine"_s);
    QVERIFY(understands(u"station off"_s));
    QCOMPARE(metadata().value(u"xesam:title"_s), u"Tin Orchid - Sleeper Carriage Nine"_s);
    QVERIFY(!metadata().contains(key));
}

void DemoPlayerTest::theActivePlaylistCanBeTheViewedOne()
{
    DemoPlayer player(*m_bus, {u"--do"_s, u"viewed 2"_s});
    QVERIFY(player.isReady());
    const auto active = [this] {
        const auto argument = get(u"ActivePlaylist"_s, playlistsInterface).value<QDBusArgument>();
        bool isValid = false;
        QDBusObjectPath id;
        QString name;
        QString icon;
        argument.beginStructure();
        argument >> isValid;
        argument.beginStructure();
        argument >> id >> name >> icon;
        argument.endStructure();
        argument.endStructure();
        return isValid ? id.path() : QString();
    };
    QCOMPARE(active(), u"/org/tunedeck/demo/playlist/2"_s);
    const QVariant first = QVariant::fromValue(QDBusObjectPath(u"/org/tunedeck/demo/playlist/1"_s));
    QCOMPARE(call(playlistsInterface, u"ActivatePlaylist"_s, {first}).type(), QDBusMessage::ReplyMessage);
    QCOMPARE(status(), u"Playing"_s);
    QCOMPARE(active(), u"/org/tunedeck/demo/playlist/2"_s);
    QVERIFY(understands(u"viewed off"_s));
    QCOMPARE(active(), u"/org/tunedeck/demo/playlist/1"_s);
}

void DemoPlayerTest::theNameCanBeGivenUpAndTakenAgain()
{
    DemoPlayer player(*m_bus, {});
    QVERIFY(player.isReady());
    QDBusServiceWatcher watcher(service, m_connection);
    QSignalSpy spy(&watcher, &QDBusServiceWatcher::serviceOwnerChanged);
    const QString owner = m_connection.interface()->serviceOwner(service).value();
    QVERIFY(understands(u"retake 20"_s));
    QTRY_COMPARE(spy.size(), 2);
    QCOMPARE(spy.at(0), QVariantList({service, owner, u""_s}));
    QCOMPARE(spy.at(1), QVariantList({service, u""_s, owner}));
    QCOMPARE(status(), u"Stopped"_s);
}

void DemoPlayerTest::aLineThatIsWrongAtItsEndDoesNothing()
{
    DemoPlayer player(*m_bus, {});
    QVERIFY(player.isReady());
    QCOMPARE(tell(u"play now"_s).errorMessage(), u"\"now\" is too much"_s);
    QCOMPARE(status(), u"Stopped"_s);
    QCOMPARE(tell(u"dance"_s).errorMessage(), u"unknown line \"dance\""_s);
    QCOMPARE(tell(u"late"_s).errorMessage(), u"a word is missing at the end"_s);
    QCOMPARE(tell(u"volume nan"_s).errorMessage(), u"\"nan\" is no number from -10 to 10"_s);
    QCOMPARE(tell(u"wrong mpris:length uint64 -1x"_s).errorMessage(), u"\"-1x\" cannot be the value of a uint64"_s);
}

void DemoPlayerTest::tellSendsALine()
{
    DemoPlayer player(*m_bus, {});
    QVERIFY(player.isReady());
    DemoPlayer obeyed(*m_bus, {u"--tell"_s, u"play"_s});
    QVERIFY(obeyed.process().waitForFinished(patience));
    QCOMPARE(obeyed.process().exitCode(), 0);
    QCOMPARE(status(), u"Playing"_s);
    DemoPlayer refused(*m_bus, {u"--tell"_s, u"dance"_s});
    QVERIFY(refused.process().waitForFinished(patience));
    QCOMPARE(refused.process().exitCode(), 1);
    QCOMPARE(refused.process().readAllStandardError(), QByteArray("unknown line \"dance\"\n"));
    DemoPlayer lonely(*m_bus, {u"--name"_s, u"nobody"_s, u"--tell"_s, u"play"_s});
    QVERIFY(lonely.process().waitForFinished(patience));
    QCOMPARE(lonely.process().exitCode(), 1);
}

void DemoPlayerTest::aSecondPlayerTakesANameOfItsOwn()
{
    DemoPlayer first(*m_bus, {});
    QVERIFY(first.isReady());
    DemoPlayer second(*m_bus, {});
    QVERIFY(second.isReady());
    QCOMPARE(m_connection.interface()->servicePid(service).value(), static_cast<uint>(first.pid()));
    const QString name = u"%1.instance%2"_s.arg(service).arg(second.pid());
    QCOMPARE(m_connection.interface()->servicePid(name).value(), static_cast<uint>(second.pid()));
}

void DemoPlayerTest::severalPlayersOfOneProcessHaveANameAndAConnectionEach()
{
    DemoPlayer phone(*m_bus, {u"--also"_s, u"phone.second"_s, u"--play"_s});
    QVERIFY(phone.isReady());
    const QString second = u"org.mpris.MediaPlayer2.phone.second"_s;
    const QDBusConnectionInterface &bus = *m_connection.interface();
    for (const QString &name : {service, second}) {
        QCOMPARE(bus.servicePid(name).value(), static_cast<uint>(phone.pid()));
    }
    QVERIFY(bus.serviceOwner(service).value() != bus.serviceOwner(second).value());

    DemoPlayer obeyed(*m_bus, {u"--name"_s, u"phone.second"_s, u"--tell"_s, u"track 4"_s});
    QVERIFY(obeyed.process().waitForFinished(patience));
    QCOMPARE(obeyed.process().exitCode(), 0);
    QCOMPARE(trackId(), u"/org/tunedeck/demo/track/0"_s);
    auto question = QDBusMessage::createMethodCall(second, path, propertiesInterface, u"Get"_s);
    question.setArguments({playerInterface, u"Metadata"_s});
    const auto answer = m_connection.call(question).arguments().value(0).value<QDBusVariant>().variant();
    QCOMPARE(mapOf(answer).value(u"mpris:trackid"_s).value<QDBusObjectPath>().path(), u"/org/tunedeck/demo/track/4"_s);
}

void DemoPlayerTest::aPlayerThatReplacesAnotherTakesItsNameWithoutAGap()
{
    DemoPlayer first(*m_bus, {});
    QVERIFY(first.isReady());
    const QString former = m_connection.interface()->serviceOwner(service);
    QDBusServiceWatcher watcher(service, m_connection);
    QSignalSpy changes(&watcher, &QDBusServiceWatcher::serviceOwnerChanged);
    DemoPlayer second(*m_bus, {u"--replace"_s});
    QVERIFY(second.isReady());
    QTRY_COMPARE(changes.size(), 1);
    const QString owner = m_connection.interface()->serviceOwner(service);
    QCOMPARE(changes.first(), (QVariantList{service, former, owner}));
    QCOMPARE(m_connection.interface()->servicePid(service).value(), static_cast<uint>(second.pid()));
}

void DemoPlayerTest::terminationIsClean()
{
    DemoPlayer player(*m_bus, {u"--play"_s});
    QVERIFY(player.isReady());
    player.process().terminate();
    QVERIFY(player.process().waitForFinished(patience));
    QCOMPARE(player.process().exitStatus(), QProcess::NormalExit);
    QCOMPARE(player.process().exitCode(), 0);
    QTRY_VERIFY(!m_connection.interface()->isServiceRegistered(service));
}

void DemoPlayerTest::itEndsWithItsBus()
{
    DemoPlayer player(*m_bus, {});
    QVERIFY(player.isReady());
    QDBusConnection::disconnectFromBus(u"client"_s);
    m_bus.reset();
    QVERIFY(player.process().waitForFinished(patience));
}

TUNEDECK_TEST(DemoPlayerTest, QCoreApplication)
#include "DemoPlayerTest.moc"
