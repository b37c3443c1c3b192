// SPDX-License-Identifier: MIT
#include "platform/SessionBus.h"

#include "support/PrivateBus.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

using namespace tunedeck;
using namespace std::chrono_literals;

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
        QTest::qWait(200);
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
        {
            const SessionBus bus(address(), 0ms);
            QTest::qWait(20);
        }
        QTest::qWait(100);
    }

private:
    [[nodiscard]] QString address() const
    {
        return QStringLiteral("unix:path=") + m_folder.filePath(QStringLiteral("bus"));
    }

    QTemporaryDir m_folder;
};

TUNEDECK_TEST(SessionBusTest, QCoreApplication)
#include "SessionBusTest.moc"
