// SPDX-License-Identifier: MIT
#include "platform/bus/IncomingCalls.h"

#include "support/PrivateBus.h"
#include "support/registerTest.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace tunedeck {

class IncomingCallsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aSmallCallArrives_data();
    void aSmallCallArrives();
    void aLargeCallIsRefused_data();
    void aLargeCallIsRefused();
    void callsAreRefusedWhileManyWait();

private:
    QDBusPendingCall call(const QVariantList &arguments) const;

    std::unique_ptr<PrivateBus> m_bus;
    QDBusConnection m_caller{u"none"_s};
    std::unique_ptr<IncomingCalls> m_calls;
    QList<QVariantList> m_received;
};

void IncomingCallsTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
    m_caller = m_bus->connect(u"caller"_s);
    m_calls = std::make_unique<IncomingCalls>(m_bus->connect(u"called"_s), u"/called"_s, QString());
    m_received.clear();
    connect(m_calls.get(), &IncomingCalls::called, this, [this](const QDBusMessage &received) {
        m_received.append(received.arguments());
        m_calls->answer(received, {u"done"_s});
    });
}

void IncomingCallsTest::cleanup()
{
    m_calls.reset();
    m_caller = QDBusConnection(u"none"_s);
    QDBusConnection::disconnectFromBus(u"caller"_s);
    QDBusConnection::disconnectFromBus(u"called"_s);
    m_bus.reset();
}

QDBusPendingCall IncomingCallsTest::call(const QVariantList &arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        QDBusConnection(u"called"_s).baseService(), u"/called"_s, u"org.tunedeck.Test"_s, u"Call"_s);
    message.setArguments(arguments);
    return m_caller.asyncCall(message);
}

void IncomingCallsTest::aSmallCallArrives_data()
{
    QTest::addColumn<QVariant>("argument");
    QTest::newRow("text") << QVariant(QString(900'000, u'x'));
    QTest::newRow("texts") << QVariant(QStringList(9'000, u"x"_s));
    QTest::newRow("bytes") << QVariant(QByteArray(900'000, 'x'));
    QTest::newRow("map") << QVariant(QVariantMap{{u"key"_s, QString(900'000, u'x')}});
    QTest::newRow("list") << QVariant(QVariantList(4'000, 1));
}

void IncomingCallsTest::aSmallCallArrives()
{
    QFETCH(const QVariant, argument);
    const QDBusPendingCall answer = call({argument});
    QTRY_VERIFY(answer.isFinished());
    QVERIFY(!answer.isError());
    QCOMPARE(answer.reply().arguments(), QVariantList{u"done"_s});
    QCOMPARE(m_received.size(), 1);
}

void IncomingCallsTest::aLargeCallIsRefused_data()
{
    QTest::addColumn<QVariant>("argument");
    const QStringList texts(11'000, u"x"_s);
    QTest::newRow("text") << QVariant(QString(1'100'000, u'x'));
    QTest::newRow("texts") << QVariant(texts);
    QTest::newRow("long texts") << QVariant(QStringList(11, QString(100'000, u'x')));
    QTest::newRow("bytes") << QVariant(QByteArray(1'100'000, 'x'));
    QTest::newRow("variant of texts") << QVariant::fromValue(QDBusVariant(texts));
    QTest::newRow("texts in a map") << QVariant(QVariantMap{{u"key"_s, texts}});
    QTest::newRow("long key of a map") << QVariant(QVariantMap{{QString(1'100'000, u'x'), 1}});
    QTest::newRow("bytes in a list") << QVariant(QVariantList{QByteArray(1'100'000, 'x')});
    QTest::newRow("list") << QVariant(QVariantList(11'000, 1));
    QTest::newRow("list in a list") << QVariant(QVariantList{QVariant(QVariantList(11'000, 1))});
}

void IncomingCallsTest::aLargeCallIsRefused()
{
    QFETCH(const QVariant, argument);
    const QDBusPendingCall answer = call({argument});
    QTRY_VERIFY(answer.isFinished());
    QCOMPARE(answer.error().type(), QDBusError::LimitsExceeded);
    QCOMPARE(m_received.size(), 0);
}

void IncomingCallsTest::callsAreRefusedWhileManyWait()
{
    QList<QDBusPendingCall> answers;
    for (int i = 0; i < 100; ++i) {
        answers.append(call({i}));
    }
    // The bus has passed them on when it answers their sender, and they have been received when it answers the program.
    const QString bus = u"org.freedesktop.DBus"_s;
    const auto question = QDBusMessage::createMethodCall(bus, u"/org/freedesktop/DBus"_s, bus, u"GetId"_s);
    for (const QDBusConnection &asking : {m_caller, QDBusConnection(u"called"_s)}) {
        QCOMPARE(asking.call(question).type(), QDBusMessage::ReplyMessage);
    }
    // With Qt 6.8, that answer can be here before the thread that reads has handled them all.
    QMetaObject::invokeMethod(QDBusConnection(u"called"_s).interface(), [] { }, Qt::BlockingQueuedConnection);
    const auto isFinished = [](const QDBusPendingCall &answer) { return answer.isFinished(); };
    QTRY_VERIFY(std::ranges::all_of(answers, isFinished));
    const auto isRefused = [](const QDBusPendingCall &answer) { return answer.isError(); };
    QCOMPARE(std::ranges::count_if(answers, isRefused), 36);
    QCOMPARE(m_received.size(), 64);
    const QDBusPendingCall next = call({0});
    QTRY_VERIFY(next.isFinished());
    QVERIFY(!next.isError());
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::IncomingCallsTest, QCoreApplication)
#include "IncomingCallsTest.moc"
