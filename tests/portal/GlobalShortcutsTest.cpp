// SPDX-License-Identifier: MIT
#include "portal/GlobalShortcuts.h"

#include "ScriptedPortal.h"
#include "support/PrivateBus.h"
#include "support/TurnWatch.h"
#include "support/elapse.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"
#include "support/stopReading.h"

#include <QDBusServiceWatcher>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace tunedeck;

using Way = ScriptedPortal::Way;
using State = GlobalShortcuts::State;

Q_DECLARE_METATYPE(ScriptedPortal::Way)

namespace {
/// A session with a portal, unless there is none.
struct Session {
    explicit Session(bool hasPortal = true)
    {
        if (hasPortal) {
            portal = std::make_unique<ScriptedPortal>(portalBus);
        }
    }

    /// The portal is on a connection of its own, like another process.
    void beginPortal()
    {
        portalBus = ScriptedPortal::connectTo(bus);
        portal = std::make_unique<ScriptedPortal>(portalBus);
    }

    PrivateBus bus;
    QDBusConnection portalBus = ScriptedPortal::connectTo(bus);
    std::unique_ptr<ScriptedPortal> portal;
    GlobalShortcuts shortcuts{
        {{QStringLiteral("next"), QStringLiteral("Next")}, {QStringLiteral("stop"), QStringLiteral("Stop")}},
        bus.address()};
    QSignalSpy pressed{&shortcuts, &GlobalShortcuts::activated};
};
} // namespace

class GlobalShortcutsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void nothingIsAskedForUnlessTheUserWantsIt()
    {
        Session session;
        session.shortcuts.setWanted(false);
        QCOMPARE(session.shortcuts.state(), State::Off);
        QCOMPARE(session.portal->calls(), QStringList());
    }

    void theProgramIsRegisteredBeforeItAsksAndOnAConnectionOfItsOwn()
    {
        Session session;
        session.shortcuts.setWanted(true);
        QCOMPARE(session.shortcuts.state(), State::Asking);
        QTRY_COMPARE(session.shortcuts.state(), State::On);
        QCOMPARE(session.portal->calls(),
            (QStringList{QStringLiteral("Register org.tunedeck.Tunedeck"), QStringLiteral("CreateSession"),
                QStringLiteral("BindShortcuts")}));
        QVERIFY(session.portal->isOneCaller());
        QCOMPARE(session.portal->boundIds(), (QStringList{QStringLiteral("next=Next"), QStringLiteral("stop=Stop")}));
    }

    void aPressedShortcutComesWithItsToken()
    {
        Session session;
        session.shortcuts.setWanted(true);
        QTRY_COMPARE(session.shortcuts.state(), State::On);
        ScriptedPortal::press(session.portalBus, session.portal->sessionPath(), QStringLiteral("stop"),
            {{QStringLiteral("activation_token"), QStringLiteral("token")}});
        QTRY_COMPARE(session.pressed.count(), 1);
        QCOMPARE(session.pressed.constFirst().constFirst().toString(), QStringLiteral("stop"));
        QCOMPARE(session.pressed.constFirst().at(1).value<ActivationToken>().waylandToken, QStringLiteral("token"));
    }

    void onlyThePortalPressesAndOnlyWhatIsOurs()
    {
        Session session;
        session.shortcuts.setWanted(true);
        QTRY_COMPARE(session.shortcuts.state(), State::On);
        const QString ours = session.portal->sessionPath();
        ScriptedPortal::press(ScriptedPortal::connectTo(session.bus), ours, QStringLiteral("next"), {});
        ScriptedPortal::press(session.portalBus, QStringLiteral("/another"), QStringLiteral("next"), {});
        ScriptedPortal::press(session.portalBus, ours, QStringLiteral("previous"), {});
        QDBusMessage wrong = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
            QStringLiteral("org.freedesktop.portal.GlobalShortcuts"), QStringLiteral("Activated"));
        wrong << QStringLiteral("next");
        session.portalBus.send(wrong);
        ScriptedPortal::press(session.portalBus, ours, QStringLiteral("stop"), {});
        QTRY_COMPARE(session.pressed.count(), 1);
        QCOMPARE(session.pressed.constFirst().constFirst().toString(), QStringLiteral("stop"));
    }

    void whatThePortalAnswersIsWhatTheStateSays_data()
    {
        QTest::addColumn<Way>("registration");
        QTest::addColumn<Way>("session");
        QTest::addColumn<Way>("bind");
        QTest::addColumn<State>("state");
        QTest::newRow("a portal without registration") << Way::Unknown << Way::Grant << Way::Grant << State::On;
        QTest::newRow("it does not know the program") << Way::Refuse << Way::Grant << Way::Grant << State::On;
        QTest::newRow("no such portal") << Way::Grant << Way::Unknown << Way::Grant << State::Missing;
        QTest::newRow("it cannot start") << Way::CannotStart << Way::CannotStart << Way::Grant << State::Missing;
        QTest::newRow("not for unregistered programs") << Way::Refuse << Way::Refuse << Way::Grant << State::Declined;
        QTest::newRow("no session") << Way::Grant << Way::Decline << Way::Grant << State::Declined;
        QTest::newRow("a session of another type") << Way::Grant << Way::WrongType << Way::Grant << State::Failed;
        QTest::newRow("a session of another") << Way::Grant << Way::WrongResult << Way::Grant << State::Failed;
        QTest::newRow("a session with too much") << Way::Grant << Way::Huge << Way::Grant << State::Failed;
        QTest::newRow("the user says no") << Way::Grant << Way::Grant << Way::Decline << State::Declined;
        QTest::newRow("a wrong answer") << Way::Grant << Way::Grant << Way::WrongType << State::Failed;
        QTest::newRow("an error") << Way::Grant << Way::Grant << Way::Refuse << State::Declined;
    }
    void whatThePortalAnswersIsWhatTheStateSays()
    {
        QFETCH(Way, registration);
        QFETCH(Way, session);
        QFETCH(Way, bind);
        QFETCH(State, state);
        Session desktop;
        desktop.portal->registration = registration;
        desktop.portal->session = session;
        desktop.portal->bind = bind;
        desktop.shortcuts.setWanted(true);
        QTRY_COMPARE(desktop.shortcuts.state(), state);
    }

    void aHugeSignalIsNotUnpackedByTheMainThread()
    {
        Session session;
        session.shortcuts.setWanted(true);
        QTRY_COMPARE(session.shortcuts.state(), State::On);
        const QString ours = session.portal->sessionPath();
        ScriptedPortal::press(session.portalBus, ours, QStringLiteral("next"), ScriptedPortal::hugeMap());
        ScriptedPortal::press(session.portalBus, ours, QStringLiteral("stop"), {});
        TurnWatch turns;
        QTRY_VERIFY(!session.pressed.isEmpty());
        QTRY_COMPARE(session.pressed.constLast().constFirst().toString(), QStringLiteral("stop"));
        const qint64 work = turns.mostWork();
        QVERIFY2(work < 100, qPrintable(QString::number(work)));
        QCOMPARE(session.pressed.count(), 1);
    }

    void aConnectionThatHasStoppedReadingReadsAgain()
    {
        Session session;
        session.shortcuts.setWanted(true);
        QTRY_COMPARE(session.shortcuts.state(), State::On);
        auto *connection = session.shortcuts.findChild<PortalConnection *>();
        QVERIFY(connection);
        stopReading(connection->bus());
        ScriptedPortal::press(session.portalBus, session.portal->sessionPath(), QStringLiteral("next"), {});
        QVERIFY(!session.pressed.wait(100));
        auto *watcher = connection->findChild<QDBusServiceWatcher *>();
        Q_EMIT watcher->serviceOwnerChanged(PortalConnection::service, QString(), QString());
        QTRY_COMPARE(session.pressed.count(), 1);
        QCOMPARE(session.shortcuts.state(), State::On);
    }

    void withoutAPortalOrABusThereAreNone()
    {
        Session session(false);
        session.shortcuts.setWanted(true);
        QTRY_COMPARE(session.shortcuts.state(), State::Missing);
        GlobalShortcuts withoutBus({}, QStringLiteral("unix:path=/nowhere"));
        withoutBus.setWanted(true);
        QTRY_COMPARE(withoutBus.state(), State::Failed);
    }

    void aPortalThatOpensNoSessionIsNotWaitedFor()
    {
        Session session;
        session.portal->session = Way::Silent;
        session.shortcuts.setWanted(true);
        QTRY_COMPARE(session.portal->calls().size(), 2);
        QTimer *patience = nullptr;
        QTRY_VERIFY((patience = session.shortcuts.findChild<QTimer *>(QStringLiteral("patience"))));
        QCOMPARE(session.shortcuts.state(), State::Asking);
        QVERIFY(elapse(*patience));
        QCOMPARE(session.shortcuts.state(), State::Failed);
    }

    void theUserMayTakeAnyTimeToChooseTheKeys()
    {
        Session session;
        session.portal->bind = Way::Silent;
        session.shortcuts.setWanted(true);
        QTRY_COMPARE(session.portal->calls().size(), 3);
        QTimer *patience = session.shortcuts.findChildren<QTimer *>(QStringLiteral("patience")).constLast();
        QVERIFY(!patience->isActive());
        QCOMPARE(session.shortcuts.state(), State::Asking);
        session.portal->answerLate();
        QTRY_COMPARE(session.shortcuts.state(), State::On);
    }

    void anAnswerAfterTheUserHasChangedTheirMindCountsForNothing()
    {
        Session session;
        session.portal->bind = Way::Silent;
        session.shortcuts.setWanted(true);
        QTRY_COMPARE(session.portal->calls().size(), 3);
        const QString path = session.portal->sessionPath();
        session.shortcuts.setWanted(false);
        QCOMPARE(session.shortcuts.state(), State::Off);
        session.portal->answerLate();
        ScriptedPortal::press(session.portalBus, path, QStringLiteral("next"), {});
        QVERIFY(!session.pressed.wait(100));
        QCOMPARE(session.shortcuts.state(), State::Off);
    }

    void aSessionThatTheDesktopClosesCanBeAskedForAgain()
    {
        Session session;
        session.shortcuts.setWanted(true);
        QTRY_COMPARE(session.shortcuts.state(), State::On);
        session.portal->closeSession();
        QTRY_COMPARE(session.shortcuts.state(), State::Declined);
        session.shortcuts.setWanted(true);
        QTRY_COMPARE(session.shortcuts.state(), State::On);
    }

    void aPortalThatEndsIsAskedAgainWhenItIsBack()
    {
        Session session;
        session.shortcuts.setWanted(true);
        QTRY_COMPARE(session.shortcuts.state(), State::On);
        session.portal.reset();
        QTRY_COMPARE(session.shortcuts.state(), State::Failed);
        session.beginPortal();
        QTRY_COMPARE(session.shortcuts.state(), State::On);
        QCOMPARE(session.portal->calls().size(), 3);
        ScriptedPortal::press(session.portalBus, session.portal->sessionPath(), QStringLiteral("next"), {});
        QTRY_COMPARE(session.pressed.count(), 1);
    }

    void aPortalThatEndsWhileTheUserChoosesTheKeysIsAskedAgainToo()
    {
        Session session;
        session.portal->bind = Way::Silent;
        session.shortcuts.setWanted(true);
        QTRY_COMPARE(session.portal->calls().size(), 3);
        session.portal.reset();
        QTRY_COMPARE(session.shortcuts.state(), State::Failed);
        session.beginPortal();
        QTRY_COMPARE(session.shortcuts.state(), State::On);
    }

    void aPortalThatEndsAgainAndAgainIsNotAskedForEver()
    {
        Session session;
        session.shortcuts.setWanted(true);
        QTRY_COMPARE(session.shortcuts.state(), State::On);
        for (int returns = 0; returns < GlobalShortcuts::mostReturns; ++returns) {
            session.portal.reset();
            QTRY_COMPARE(session.shortcuts.state(), State::Failed);
            session.beginPortal();
            QTRY_COMPARE(session.shortcuts.state(), State::On);
        }
        session.portal.reset();
        QTRY_COMPARE(session.shortcuts.state(), State::Failed);
        session.beginPortal();
        QSignalSpy changes(&session.shortcuts, &GlobalShortcuts::stateChanged);
        QVERIFY(!changes.wait(100));
        QCOMPARE(session.portal->calls(), QStringList());
        session.shortcuts.setWanted(true);
        QTRY_COMPARE(session.shortcuts.state(), State::On);
    }

    void aBusThatSleepsIsNotConnectedTo()
    {
        Session session;
        session.bus.freeze();
        const auto thaw = qScopeGuard([&session] { session.bus.thaw(); });
        session.shortcuts.setWanted(true);
        QTRY_COMPARE_WITH_TIMEOUT(session.shortcuts.state(), State::Failed, 10'000);
        const PrivateBus another;
        QVERIFY(ScriptedPortal::connectTo(another).isConnected());
    }
};

TUNEDECK_TEST(GlobalShortcutsTest, QCoreApplication)
#include "GlobalShortcutsTest.moc"
