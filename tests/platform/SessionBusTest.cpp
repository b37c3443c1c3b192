// SPDX-License-Identifier: MIT
#include "platform/SessionBus.h"

#include "support/PrivateBus.h"
#include "support/elapse.h"
#include "support/registerTest.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QLocalServer>
#include <QLocalSocket>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

using namespace tunedeck;
using namespace std::chrono_literals;

namespace {
/// Counts the calls that other threads have posted to the application and that have been made.
class PostedCalls : public QObject {
public:
    PostedCalls() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        count += watched == QCoreApplication::instance() && event->type() == QEvent::MetaCall ? 1 : 0;
        return false;
    }

    int count = 0;
};
} // namespace

class SessionBusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void theBusThatIsThereIsTaken()
    {
        const PrivateBus daemon(address());
        const SessionBus bus(address(), 50ms);
        QVERIFY(bus.connection().isConnected());
    }

    void aBusThatGoesAwayIsToldOnceAndLookedForUntilItIsBack()
    {
        std::optional<PrivateBus> daemon(std::in_place, address());
        const SessionBus bus(address(), 50ms);
        const QSignalSpy changed(&bus, &SessionBus::changed);
        daemon.reset();
        QTRY_COMPARE(changed.count(), 1);
        QVERIFY(!bus.connection().isConnected());
        // An attempt that fails starts the timer again.
        QTimer &nextAttempt = *bus.findChild<QTimer *>(QStringLiteral("nextAttempt"));
        for (int attempt = 0; attempt < 3; ++attempt) {
            QTRY_VERIFY(nextAttempt.isActive());
            QVERIFY(elapse(nextAttempt));
            QVERIFY(!nextAttempt.isActive());
        }
        QTRY_VERIFY(nextAttempt.isActive());
        QCOMPARE(changed.count(), 1);

        daemon.emplace(address());
        QTRY_COMPARE(changed.count(), 2);
        QVERIFY(bus.connection().isConnected());
        QVERIFY(!bus.connection().baseService().isEmpty());

        daemon.reset();
        QTRY_COMPARE(changed.count(), 3);
        daemon.emplace(address());
        QTRY_COMPARE(changed.count(), 4);
        QVERIFY(bus.connection().isConnected());
    }

    void aBusThatIsNotThereAtFirstIsTakenWhenItComes()
    {
        const SessionBus bus(address(), 50ms);
        const QSignalSpy changed(&bus, &SessionBus::changed);
        QVERIFY(!bus.connection().isConnected());
        const PrivateBus daemon(address());
        QTRY_COMPARE(changed.count(), 1);
        QVERIFY(bus.connection().isConnected());
    }

    void whoeverStillLooksForItWhenItIsGoneDoesNoHarm()
    {
        // The address sanitizer would report a use after the end.
        QLocalServer silent;
        PostedCalls toTheApplication;
        {
            const SessionBus bus(address(), 0ms);
            QVERIFY(silent.listen(m_folder.filePath(QStringLiteral("bus"))));
            QTRY_VERIFY(silent.hasPendingConnections());
            toTheApplication.count = 0;
        }
        silent.nextPendingConnection()->abort();
        QTRY_VERIFY(toTheApplication.count > 0);
    }

    void aConnectionThatHasStoppedReadingReadsAgain()
    {
        const PrivateBus daemon(address());
        SessionBus bus(address(), 50ms);
        const QSignalSpy changed(&bus, &SessionBus::changed);
        stopReading(bus.connection());
        QVERIFY(!isHeard(bus.connection()));
        bus.check();
        QTRY_VERIFY(isHeard(bus.connection()));
        QCOMPARE(changed.count(), 0);
    }

    void aConnectionThatIsCalledIsCheckedAfterwards()
    {
        const PrivateBus daemon(address());
        SessionBus bus(address(), 50ms);
        QObject exported;
        bus.checkAfterCallsTo(&exported);
        stopReading(bus.connection());
        QMetaObject::invokeMethod(
            &exported, [] {}, Qt::QueuedConnection);
        const QString name = bus.connection().baseService();
        QTRY_VERIFY(isHeard(bus.connection()));
        QCOMPARE(bus.connection().baseService(), name);
    }

    void aConnectionThatStaysSilentIsReplaced()
    {
        PrivateBus daemon(address());
        SessionBus bus(address(), 50ms);
        const QSignalSpy changed(&bus, &SessionBus::changed);
        const QString former = bus.connection().baseService();
        daemon.freeze();
        bus.check();
        bus.check();
        const QSignalSpy deaf(bus.findChild<BusProbe *>(), &BusProbe::deaf);
        QTRY_COMPARE_WITH_TIMEOUT(deaf.count(), 1, 10'000);
        QCOMPARE(changed.count(), 0);
        daemon.thaw();
        QTRY_COMPARE(changed.count(), 1);
        QVERIFY(bus.connection().isConnected());
        QVERIFY(bus.connection().baseService() != former);
        QVERIFY(isHeard(bus.connection()));
        QCOMPARE(changed.count(), 1);
    }

    void aConnectionThatAnswersIsKept()
    {
        const PrivateBus daemon(address());
        SessionBus bus(address(), 50ms);
        const QSignalSpy changed(&bus, &SessionBus::changed);
        const QString name = bus.connection().baseService();
        bus.check();
        QVERIFY(isHeard(bus.connection()));
        QCOMPARE(bus.connection().baseService(), name);
        QCOMPARE(changed.count(), 0);
    }

private:
    /// As after a flood: Qt has stopped reading, and was asked to start again on the wrong thread.
    static void stopReading(const QDBusConnection &connection)
    {
        const QList<QSocketNotifier *> notifiers = connection.interface()->parent()->findChildren<QSocketNotifier *>();
        for (QSocketNotifier *notifier : notifiers) {
            if (notifier->type() != QSocketNotifier::Read) {
                continue;
            }
            QMetaObject::invokeMethod(
                connection.interface(), [notifier] { notifier->setEnabled(false); }, Qt::BlockingQueuedConnection);
            QTest::ignoreMessage(
                QtWarningMsg, "QSocketNotifier: Socket notifiers cannot be enabled or disabled from another thread");
            notifier->setEnabled(true);
        }
    }
    /// Whether the bus answers within half a second.
    static bool isHeard(const QDBusConnection &connection)
    {
        const QString bus = QStringLiteral("org.freedesktop.DBus");
        const QDBusMessage question =
            QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus, QStringLiteral("GetId"));
        return connection.call(question, QDBus::Block, 500).type() == QDBusMessage::ReplyMessage;
    }

    [[nodiscard]] QString address() const
    {
        return QStringLiteral("unix:path=") + m_folder.filePath(QStringLiteral("bus"));
    }

    QTemporaryDir m_folder;
};

TUNEDECK_TEST(SessionBusTest, QCoreApplication)
#include "SessionBusTest.moc"
