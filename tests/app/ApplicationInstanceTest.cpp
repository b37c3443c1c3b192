// SPDX-License-Identifier: MIT
#include "app/ApplicationInstance.h"

#include "platform/LogLimit.h"
#include "support/PrivateBus.h"
#include "support/elapse.h"
#include "support/registerTest.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QXmlStreamReader>

#include <functional>
#include <optional>

using namespace tunedeck;

namespace {
/// Carries out the actions of an instance.
class DeliveredActions {
public:
    /// Why the actions are refused from now on; empty if they are carried out.
    QString refusal;

    [[nodiscard]] ApplicationInstance::CarryOut carryOut()
    {
        return [this](DesktopAction action, const ActivationToken &token, const ApplicationInstance::Answer &answer) {
            m_names.append(desktopActionName(action));
            m_tokens.append(token);
            answer(refusal);
        };
    }

    [[nodiscard]] QStringList names() const { return m_names; }
    [[nodiscard]] QList<ActivationToken> tokens() const { return m_tokens; }

private:
    QStringList m_names;
    QList<ActivationToken> m_tokens;
};

/// The answer to a second process.
struct Told {
    std::optional<FirstsAnswer> answer;

    [[nodiscard]] std::function<void(const FirstsAnswer &)> take()
    {
        return [this](const FirstsAnswer &given) { answer = given; };
    }
    [[nodiscard]] bool isAnswered() const { return answer && answer->isGiven; }
    [[nodiscard]] QString refusal() const { return answer ? answer->refusal : QString(); }
};

const ActivationToken tokenOfDock{QStringLiteral("dock-1_TIME7"), QStringLiteral("token")};

QTimer &turnOf(ApplicationInstance &instance)
{
    return *instance.findChild<QTimer *>(QStringLiteral("turnTimer"));
}

/// Lets the instance handle all that it has been asked for.
void handleAll(ApplicationInstance &instance)
{
    while (elapse(turnOf(instance))) { }
}

void carryOutAll(ApplicationInstance &instance, DeliveredActions &delivered)
{
    instance.deliverActions(delivered.carryOut());
    instance.deliverMusicActions();
    handleAll(instance);
}

QDBusMessage callTo(const QString &interface, const QString &method, const QVariantList &arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.tunedeck.Tunedeck"), QStringLiteral("/org/tunedeck/Tunedeck"), interface, method);
    call.setArguments(arguments);
    return call;
}

/// The members of the program's own interface: kind, name and the types of the arguments.
QStringList membersOf(const QString &introspection)
{
    QStringList members;
    QXmlStreamReader xml(introspection);
    bool isOwn = false;
    while (!xml.atEnd()) {
        if (!xml.readNextStartElement()) {
            continue;
        }
        const QString name = xml.attributes().value(QLatin1String("name")).toString();
        if (xml.name() == u"interface") {
            isOwn = name == QStringLiteral("org.freedesktop.Application");
        } else if (isOwn && xml.name() == u"arg") {
            members.last() += u' ' + xml.attributes().value(QLatin1String("type")).toString();
        } else if (isOwn && xml.name() != u"annotation") {
            members.append(xml.name().toString() + u' ' + name);
        }
    }
    return members;
}
} // namespace

class ApplicationInstanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        LogLimit::leaveOutUnknownCalls();
    }

    void withoutABusEveryProcessIsTheFirst()
    {
        const ApplicationInstance instance(QDBusConnection(QStringLiteral("none")));
        QVERIFY(instance.isFirst());
    }

    void aSecondProcessActivatesTheFirst()
    {
        const PrivateBus bus;
        QVERIFY(bus.isRunning());
        const ApplicationInstance first(bus.connect(QStringLiteral("first")));
        ApplicationInstance second(bus.connect(QStringLiteral("second")));
        QVERIFY(first.isFirst());
        QVERIFY(!second.isFirst());

        QSignalSpy activated(&first, &ApplicationInstance::activated);
        Told told;
        second.askFirst(std::nullopt, tokenOfDock, told.take());
        QTRY_VERIFY(told.isAnswered());
        QTRY_COMPARE(activated.count(), 1);
        QCOMPARE(activated.constFirst().constFirst().value<ActivationToken>(), tokenOfDock);
    }

    void theNameComesAlongToAConnectionThatReplacesAnother()
    {
        const PrivateBus bus;
        ApplicationInstance first(bus.connect(QStringLiteral("deaf")));
        QVERIFY(first.isFirst());
        const QSignalSpy activated(&first, &ApplicationInstance::activated);
        const QDBusConnection next = bus.connect(QStringLiteral("next"));
        first.setBus(next);
        const QDBusConnection witness = bus.connect(QStringLiteral("witness"));
        const QString name = QStringLiteral("org.tunedeck.Tunedeck");
        QTRY_COMPARE(witness.interface()->serviceOwner(name).value(), next.baseService());

        ApplicationInstance second(bus.connect(QStringLiteral("late")));
        QVERIFY(!second.isFirst());
        Told told;
        second.askFirst(std::nullopt, tokenOfDock, told.take());
        QTRY_VERIFY(told.isAnswered());
        QTRY_COMPARE(activated.count(), 1);
    }

    void aSecondProcessAsksTheFirstForAnAction()
    {
        const PrivateBus bus;
        QVERIFY(bus.isRunning());
        ApplicationInstance first(bus.connect(QStringLiteral("asked")));
        ApplicationInstance second(bus.connect(QStringLiteral("asking")));
        DeliveredActions delivered;
        carryOutAll(first, delivered);
        QSignalSpy activated(&first, &ApplicationInstance::activated);
        QSignalSpy left(&first, &ApplicationInstance::tokenUnused);
        Told told;
        second.askFirst(DesktopAction::Next, tokenOfDock, told.take());
        QTRY_VERIFY(told.isAnswered());
        QCOMPARE(told.refusal(), QString());
        QCOMPARE(delivered.names(), QStringList{QStringLiteral("next")});
        QCOMPARE(delivered.tokens(), {tokenOfDock});
        QCOMPARE(activated.count(), 0);
        QCOMPARE(left.count(), 1);
        QCOMPARE(left.constFirst().constFirst().value<ActivationToken>(), tokenOfDock);
    }

    void aFirstProcessThatDoesNotAnswerIsReported()
    {
        const PrivateBus bus;
        QVERIFY(bus.isRunning());
        // This process owns the name but has no object.
        QDBusConnection mute = bus.connect(QStringLiteral("mute"));
        QVERIFY(mute.registerService(QStringLiteral("org.tunedeck.Tunedeck")));
        ApplicationInstance second(bus.connect(QStringLiteral("later")));
        QVERIFY(!second.isFirst());
        Told told;
        second.askFirst(std::nullopt, {}, told.take());
        QTRY_VERIFY(told.answer);
        QVERIFY(!told.isAnswered());
    }

    void aSecondProcessIsToldWhyAnActionIsRefused()
    {
        const PrivateBus bus;
        QVERIFY(bus.isRunning());
        ApplicationInstance first(bus.connect(QStringLiteral("refusing")));
        ApplicationInstance second(bus.connect(QStringLiteral("refused")));
        DeliveredActions delivered;
        delivered.refusal = QStringLiteral("There is \x1b[31mno\nnext");
        carryOutAll(first, delivered);
        Told told;
        second.askFirst(DesktopAction::Next, tokenOfDock, told.take());
        QTRY_VERIFY(told.isAnswered());
        // Another process's words must not command the terminal.
        QCOMPARE(told.refusal(), QStringLiteral("There is [31mnonext"));
    }

    void anActionThatWaitsTooLongIsRefused()
    {
        const PrivateBus bus;
        QVERIFY(bus.isRunning());
        ApplicationInstance first(bus.connect(QStringLiteral("slow")));
        ApplicationInstance second(bus.connect(QStringLiteral("waiting")));
        Told told;
        second.askFirst(DesktopAction::Next, {}, told.take());
        auto *patience = first.findChild<QTimer *>(QStringLiteral("patienceTimer"));
        QTRY_VERIFY(patience->isActive());
        QVERIFY(!told.answer);
        QVERIFY(elapse(*patience));
        QTRY_VERIFY(told.isAnswered());
        QCOMPARE(told.refusal(), QStringLiteral("Tunedeck is busy"));
    }

    void aFloodOfActionsIsRefusedAtOnce()
    {
        const PrivateBus bus;
        QVERIFY(bus.isRunning());
        ApplicationInstance instance(bus.connect(QStringLiteral("flooded")));
        const QDBusConnection caller = bus.connect(QStringLiteral("flooding"));
        const QVariantList arguments{QStringLiteral("next"), QVariantList(), QVariantMap()};
        QList<QDBusPendingCall> answers;
        for (int number = 1; number <= 20; ++number) {
            answers.append(caller.asyncCall(
                callTo(QStringLiteral("org.freedesktop.Application"), QStringLiteral("ActivateAction"), arguments)));
        }
        // Ten wait for Music.
        QTRY_VERIFY(answers.constLast().isFinished());
        QCOMPARE(answers.constLast().error().name(), QStringLiteral("org.tunedeck.Tunedeck.Error.Refused"));
        QVERIFY(!answers.at(9).isFinished());
        QVERIFY(answers.at(10).isFinished());
    }

    void whateverIsInThePlatformDataItActivates()
    {
        ApplicationInstance instance(QDBusConnection(QStringLiteral("none")));
        QSignalSpy activated(&instance, &ApplicationInstance::activated);
        for (const QVariantMap &platformData :
            {QVariantMap{{QStringLiteral("activation-token"), QString(100'000, u'x')}},
                QVariantMap{{QStringLiteral("activation-token"), QVariantList{1, 2}}}, QVariantMap()}) {
            instance.Activate(platformData);
            handleAll(instance);
        }
        QCOMPARE(activated.count(), 3);
        for (const QVariantList &arguments : activated) {
            QCOMPARE(arguments.constFirst().value<ActivationToken>(), ActivationToken());
        }
    }

    void activationsThatComeAtOnceAreOne()
    {
        ApplicationInstance instance(QDBusConnection(QStringLiteral("none")));
        const QSignalSpy activated(&instance, &ApplicationInstance::activated);
        const QSignalSpy unused(&instance, &ApplicationInstance::tokenUnused);
        for (int number = 1; number <= 5'000; ++number) {
            instance.Activate({{QStringLiteral("desktop-startup-id"), QString::number(number)}});
        }
        QVERIFY(elapse(turnOf(instance)));
        QCOMPARE(activated.count(), 1);
        QCOMPARE(activated.constFirst().constFirst().value<ActivationToken>().x11StartupId, QStringLiteral("5000"));
        // A dock whose start was the same one must not wait for it, but nobody may keep the program busy.
        QCOMPARE(unused.count(), 10);
        QCOMPARE(unused.constFirst().constFirst().value<ActivationToken>().x11StartupId, QStringLiteral("1"));
    }

    void aCallIsHandledAtOnceAndTheNextOnesTogetherATenthOfASecondLater()
    {
        ApplicationInstance instance(QDBusConnection(QStringLiteral("none")));
        const QSignalSpy activated(&instance, &ApplicationInstance::activated);
        instance.Activate({});
        QCOMPARE(turnOf(instance).interval(), 0);
        QVERIFY(elapse(turnOf(instance)));
        instance.Activate({});
        instance.Activate({});
        QCOMPARE(turnOf(instance).interval(), 100);
        QVERIFY(elapse(turnOf(instance)));
        QCOMPARE(activated.count(), 2);
        QVERIFY(!turnOf(instance).isActive());
    }

    void actionsThatComeAtOnceAreCarriedOutOneAfterTheOther()
    {
        ApplicationInstance instance(QDBusConnection(QStringLiteral("none")));
        DeliveredActions delivered;
        carryOutAll(instance, delivered);
        const QSignalSpy unused(&instance, &ApplicationInstance::tokenUnused);
        for (int number = 1; number <= 5'000; ++number) {
            instance.ActivateAction(QStringLiteral("keep-above"), {}, tokenOfDock.platformData());
        }
        for (int turn = 1; turn <= 10; ++turn) {
            QVERIFY(elapse(turnOf(instance)));
            QCOMPARE(delivered.names().size(), turn);
        }
        QVERIFY(!turnOf(instance).isActive());
        QCOMPARE(unused.count(), 10);
    }

    void whoIsAskedToOpenFilesActivates()
    {
        const PrivateBus bus;
        ApplicationInstance instance(bus.connect(QStringLiteral("opened")));
        const QDBusConnection caller = bus.connect(QStringLiteral("opening"));
        QSignalSpy activated(&instance, &ApplicationInstance::activated);
        const QDBusPendingCall answer =
            caller.asyncCall(callTo(QStringLiteral("org.freedesktop.Application"), QStringLiteral("Open"),
                {QStringList{QStringLiteral("file:///song")},
                    QVariantMap{{QStringLiteral("activation-token"), QStringLiteral("open")}}}));
        QTRY_VERIFY(answer.isFinished() && !answer.isError());
        QTRY_COMPARE(activated.count(), 1);
        QCOMPARE(activated.constFirst().constFirst().value<ActivationToken>().waylandToken, QStringLiteral("open"));
    }

    void anActionThatShowsTheWindowStartsTheProgramLikeAnyStart()
    {
        ApplicationInstance instance(QDBusConnection(QStringLiteral("none")));
        QSignalSpy activated(&instance, &ApplicationInstance::activated);
        QSignalSpy unused(&instance, &ApplicationInstance::tokenUnused);
        DeliveredActions delivered;
        const QVariantMap platformData{{QStringLiteral("activation-token"), QStringLiteral("token")}};
        instance.ActivateAction(QStringLiteral("show-or-hide"), {}, platformData);
        handleAll(instance);
        QCOMPARE(activated.count(), 1);
        QCOMPARE(activated.constFirst().constFirst().value<ActivationToken>().waylandToken, QStringLiteral("token"));
        QVERIFY(!instance.isAskedForActionsAlone());
        carryOutAll(instance, delivered);
        QCOMPARE(delivered.names(), QStringList());

        instance.ActivateAction(QStringLiteral("show-or-hide"), {}, platformData);
        handleAll(instance);
        QCOMPARE(delivered.names(), {QStringLiteral("show-or-hide")});
        QCOMPARE(delivered.tokens().constFirst().waylandToken, QStringLiteral("token"));
        QCOMPARE(activated.count(), 1);
        QCOMPARE(unused.count(), 0);
    }

    void theDrawerOpensInAProgramThatIsStartedForIt()
    {
        ApplicationInstance instance(QDBusConnection(QStringLiteral("none")));
        DeliveredActions delivered;
        instance.requestAction(DesktopAction::Playlists);
        QVERIFY(!instance.isAskedForActionsAlone());
        carryOutAll(instance, delivered);
        QCOMPARE(delivered.names(), {QStringLiteral("playlists")});
    }

    void aCallThatIsTooLargeIsRefused()
    {
        const PrivateBus bus;
        const ApplicationInstance instance(bus.connect(QStringLiteral("small")));
        const QDBusConnection caller = bus.connect(QStringLiteral("large"));
        const QSignalSpy activated(&instance, &ApplicationInstance::activated);
        const QDBusPendingCall answer = caller.asyncCall(callTo(QStringLiteral("org.freedesktop.Application"),
            QStringLiteral("Activate"), {QVariantMap{{QStringLiteral("text"), QString(1'100'000, u'x')}}}));
        QTRY_VERIFY(answer.isFinished());
        QCOMPARE(answer.error().type(), QDBusError::LimitsExceeded);
        QCOMPARE(activated.count(), 0);
    }

    void anActionLeavesTheKeyboardToWhoHasIt()
    {
        ApplicationInstance instance(QDBusConnection(QStringLiteral("none")));
        QSignalSpy activated(&instance, &ApplicationInstance::activated);
        QVERIFY(!instance.isAskedForActionsAlone());
        instance.ActivateAction(
            QStringLiteral("next"), {}, {{QStringLiteral("activation-token"), QStringLiteral("token")}});
        handleAll(instance);
        QCOMPARE(activated.count(), 0);
        QVERIFY(instance.isAskedForActionsAlone());
        instance.Activate({});
        QVERIFY(!instance.isAskedForActionsAlone());
    }

    void actionsWaitForWhoCarriesThemOut()
    {
        ApplicationInstance instance(QDBusConnection(QStringLiteral("none")));
        DeliveredActions delivered;
        instance.requestAction(DesktopAction::KeepAbove);
        instance.requestAction(DesktopAction::Previous);
        instance.deliverMusicActions();
        handleAll(instance);
        QCOMPARE(delivered.names(), QStringList());
        instance.deliverActions(delivered.carryOut());
        handleAll(instance);
        QCOMPARE(delivered.names(), (QStringList{QStringLiteral("keep-above"), QStringLiteral("previous")}));
        instance.deliverActions(delivered.carryOut());
        handleAll(instance);
        QCOMPARE(delivered.names().size(), 2);
        instance.requestAction(DesktopAction::PlayPause);
        handleAll(instance);
        QCOMPARE(delivered.names().constLast(), QStringLiteral("play-pause"));
    }

    void onlyActionsThatNeedMusicWaitForIt()
    {
        ApplicationInstance instance(QDBusConnection(QStringLiteral("none")));
        DeliveredActions delivered;
        instance.requestAction(DesktopAction::Next);
        instance.requestAction(DesktopAction::KeepAbove);
        instance.deliverActions(delivered.carryOut());
        handleAll(instance);
        QCOMPARE(delivered.names(), {QStringLiteral("keep-above")});
        instance.requestAction(DesktopAction::KeepAbove);
        handleAll(instance);
        QCOMPARE(delivered.names(), (QStringList{QStringLiteral("keep-above"), QStringLiteral("keep-above")}));
        instance.deliverMusicActions();
        handleAll(instance);
        QCOMPARE(delivered.names().constLast(), QStringLiteral("next"));
        QVERIFY(!instance.findChild<QTimer *>(QStringLiteral("patienceTimer"))->isActive());
    }

    void actionsDoNotWaitLongerThanASecond()
    {
        ApplicationInstance instance(QDBusConnection(QStringLiteral("none")));
        DeliveredActions delivered;
        instance.requestAction(DesktopAction::Next);
        auto *patience = instance.findChild<QTimer *>(QStringLiteral("patienceTimer"));
        QCOMPARE(patience->interval(), 1'000);
        QVERIFY(elapse(*patience));
        carryOutAll(instance, delivered);
        QCOMPARE(delivered.names(), QStringList());
    }

    void fewActionsWait()
    {
        ApplicationInstance instance(QDBusConnection(QStringLiteral("none")));
        DeliveredActions delivered;
        for (int count = 0; count < 10'000; ++count) {
            instance.requestAction(DesktopAction::Next);
        }
        carryOutAll(instance, delivered);
        QCOMPARE(delivered.names().size(), 10);
    }

    void noActionIsToldThatTheDesktopEntryDoesNotHave()
    {
        ApplicationInstance instance(QDBusConnection(QStringLiteral("none")));
        DeliveredActions delivered;
        carryOutAll(instance, delivered);
        instance.ActivateAction({}, {}, {});
        instance.ActivateAction(QString(100'000, u'n'), {}, {});
        instance.ActivateAction(QStringLiteral("Next"), {}, {});
        instance.ActivateAction(QStringLiteral("next"), {QStringLiteral("twice")}, {});
        QCOMPARE(delivered.names(), QStringList());
        QVERIFY(!instance.isAskedForActionsAlone());
    }

    void theLogSaysWhatASecondStartAsksFor()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("tunedeck.window=true"));
        const auto off = qScopeGuard([] { QLoggingCategory::setFilterRules(QString()); });
        ApplicationInstance instance(QDBusConnection(QStringLiteral("none")));
        QTest::ignoreMessage(QtDebugMsg, "a second start asks for the window");
        instance.Activate({});
        QTest::ignoreMessage(QtDebugMsg, "asked for the action \"next\"");
        instance.ActivateAction(QStringLiteral("next"), {}, {});
        QTest::ignoreMessage(QtDebugMsg,
            QRegularExpression(
                QStringLiteral("^refused: unknown action, or an action with a parameter: \"n{199}…\"$")));
        instance.ActivateAction(QString(100'000, u'n'), {}, {});
    }

    void anActionThatIsUnknownIsRefused()
    {
        const PrivateBus bus;
        QVERIFY(bus.isRunning());
        const ApplicationInstance instance(bus.connect(QStringLiteral("knowing")));
        const QDBusPendingCall answer =
            bus.connect(QStringLiteral("inventing"))
                .asyncCall(callTo(QStringLiteral("org.freedesktop.Application"), QStringLiteral("ActivateAction"),
                    {QStringLiteral("quit"), QVariantList(), QVariantMap()}));
        QTRY_VERIFY(answer.isFinished());
        QCOMPARE(answer.error().name(), QStringLiteral("org.tunedeck.Tunedeck.Error.Refused"));
    }

    void callsWithOtherArgumentsAreRefused()
    {
        const PrivateBus bus;
        QVERIFY(bus.isRunning());
        ApplicationInstance instance(bus.connect(QStringLiteral("called")));
        DeliveredActions delivered;
        carryOutAll(instance, delivered);
        QSignalSpy activated(&instance, &ApplicationInstance::activated);
        const QDBusConnection caller = bus.connect(QStringLiteral("caller"));
        const QString interface = QStringLiteral("org.freedesktop.Application");
        for (const QDBusMessage &call : {callTo(interface, QStringLiteral("Activate"), {42}),
                 callTo(interface, QStringLiteral("Open"), {QStringLiteral("file:///song"), QVariantMap()}),
                 callTo(interface, QStringLiteral("ActivateAction"), {QStringLiteral("next")}),
                 callTo(interface, QStringLiteral("ActivateAction"), {1, QVariantList(), QVariantMap()}),
                 callTo(interface, QStringLiteral("deliverActions"), {})}) {
            const QDBusPendingCall answer = caller.asyncCall(call);
            QTRY_VERIFY(answer.isFinished());
            QCOMPARE(answer.error().type(), QDBusError::UnknownMethod);
        }
        QCOMPARE(delivered.names(), QStringList());
        QCOMPARE(activated.count(), 0);
    }

    void itTellsTheBusItsThreeMethodsAndNothingElse()
    {
        const PrivateBus bus;
        QVERIFY(bus.isRunning());
        const ApplicationInstance instance(bus.connect(QStringLiteral("told")));
        const QDBusConnection caller = bus.connect(QStringLiteral("reader"));
        const QDBusPendingCall answer = caller.asyncCall(
            callTo(QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"), {}));
        QTRY_VERIFY(answer.isFinished());
        QCOMPARE(membersOf(answer.reply().arguments().value(0).toString()),
            (QStringList{QStringLiteral("method Activate a{sv}"), QStringLiteral("method Open as a{sv}"),
                QStringLiteral("method ActivateAction s av a{sv}")}));
    }
};

TUNEDECK_TEST(ApplicationInstanceTest, QCoreApplication)
#include "ApplicationInstanceTest.moc"
