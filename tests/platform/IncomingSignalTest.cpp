// SPDX-License-Identifier: MIT
#include "platform/bus/IncomingSignal.h"

#include "support/PrivateBus.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QElapsedTimer>
#include <QMap>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace tunedeck {

class IncomingSignalTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        tunedeck::failOnWarning();
        m_bus = std::make_unique<PrivateBus>();
        QVERIFY(m_bus->isRunning());
        m_sender = m_bus->connect(u"sender"_s);
        m_receiver = m_bus->connect(u"receiver"_s);
    }

    void cleanup()
    {
        for (QDBusConnection *connection : {&m_sender, &m_receiver}) {
            *connection = QDBusConnection(u"none"_s);
        }
        QDBusConnection::disconnectFromBus(u"sender"_s);
        QDBusConnection::disconnectFromBus(u"receiver"_s);
        m_bus.reset();
    }

    void aSignalComesWithItsPlainValues()
    {
        const IncomingSignal signal(m_receiver, origin(), u"osua{sv}"_s);
        QSignalSpy came(&signal, &IncomingSignal::came);
        const QVariantMap map{{u"yes"_s, true}, {u"text"_s, u"x"_s},
            {u"path"_s, QVariant::fromValue(QDBusObjectPath(u"/a"_s))}, {u"list"_s, QStringList{u"a"_s, u"b"_s}},
            {u"long"_s, QString(1'001, u'x')}};
        send({QVariant::fromValue(QDBusObjectPath(u"/a/b"_s)), u"text"_s, 7U, map});
        QVERIFY(came.wait());
        QCOMPARE(came.constFirst().at(0).toString(), m_sender.baseService());
        const QVariantMap plain{{u"yes"_s, true}, {u"text"_s, u"x"_s}, {u"path"_s, u"/a"_s}, {u"list"_s, QVariant()},
            {u"long"_s, QVariant()}};
        QCOMPARE(came.constFirst().at(1).toList(), (QVariantList{u"/a/b"_s, u"text"_s, 7U, plain}));
    }

    void aSignalThatIsNotAsItShouldBeHasNoValues_data()
    {
        QTest::addColumn<QVariantList>("values");
        QTest::newRow("nothing") << QVariantList();
        QTest::newRow("another type") << QVariantList{7};
        QTest::newRow("one too many") << QVariantList{u"a"_s, u"b"_s};
        QTest::newRow("too long") << QVariantList{QString(1'100'000, u'x')};
    }
    void aSignalThatIsNotAsItShouldBeHasNoValues()
    {
        QFETCH(const QVariantList, values);
        const IncomingSignal signal(m_receiver, origin(), u"s"_s);
        QSignalSpy came(&signal, &IncomingSignal::came);
        send(values);
        QVERIFY(came.wait());
        QCOMPARE(came.constFirst().at(1).toList(), QVariantList());
    }

    void aStructureIsNoPlainValue()
    {
        const IncomingSignal signal(m_receiver, origin(), u"a{si}"_s);
        QSignalSpy came(&signal, &IncomingSignal::came);
        qDBusRegisterMetaType<QMap<QString, int>>();
        send({QVariant::fromValue(QMap<QString, int>{{u"a"_s, 1}})});
        QVERIFY(came.wait());
        QCOMPARE(came.constFirst().at(1).toList(), QVariantList{QVariant()});
    }

    void onlyTheSenderIsHeard()
    {
        IncomingSignal::Origin fromOther = origin();
        fromOther.sender = m_receiver.baseService();
        const IncomingSignal other(m_receiver, fromOther, u"s"_s);
        IncomingSignal::Origin fromSender = origin();
        fromSender.sender = m_sender.baseService();
        const IncomingSignal signal(m_receiver, fromSender, u"s"_s);
        const QSignalSpy cameOfOther(&other, &IncomingSignal::came);
        QSignalSpy came(&signal, &IncomingSignal::came);
        send({u"a"_s});
        QVERIFY(came.wait());
        QCOMPARE(cameOfOther.count(), 0);
    }

    void nothingWaitsForABusThatStandsStill()
    {
        IncomingSignal::Origin fromSender = origin();
        fromSender.sender = m_sender.baseService();
        m_bus->freeze();
        QElapsedTimer clock;
        clock.start();
        auto signal = std::make_unique<IncomingSignal>(m_receiver, fromSender, u"s"_s);
        signal.reset();
        const qint64 waited = clock.elapsed();
        m_bus->thaw();
        QVERIFY2(waited < 1'000, qPrintable(QString::number(waited)));
    }

    void signalsAreDroppedWhileManyWait()
    {
        const IncomingSignal signal(m_receiver, origin(), u"s"_s);
        const QSignalSpy came(&signal, &IncomingSignal::came);
        for (int i = 0; i < 100; ++i) {
            send({QString::number(i)});
        }
        // The bus has passed them on when it answers their sender, and they have been read when it answers the program.
        const QString bus = u"org.freedesktop.DBus"_s;
        const auto question = QDBusMessage::createMethodCall(bus, u"/org/freedesktop/DBus"_s, bus, u"GetId"_s);
        for (const QDBusConnection &asking : {m_sender, m_receiver}) {
            QCOMPARE(asking.call(question).type(), QDBusMessage::ReplyMessage);
        }
        QMetaObject::invokeMethod(m_receiver.interface(), [] { }, Qt::BlockingQueuedConnection);
        QTRY_COMPARE(came.count(), 64);
        send({u"next"_s});
        QTRY_COMPARE(came.count(), 65);
        QCOMPARE(came.constLast().at(1).toList(), QVariantList{u"next"_s});
    }

    void nothingComesAfterItsEnd()
    {
        auto signal = std::make_unique<IncomingSignal>(m_receiver, origin(), u"s"_s);
        const IncomingSignal later(m_receiver, origin(), u"s"_s);
        QSignalSpy came(&later, &IncomingSignal::came);
        const QSignalSpy cameBefore(signal.get(), &IncomingSignal::came);
        signal.reset();
        send({u"a"_s});
        QVERIFY(came.wait());
        QCOMPARE(cameBefore.count(), 0);
    }

private:
    static IncomingSignal::Origin origin() { return {{}, u"/sender"_s, u"org.tunedeck.Test"_s, u"Happened"_s}; }

    void send(const QVariantList &values)
    {
        // To this program alone, so that the bus need not know yet what it listens to.
        QDBusMessage signal = QDBusMessage::createTargetedSignal(
            m_receiver.baseService(), u"/sender"_s, u"org.tunedeck.Test"_s, u"Happened"_s);
        signal.setArguments(values);
        QVERIFY(m_sender.send(signal));
    }

    std::unique_ptr<PrivateBus> m_bus;
    QDBusConnection m_sender{u"none"_s};
    QDBusConnection m_receiver{u"none"_s};
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::IncomingSignalTest, QCoreApplication)
#include "IncomingSignalTest.moc"
