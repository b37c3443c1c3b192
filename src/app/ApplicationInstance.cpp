// SPDX-License-Identifier: MIT
#include "app/ApplicationInstance.h"

#include "platform/BundleInfo.h"
#include "platform/shortened.h"
#include "platform/windowLog.h"

#include <QChar>
#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QPointer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

constexpr auto patience = 1s;
/// Limit for the answer, which may wait for Music.
constexpr int deadline = 2'000;
/// Showing the window again and again costs the window manager and the X server more than this program.
constexpr auto rest = 100ms;
/// Limit for what any peer on the bus makes the program keep.
constexpr int mostWaiting = 10;
constexpr QLatin1String objectPath("/org/tunedeck/Tunedeck");
constexpr QLatin1String applicationInterface("org.freedesktop.Application");
constexpr QLatin1String introspection(R"xml(<interface name="org.freedesktop.Application">
  <method name="Activate">
    <arg name="platformData" type="a{sv}" direction="in"/>
  </method>
  <method name="Open">
    <arg name="uris" type="as" direction="in"/>
    <arg name="platformData" type="a{sv}" direction="in"/>
  </method>
  <method name="ActivateAction">
    <arg name="actionName" type="s" direction="in"/>
    <arg name="parameter" type="av" direction="in"/>
    <arg name="platformData" type="a{sv}" direction="in"/>
  </method>
</interface>
)xml");
constexpr QLatin1String refused("org.tunedeck.Tunedeck.Error.Refused");

/// The text of another process, which may be any program, without what commands a terminal.
QString printable(QString text)
{
    text.removeIf([](QChar character) {
        return character.category() == QChar::Other_Control || character.category() == QChar::Other_Format;
    });
    return shortened(text);
}

FirstsAnswer answerOf(const QDBusError &error)
{
    if (!error.isValid()) {
        return {.isGiven = true, .refusal = {}};
    }
    const QString reason = error.name() == refused ? printable(error.message()) : QString();
    return {.isGiven = !reason.isEmpty(), .refusal = reason};
}
} // namespace

ApplicationInstance::ApplicationInstance(const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
{
    m_patience.setObjectName(QStringLiteral("patienceTimer"));
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, &ApplicationInstance::dropWaitingActions);
    m_turn.setObjectName(QStringLiteral("turnTimer"));
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, &ApplicationInstance::handleRequests);

    registerObject();
    m_isFirst = !m_bus.isConnected() || m_bus.registerService(applicationId.toString());
    // A second start must not reach a program that is about to end.
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
        [this] { callBus(QStringLiteral("ReleaseName"), {applicationId.toString()}); });
}

void ApplicationInstance::setBus(const QDBusConnection &bus)
{
    constexpr uint queue = 0;
    constexpr uint doNotQueue = 4;
    // A connection that has become deaf still owns the name. The bus may carry out its release after the request.
    const bool isReplaced = m_bus.isConnected();
    if (isReplaced) {
        m_calls.reset();
        callBus(QStringLiteral("ReleaseName"), {applicationId.toString()});
    }
    m_bus = bus;
    registerObject();
    callBus(QStringLiteral("RequestName"), {applicationId.toString(), isReplaced ? queue : doNotQueue});
}

/// The object is there before the name is: a process that sees the name may call at once.
void ApplicationInstance::registerObject()
{
    m_calls = std::make_unique<IncomingCalls>(m_bus, objectPath, introspection);
    connect(m_calls.get(), &IncomingCalls::called, this, &ApplicationInstance::handleCall);
}

/// Waits for no answer: a bus that hangs must delay neither the window nor the program's end.
void ApplicationInstance::callBus(const QString &method, const QVariantList &arguments)
{
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    QDBusMessage message = QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus, method);
    message.setArguments(arguments);
    m_bus.send(message);
}

void ApplicationInstance::askFirst(
    std::optional<DesktopAction> action, const ActivationToken &token, std::function<void(const FirstsAnswer &)> done)
{
    QDBusMessage message = QDBusMessage::createMethodCall(applicationId.toString(), objectPath, applicationInterface,
        action ? QStringLiteral("ActivateAction") : QStringLiteral("Activate"));
    message.setAutoStartService(false);
    if (action) {
        message << desktopActionName(*action) << QVariantList();
    }
    message << token.platformData();
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, deadline), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, done = std::move(done)] {
        watcher->deleteLater();
        done(answerOf(watcher->error()));
    });
}

bool ApplicationInstance::isAskedForActionsAlone() const
{
    return m_isActionRequested && !m_isActivated;
}

void ApplicationInstance::requestAction(DesktopAction action, const ActivationToken &token, Answer answer)
{
    m_isActionRequested = true;
    if (!m_carryOut && showsWindow(action)) {
        // The program is starting, and will show its window anyway.
        activateSoon(token);
        if (action == DesktopAction::ShowOrHide) {
            answer(QString());
            return;
        }
    }
    if (m_waitingActions.size() >= mostWaiting) {
        answer(busyText());
        return;
    }
    m_waitingActions.append({action, token, std::move(answer)});
    if (canDeliver(action)) {
        handleSoon();
    } else if (!m_patience.isActive()) {
        m_patience.start();
    }
}

void ApplicationInstance::deliverActions(CarryOut carryOut)
{
    m_carryOut = std::move(carryOut);
    handleSoon();
}

void ApplicationInstance::deliverMusicActions()
{
    m_deliversMusicActions = true;
    handleSoon();
}

bool ApplicationInstance::canDeliver(DesktopAction action) const
{
    return m_carryOut && (m_deliversMusicActions || !needsMusic(action));
}

void ApplicationInstance::handleSoon()
{
    if (!m_turn.isActive()) {
        m_turn.start(m_rest.hasExpired() ? 0ms : rest);
    }
}

/// Showing the window takes several answers of the X server, so a flood of calls must not do it once each.
void ApplicationInstance::handleRequests()
{
    m_rest.setRemainingTime(rest);
    const QList<ActivationToken> unused = std::exchange(m_unusedTokens, {});
    for (const ActivationToken &token : unused) {
        Q_EMIT tokenUnused(token);
    }
    if (const std::optional<ActivationToken> token = std::exchange(m_activation, std::nullopt)) {
        Q_EMIT activated(*token);
    }
    deliverOneAction();
}

void ApplicationInstance::deliverOneAction()
{
    const auto canBeDelivered = [this](const Request &request) { return canDeliver(request.action); };
    const auto next = std::ranges::find_if(m_waitingActions, canBeDelivered);
    if (next == m_waitingActions.end()) {
        return;
    }
    const Request request = m_waitingActions.takeAt(next - m_waitingActions.begin());
    if (std::ranges::all_of(m_waitingActions, canBeDelivered)) {
        m_patience.stop();
    }
    if (std::ranges::any_of(m_waitingActions, canBeDelivered)) {
        handleSoon();
    }
    m_carryOut(request.action, request.token, request.answer);
}

void ApplicationInstance::dropWaitingActions()
{
    m_waitingActions.removeIf([this](const Request &request) {
        const bool isDropped = !canDeliver(request.action);
        if (isDropped) {
            request.answer(busyText());
        }
        return isDropped;
    });
}

QString ApplicationInstance::busyText()
{
    return tr("Tunedeck is busy", "On the command line: why an action is refused");
}

void ApplicationInstance::activateSoon(const ActivationToken &token)
{
    m_isActivated = true;
    if (m_activation) {
        leaveUnused(*m_activation);
    }
    m_activation = token;
    handleSoon();
}

void ApplicationInstance::handleCall(const QDBusMessage &call)
{
    const QString method = call.member() + u' ' + call.signature();
    const QVariantList arguments = call.arguments();
    const bool isOfApplication = call.interface().isEmpty() || call.interface() == applicationInterface;
    if (isOfApplication && method == u"ActivateAction sava{sv}") {
        const Answer answer = [calls = QPointer(m_calls.get()), call](const QString &refusal) {
            if (calls && refusal.isEmpty()) {
                calls->answer(call);
            } else if (calls) {
                calls->refuse(call, refused, refusal);
            }
        };
        ActivateAction(arguments[0].toString(), qdbus_cast<QVariantList>(arguments[1]),
            qdbus_cast<QVariantMap>(arguments[2]), answer);
    } else if (isOfApplication && (method == u"Activate a{sv}" || method == u"Open asa{sv}")) {
        // The program opens no files. A user who tries it wants to see the window.
        Activate(qdbus_cast<QVariantMap>(arguments.last()));
        m_calls->answer(call);
    } else {
        m_calls->refuse(call, QDBusError::UnknownMethod, QStringLiteral("No such method"));
    }
}

void ApplicationInstance::leaveUnused(const ActivationToken &token)
{
    if (m_unusedTokens.size() < mostWaiting) {
        m_unusedTokens.append(token);
    }
    handleSoon();
}

void ApplicationInstance::Activate(const QVariantMap &platformData)
{
    qCDebug(windowLog) << "a second start asks for the window";
    activateSoon(ActivationToken::fromPlatformData(platformData));
}

void ApplicationInstance::ActivateAction(
    const QString &actionName, const QVariantList &parameter, const QVariantMap &platformData, const Answer &answer)
{
    const ActivationToken token = ActivationToken::fromPlatformData(platformData);
    const std::optional<DesktopAction> action = desktopActionNamed(actionName);
    if (!action || !showsWindow(*action)) {
        leaveUnused(token);
    }
    if (!action || !parameter.isEmpty()) {
        qCDebug(windowLog) << "refused: unknown action, or an action with a parameter:" << shortened(actionName);
        answer(QCoreApplication::translate("main", "unknown action; see --help", "On the command line"));
        return;
    }
    qCDebug(windowLog) << "asked for the action" << actionName;
    requestAction(*action, token, answer);
}

} // namespace tunedeck
