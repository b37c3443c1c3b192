// SPDX-License-Identifier: MIT
#include "platform/bus/readingThread.h"

#include "support/PrivateBus.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QEvent>
#include <QRegularExpression>
#include <QTest>
#include <QThread>
#include <QVariant>

#include <atomic>
#include <memory>

using namespace Qt::StringLiterals;

namespace tunedeck {

/// As long as a message has a copy of it, the message is not released.
using Contents = std::shared_ptr<int>;

class readingThreadTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void aMessageIsReleasedOnTheThreadThatReads();
    void aMessageIsReleasedWhenTheProgramEndsMeanwhile();
    void aMessageIsReleasedWhenTheConnectionEndsMeanwhile();

private:
    /// Notes in m_releasedOn the thread on which the message is released.
    QDBusMessage message();

    std::unique_ptr<PrivateBus> m_bus;
    QDBusConnection m_connection{u"none"_s};
    std::atomic<QThread *> m_releasedOn = nullptr;
};

void readingThreadTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
    m_connection = m_bus->connect(u"read"_s);
    m_releasedOn = nullptr;
}

void readingThreadTest::cleanup()
{
    m_connection = QDBusConnection(u"none"_s);
    QDBusConnection::disconnectFromBus(u"read"_s);
    m_bus.reset();
}

QDBusMessage readingThreadTest::message()
{
    const Contents contents(new int, [this](const int *content) {
        delete content;
        m_releasedOn = QThread::currentThread();
    });
    QDBusMessage message = QDBusMessage::createSignal(u"/read"_s, u"org.tunedeck.Test"_s, u"Signal"_s);
    message << QVariant::fromValue(contents);
    return message;
}

void readingThreadTest::aMessageIsReleasedOnTheThreadThatReads()
{
    QThread *const reader = readingThread(m_connection);
    QVERIFY(reader);
    QVERIFY(reader != thread());
    releaseWhereRead(m_connection, message());
    QVERIFY(!m_releasedOn);
    QTRY_VERIFY(m_releasedOn);
    QCOMPARE(m_releasedOn.load(), reader);
}

void readingThreadTest::aMessageIsReleasedWhenTheProgramEndsMeanwhile()
{
    releaseWhereRead(m_connection, message());
    // Qt does the same for the events that nobody has got when the program ends.
    QCoreApplication::removePostedEvents(QCoreApplication::instance(), QEvent::MetaCall);
    QVERIFY(m_releasedOn);
}

void readingThreadTest::aMessageIsReleasedWhenTheConnectionEndsMeanwhile()
{
    releaseWhereRead(m_connection, message());
    QCoreApplication::sendPostedEvents(QCoreApplication::instance(), QEvent::MetaCall);
    cleanup();
    QTRY_VERIFY(m_releasedOn);
}

} // namespace tunedeck

Q_DECLARE_METATYPE(tunedeck::Contents)

TUNEDECK_TEST(tunedeck::readingThreadTest, QCoreApplication)
#include "readingThreadTest.moc"
