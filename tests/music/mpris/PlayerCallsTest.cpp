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
    bus::Answer answer(Milliseconds patience = bus::deadline);
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

bus::Answer PlayerCallsTest::answer(Milliseconds patience)
{
    std::optional<bus::Answer> received;
    m_calls->getAll(mpris::playerInterface, [&received](const bus::Answer &given) { received = given; }, patience);
    return QTest::qWaitFor([&received] { return received.has_value(); }) ? *received
                                                                         : bus::Answer{.error = QDBusError::Other};
}

void PlayerCallsTest::letADeadlinePass()
{
    m_player->freeze();
    const bus::Answer reply = answer(20ms);
    QVERIFY(reply.isUnanswered());
    QVERIFY(!m_calls->isResponding());
}

void PlayerCallsTest::callsGoToTheNameWhereAConnectionOwnsSeveral()
{
    const QString owner = m_calls->destination();
    m_calls->addressByName(mpris::namePrefix + u"tunedeckdemo"_s);
    QCOMPARE(m_calls->destination(), mpris::namePrefix + u"tunedeckdemo"_s);
    QVERIFY(!answer().isError());
    m_calls->addressByName(QString());
    QCOMPARE(m_calls->destination(), owner);
    QVERIFY(!answer().isError());
}

void PlayerCallsTest::theAnswerOfAnotherThatTookTheNameIsAnError()
{
    m_calls->addressByName(mpris::namePrefix + u"tunedeckdemo"_s);
    const DemoPlayerProcess next(*m_bus, m_bus->connect(u"next"_s), {u"--replace"_s});
    QVERIFY(next.isReady());
    QVERIFY(answer().isError());
    QCOMPARE(m_changes->count(), 0);
    QDBusConnection::disconnectFromBus(u"next"_s);
}

void PlayerCallsTest::anAnswerReachesItsHandler()
{
    const bus::Answer reply = answer();
    QVERIFY(!reply.isError());
    QCOMPARE(reply.arguments.size(), 1);
    QVERIFY(m_calls->isResponding());
    QCOMPARE(m_changes->count(), 0);
}

void PlayerCallsTest::aPlayerThatLetsADeadlinePassIsNotRespondingUntilItsNextAnswer()
{
    letADeadlinePass();
    QCOMPARE(m_changes->count(), 1);
    m_player->thaw();
    QVERIFY(!answer().isError());
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
    const auto count = [&unanswered](const bus::Answer &) { ++unanswered; };
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
    std::optional<bus::Answer> received;
    m_calls->ask(mpris::playerInterface, u"Dance"_s, {}, [&received](const bus::Answer &given) { received = given; });
    QTRY_VERIFY(received.has_value());
    QVERIFY(received->isError());
    QVERIFY(m_calls->isResponding());
}

void PlayerCallsTest::theBusThatAnswersForAPlayerThatIsGoneIsNoSignOfLife()
{
    letADeadlinePass();
    m_player->kill();
    bus::Answer reply;
    QTRY_VERIFY((reply = answer()).errorName == u"org.freedesktop.DBus.Error.NameHasNoOwner"_s);
    QVERIFY(!m_calls->isResponding());
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayerCallsTest, QGuiApplication)
#include "PlayerCallsTest.moc"
