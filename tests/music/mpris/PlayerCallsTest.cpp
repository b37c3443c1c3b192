// SPDX-License-Identifier: MIT
#include "music/mpris/PlayerCalls.h"
#include "DemoPlayerProcess.h"
#include "music/mpris/bus/MprisNames.h"
#include "support/PrivateBus.h"
#include "support/registerTest.h"

#include <QDBusConnectionInterface>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace tunedeck {

/// Calls over a real bus, with the demo player as a process of its own.
class PlayerCallsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void anAnswerReachesItsHandler();
    void aPlayerThatLetsADeadlinePassIsNotRespondingUntilItsNextAnswer();
    void aSignOfLifeMakesThePlayerRespondAgain();
    void aCallLostInASilenceDoesNotBringItBack();
    void aRefusalOfThePlayerIsAnAnswer();
    void theBusThatAnswersForAPlayerThatIsGoneIsNoSignOfLife();
    void callsGoToTheNameWhereAConnectionOwnsSeveral();
    void theAnswerOfAnotherThatTookTheNameIsAnError();

private:
    /// Sends GetAll and waits for what the handler gets.
    QDBusMessage answer(Milliseconds patience = bus::deadline);
    void letADeadlinePass();

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<DemoPlayerProcess> m_player;
    std::unique_ptr<PlayerCalls> m_calls;
    std::unique_ptr<QSignalSpy> m_changes;
};

void PlayerCallsTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
    const QDBusConnection connection = m_bus->connect(u"calls"_s);
    m_player = std::make_unique<DemoPlayerProcess>(*m_bus, m_bus->connect(u"control"_s));
    QVERIFY(m_player->isReady());
    const QString owner = connection.interface()->serviceOwner(mpris::namePrefix + u"tunedeckdemo"_s);
    QVERIFY(!owner.isEmpty());
    m_calls = std::make_unique<PlayerCalls>(connection, owner);
    m_changes = std::make_unique<QSignalSpy>(m_calls.get(), &PlayerCalls::respondingChanged);
}

void PlayerCallsTest::cleanup()
{
    m_changes.reset();
    m_calls.reset();
    m_player.reset();
    m_bus.reset();
    QDBusConnection::disconnectFromBus(u"calls"_s);
    QDBusConnection::disconnectFromBus(u"control"_s);
}

QDBusMessage PlayerCallsTest::answer(Milliseconds patience)
{
    std::optional<QDBusMessage> received;
    m_calls->getAll(
        mpris::playerInterface, [&received](const QDBusMessage &reply) { received = reply; }, patience);
    return QTest::qWaitFor([&received] { return received.has_value(); }) ? *received : QDBusMessage();
}

void PlayerCallsTest::letADeadlinePass()
{
    m_player->freeze();
    const QDBusMessage reply = answer(20ms);
    QVERIFY(bus::isUnanswered(QDBusError(reply)));
    QVERIFY(!m_calls->isResponding());
}

void PlayerCallsTest::callsGoToTheNameWhereAConnectionOwnsSeveral()
{
    const QString owner = m_calls->destination();
    m_calls->addressByName(mpris::namePrefix + u"tunedeckdemo"_s);
    QCOMPARE(m_calls->destination(), mpris::namePrefix + u"tunedeckdemo"_s);
    QVERIFY(!bus::isError(answer()));
    m_calls->addressByName(QString());
    QCOMPARE(m_calls->destination(), owner);
    QVERIFY(!bus::isError(answer()));
}

void PlayerCallsTest::theAnswerOfAnotherThatTookTheNameIsAnError()
{
    m_calls->addressByName(mpris::namePrefix + u"tunedeckdemo"_s);
    const DemoPlayerProcess next(*m_bus, m_bus->connect(u"next"_s), {u"--replace"_s});
    QVERIFY(next.isReady());
    QVERIFY(bus::isError(answer()));
    QCOMPARE(m_changes->count(), 0);
    QDBusConnection::disconnectFromBus(u"next"_s);
}

void PlayerCallsTest::anAnswerReachesItsHandler()
{
    const QDBusMessage reply = answer();
    QVERIFY(!bus::isError(reply));
    QCOMPARE(reply.arguments().size(), 1);
    QVERIFY(m_calls->isResponding());
    QCOMPARE(m_changes->count(), 0);
}

void PlayerCallsTest::aPlayerThatLetsADeadlinePassIsNotRespondingUntilItsNextAnswer()
{
    letADeadlinePass();
    QCOMPARE(m_changes->count(), 1);
    m_player->thaw();
    QVERIFY(!bus::isError(answer()));
    QVERIFY(m_calls->isResponding());
    QCOMPARE(m_changes->count(), 2);
}

void PlayerCallsTest::aSignOfLifeMakesThePlayerRespondAgain()
{
    letADeadlinePass();
    m_calls->noteSignOfLife();
    QVERIFY(m_calls->isResponding());
    m_calls->noteSignOfLife();
    QCOMPARE(m_changes->count(), 2);
    m_player->thaw();
}

void PlayerCallsTest::aCallLostInASilenceDoesNotBringItBack()
{
    m_player->freeze();
    int unanswered = 0;
    const auto count = [&unanswered](const QDBusMessage &) { ++unanswered; };
    m_calls->getAll(mpris::playerInterface, count, 20ms);
    m_calls->getAll(mpris::playerInterface, count, 200ms);
    QTRY_COMPARE(unanswered, 1);
    m_calls->noteSignOfLife();
    QTRY_COMPARE(unanswered, 2);
    QVERIFY(m_calls->isResponding());
    QCOMPARE(m_changes->count(), 2);
    m_player->thaw();
}

void PlayerCallsTest::aRefusalOfThePlayerIsAnAnswer()
{
    letADeadlinePass();
    m_player->thaw();
    std::optional<QDBusMessage> received;
    m_calls->ask(mpris::playerInterface, u"Dance"_s, {}, [&received](const QDBusMessage &reply) { received = reply; });
    QTRY_VERIFY(received.has_value());
    QVERIFY(bus::isError(*received));
    QVERIFY(m_calls->isResponding());
}

void PlayerCallsTest::theBusThatAnswersForAPlayerThatIsGoneIsNoSignOfLife()
{
    letADeadlinePass();
    m_player->kill();
    QDBusMessage reply;
    QTRY_VERIFY((reply = answer()).errorName() == u"org.freedesktop.DBus.Error.NameHasNoOwner"_s);
    QVERIFY(!m_calls->isResponding());
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayerCallsTest, QGuiApplication)
#include "PlayerCallsTest.moc"
