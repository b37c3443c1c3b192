// SPDX-License-Identifier: MIT
#include "music/mpris/MprisPlayer.h"
#include "music/mpris/bus/MprisNames.h"
#include "support/PrivateBus.h"
#include "support/registerTest.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// A player whose answers wait until the test gives them.
class PlayerOfTest : public QDBusVirtualObject {
public:
    explicit PlayerOfTest(const QDBusConnection &bus)
        : m_bus(bus)
    {
        m_bus.registerVirtualObject(mpris::objectPath, this);
    }

    [[nodiscard]] QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &call, const QDBusConnection &) override
    {
        QList<QDBusMessage> &calls = call.arguments().value(0) == mpris::rootInterface ? rootReads : playerReads;
        calls.append(call);
        return true;
    }

    void answer(const QDBusMessage &read, const QVariantMap &properties) { m_bus.send(read.createReply(properties)); }
    void refuse(const QDBusMessage &read) { m_bus.send(read.createErrorReply(QDBusError::Failed, u"Not now"_s)); }
    void announce(const QString &interface, const QVariantMap &properties)
    {
        QDBusMessage signal =
            QDBusMessage::createSignal(mpris::objectPath, mpris::propertiesInterface, u"PropertiesChanged"_s);
        signal << interface << properties << QStringList();
        m_bus.send(signal);
    }

    QList<QDBusMessage> rootReads;
    QList<QDBusMessage> playerReads;

private:
    QDBusConnection m_bus;
};

QVariantMap stateWith(double volume)
{
    return {{u"PlaybackStatus"_s, u"Paused"_s}, {u"Volume"_s, volume},
        {u"Metadata"_s, QVariantMap{{u"mpris:trackid"_s, u"/1"_s}, {u"xesam:title"_s, u"First"_s}}}};
}

} // namespace

/// One player on a real bus.
class MprisPlayerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aPlayerIsTakenInWhileTheBusStandsStill();
    void aNameThatIsAnnouncedInAFloodIsTakenIn();
    void anAnswerIsNewerThanTheSignalsBeforeIt();
    void aChangeDuringARefusedReadIsRead();

private:
    void startReading();
    void attach();
    /// Messages that the bus has delivered to the program by now wait for its event loop.
    void letTheBusDeliver();

    std::unique_ptr<PrivateBus> m_bus;
    QDBusConnection m_connection{u"none"_s};
    std::unique_ptr<PlayerOfTest> m_player;
    PlayerAddress m_address;
    std::unique_ptr<bus::SignalStream> m_signals;
    std::unique_ptr<MprisPlayer> m_read;
};

void MprisPlayerTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
    const QDBusConnection players = m_bus->connect(u"player"_s);
    m_player = std::make_unique<PlayerOfTest>(players);
    m_address = {.owner = players.baseService(), .name = u"test"_s, .processId = std::nullopt};
    m_connection = m_bus->connect(u"program"_s);
}

void MprisPlayerTest::cleanup()
{
    m_read.reset();
    m_signals.reset();
    m_player.reset();
    m_connection = QDBusConnection(u"none"_s);
    QDBusConnection::disconnectFromBus(u"program"_s);
    QDBusConnection::disconnectFromBus(u"player"_s);
    m_bus.reset();
}

void MprisPlayerTest::startReading()
{
    m_signals = std::make_unique<bus::SignalStream>(m_connection);
    m_read = std::make_unique<MprisPlayer>(
        m_connection, *m_signals, m_address, MprisPlayer::Arrival::WasThere, std::chrono::steady_clock::now);
}

void MprisPlayerTest::attach()
{
    startReading();
    QTRY_COMPARE(m_player->rootReads.size(), 1);
    m_player->answer(m_player->rootReads.takeFirst(), {{u"Identity"_s, u"First Name"_s}});
    QTRY_COMPARE(m_player->playerReads.size(), 1);
    m_player->answer(m_player->playerReads.takeFirst(), stateWith(0.5));
    QTRY_VERIFY(m_read->isAttached());
    QTRY_COMPARE(m_read->identity(), u"First Name"_s);
}

void MprisPlayerTest::letTheBusDeliver()
{
    const auto question =
        QDBusMessage::createMethodCall(mpris::busService, mpris::busPath, mpris::busService, u"GetId"_s);
    // The player is answered after the bus has passed on what it sent. The program is answered after that has come,
    // the second time after the thread that reads has unpacked it, too.
    for (const QDBusConnection &connection : {QDBusConnection(u"player"_s), m_connection, m_connection}) {
        QCOMPARE(connection.call(question).type(), QDBusMessage::ReplyMessage);
    }
}

void MprisPlayerTest::aPlayerIsTakenInWhileTheBusStandsStill()
{
    m_bus->freeze();
    QElapsedTimer clock;
    clock.start();
    startReading();
    const qint64 taken = clock.elapsed();
    m_bus->thaw();
    qInfo("taken in after %lld ms", taken);
    QVERIFY(taken < 1'000);
}

void MprisPlayerTest::aNameThatIsAnnouncedInAFloodIsTakenIn()
{
    attach();
    for (int i = 0; i < 2 * bus::SignalStream::mostInAWhile; ++i) {
        m_player->announce(mpris::playerInterface, {});
    }
    m_player->announce(mpris::rootInterface, {{u"Identity"_s, u"Second Name"_s}});
    letTheBusDeliver();
    QTRY_COMPARE(m_player->rootReads.size(), 1);
    m_player->answer(m_player->rootReads.takeFirst(), {{u"Identity"_s, u"Second Name"_s}});
    QTRY_COMPARE(m_read->identity(), u"Second Name"_s);
}

void MprisPlayerTest::anAnswerIsNewerThanTheSignalsBeforeIt()
{
    attach();
    m_read->refresh();
    QTRY_COMPARE(m_player->playerReads.size(), 1);
    QList<int> volumes;
    connect(
        m_read.get(), &MprisPlayer::changed, this, [&] { volumes.append(m_read->mirror().volumeStep().value_or(-1)); });
    m_player->announce(mpris::playerInterface, {{u"Volume"_s, 0.2}});
    m_player->answer(m_player->playerReads.takeFirst(), stateWith(0.7));
    letTheBusDeliver();
    QTRY_VERIFY(!volumes.isEmpty() && !m_player->playerReads.isEmpty());
    QCOMPARE(volumes, (QList<int>{20, 70}));
}

void MprisPlayerTest::aChangeDuringARefusedReadIsRead()
{
    attach();
    m_read->refresh();
    QTRY_COMPARE(m_player->playerReads.size(), 1);
    m_read->refresh();
    m_player->refuse(m_player->playerReads.takeFirst());
    QTRY_COMPARE(m_player->playerReads.size(), 1);
    m_player->answer(m_player->playerReads.takeFirst(), stateWith(0.7));
    QTRY_COMPARE(m_read->mirror().volumeStep(), 70);
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::MprisPlayerTest, QGuiApplication)
#include "MprisPlayerTest.moc"
