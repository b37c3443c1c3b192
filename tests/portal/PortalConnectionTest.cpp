// SPDX-License-Identifier: MIT
#include "portal/PortalConnection.h"

#include "ScriptedPortal.h"
#include "platform/bus/BusProbe.h"
#include "support/PrivateBus.h"
#include "support/elapse.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QDBusServiceWatcher>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace tunedeck;

namespace {

/// A connection to a portal, on a bus that has come to a stand after it was opened.
class OnAHungBus {
public:
    OnAHungBus()
    {
        const QSignalSpy opened(&connection, &PortalConnection::opened);
        connection.open();
        m_isOpen = QTest::qWaitFor([&opened] { return opened.count() == 1; });
        m_bus.freeze();
    }
    /// The portal's end waits for the bus.
    ~OnAHungBus() { m_bus.thaw(); }
    OnAHungBus(const OnAHungBus &) = delete;
    OnAHungBus &operator=(const OnAHungBus &) = delete;

    [[nodiscard]] bool isOpen() const { return m_isOpen; }
    void changeOwner() const
    {
        Q_EMIT connection.findChild<QDBusServiceWatcher *>()->serviceOwnerChanged(
            PortalConnection::service, QString(), QString());
    }

private:
    const PrivateBus m_bus;
    const ScriptedPortal m_portal{ScriptedPortal::connectTo(m_bus)};
    bool m_isOpen = false;

public:
    PortalConnection connection{m_bus.address()};
    const BusProbe &probe = *connection.findChild<BusProbe *>();
    QTimer &checkSoon = *connection.findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
};

} // namespace

class PortalConnectionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void aBusThatStandsStillIsNotAskedForEver()
    {
        const OnAHungBus hung;
        QVERIFY(hung.isOpen());
        const QSignalSpy deaf(&hung.probe, &BusProbe::deaf);
        hung.changeOwner();
        QVERIFY(elapse(hung.checkSoon));
        QTRY_COMPARE_WITH_TIMEOUT(deaf.count(), 1, 20'000);
        QVERIFY(!hung.checkSoon.isActive());
        QVERIFY(!hung.probe.isAsking());
    }

    void anOwnerThatComesDuringTheQuestionIsAskedAboutAfterIt()
    {
        const OnAHungBus hung;
        QVERIFY(hung.isOpen());
        const QSignalSpy deaf(&hung.probe, &BusProbe::deaf);
        hung.changeOwner();
        QVERIFY(elapse(hung.checkSoon));
        QVERIFY(hung.probe.isAsking());
        hung.changeOwner();
        QVERIFY(elapse(hung.checkSoon));
        QTRY_COMPARE_WITH_TIMEOUT(deaf.count(), 1, 20'000);
        QVERIFY(hung.probe.isAsking());
    }
};

TUNEDECK_TEST(PortalConnectionTest, QCoreApplication)
#include "PortalConnectionTest.moc"
