// SPDX-License-Identifier: MIT
#include "platform/bus/SessionBus.h"
#include "platform/bus/busGreeting.h"

#include "support/PrivateBus.h"
#include "support/elapse.h"
#include "support/registerTest.h"
#include "support/stopReading.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QRegularExpression>
#include <QSignalSpy>
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
        QTRY_VERIFY(!bus.connection().interface()->isServiceRegistered(former));
        QVERIFY(isHeard(bus.connection()));
        QCOMPARE(changed.count(), 1);
    }

    void aBusWhoseAddressIsNotTheFirstIsTaken_data()
    {
        QTest::addColumn<bool>("isFirstSilent");
        QTest::newRow("the first is missing") << false;
        QTest::newRow("the first does not greet") << true;
    }
    void aBusWhoseAddressIsNotTheFirstIsTaken()
    {
        QFETCH(const bool, isFirstSilent);
        const QString other = m_folder.filePath(QStringLiteral("other"));
        const SessionBus bus(QStringLiteral("unix:path=%1;%2").arg(other, address()), 50ms);
        QLocalServer silent;
        QVERIFY(!isFirstSilent || silent.listen(other));
        const PrivateBus daemon(address());
        QTRY_VERIFY_WITH_TIMEOUT(bus.connection().isConnected(), 10'000);
        QVERIFY(isHeard(bus.connection()));
    }

    void aSemicolonAtTheEndIsNoFurtherAddress()
    {
        QVERIFY(!addressThatGreets(address() + u';', 50ms));
        const PrivateBus daemon(address());
        QCOMPARE(addressThatGreets(address() + u';', 5s), address());
        QCOMPARE(addressThatGreets({}, 50ms), QString());
    }

    void nothingWaitsForABusThatDoesNotGreet()
    {
        const PrivateBus other;
        const QDBusConnection connection = other.connect(QStringLiteral("other"));
        QLocalServer silent;
        const SessionBus bus(address(), 0ms);
        QVERIFY(silent.listen(m_folder.filePath(QStringLiteral("bus"))));
        QTRY_VERIFY(silent.hasPendingConnections());
        QElapsedTimer clock;
        clock.start();
        // Qt waits here for the thread that reads, and that also connects.
        {
            const QDBusServiceWatcher watcher(QStringLiteral("org.tunedeck.Test"), connection);
        }
        const qint64 waited = clock.elapsed();
        QDBusConnection::disconnectFromBus(QStringLiteral("other"));
        qInfo("waited %lld ms", waited);
        QVERIFY(waited < 1'000);
    }

    void aBusThatEndsWhileItIsTakenForDeafIsToldOnce()
    {
        std::optional<PrivateBus> daemon(std::in_place, address());
        SessionBus bus(address(), 60s);
        const QSignalSpy changed(&bus, &SessionBus::changed);
        daemon->freeze();
        bus.check();
        const QTimer &nextAttempt = *bus.findChild<QTimer *>(QStringLiteral("nextAttempt"));
        QTRY_VERIFY_WITH_TIMEOUT(nextAttempt.isActive(), 40'000);
        QCOMPARE(changed.count(), 0);
        daemon.reset();
        QTRY_COMPARE(changed.count(), 1);
        QVERIFY(!bus.connection().isConnected());
    }

    void aConnectionWithNamesThatAreWatchedIsCheckedAfterwards()
    {
        const PrivateBus daemon(address());
        SessionBus bus(address(), 50ms);
        QObject parent;
        auto *watcher = new QDBusServiceWatcher(&parent);
        bus.checkAfterNamesSeenBy(&parent);
        stopReading(bus.connection());
        QMetaObject::invokeMethod(watcher, [] { }, Qt::QueuedConnection);
        const QString name = bus.connection().baseService();
        QTRY_VERIFY(isHeard(bus.connection()));
        QCOMPARE(bus.connection().baseService(), name);
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
