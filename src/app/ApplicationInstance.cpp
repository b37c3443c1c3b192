// SPDX-License-Identifier: MIT
#include "app/ApplicationInstance.h"

#include "platform/BundleInfo.h"
#include "platform/shortened.h"
#include "platform/windowLog.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

#include <chrono>
#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

constexpr int deadline = 1'000;
constexpr auto patience = 1s;
constexpr int mostWaitingActions = 10;
constexpr QLatin1String objectPath("/org/tunedeck/Tunedeck");
} // namespace

ApplicationInstance::ApplicationInstance(const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, [this] { m_waitingActions.clear(); });

    registerObject();
    m_isFirst = !m_bus.isConnected() || m_bus.registerService(applicationId.toString());
    // A second start must not reach a program that is about to end.
    connect(QCoreApplication::instance(), &QCoreApplication::aboutToQuit, this,
        [this] { callBus(QStringLiteral("ReleaseName"), {applicationId.toString()}); });
}

void ApplicationInstance::setBus(const QDBusConnection &bus)
{
    constexpr uint doNotQueue = 4;
    m_bus = bus;
    registerObject();
    callBus(QStringLiteral("RequestName"), {applicationId.toString(), doNotQueue});
}

/// The object is there before the name is: a process that sees the name may call at once.
void ApplicationInstance::registerObject()
{
    m_bus.registerObject(objectPath, this, QDBusConnection::ExportScriptableSlots);
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
    std::optional<DesktopAction> action, const ActivationToken &token, std::function<void(bool answered)> done)
{
    QDBusMessage message = QDBusMessage::createMethodCall(applicationId.toString(), objectPath,
        QStringLiteral("org.freedesktop.Application"),
        action ? QStringLiteral("ActivateAction") : QStringLiteral("Activate"));
    message.setAutoStartService(false);
    if (action) {
        message << desktopActionName(*action) << QVariantList();
    }
    message << token.platformData();
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, deadline), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, done = std::move(done)] {
        watcher->deleteLater();
        done(!watcher->isError());
    });
}

bool ApplicationInstance::isAskedForActionsAlone() const
{
    return m_isActionRequested && !m_isActivated;
}

void ApplicationInstance::requestAction(DesktopAction action, const ActivationToken &token)
{
    m_isActionRequested = true;
    if (canDeliver(action)) {
        Q_EMIT actionRequested(action, token);
        return;
    }
    if (m_waitingActions.isEmpty()) {
        m_patience.start();
    }
    if (m_waitingActions.size() < mostWaitingActions) {
        m_waitingActions.append({action, token});
    }
}

void ApplicationInstance::deliverActions()
{
    m_deliversActions = true;
    deliverWaitingActions();
}

void ApplicationInstance::deliverMusicActions()
{
    m_deliversMusicActions = true;
    deliverWaitingActions();
}

bool ApplicationInstance::canDeliver(DesktopAction action) const
{
    return m_deliversActions && (m_deliversMusicActions || !needsMusic(action));
}

void ApplicationInstance::deliverWaitingActions()
{
    const QList<Request> requests = std::exchange(m_waitingActions, {});
    for (const Request &request : requests) {
        if (canDeliver(request.action)) {
            Q_EMIT actionRequested(request.action, request.token);
        } else {
            m_waitingActions.append(request);
        }
    }
    if (m_waitingActions.isEmpty()) {
        m_patience.stop();
    }
}

void ApplicationInstance::Activate(const QVariantMap &platformData)
{
    qCDebug(windowLog) << "a second start asks for the window";
    m_isActivated = true;
    Q_EMIT activated(ActivationToken::fromPlatformData(platformData));
}

void ApplicationInstance::Open(const QStringList &, const QVariantMap &platformData)
{
    // The program opens no files. A user who tries it wants to see the window.
    Activate(platformData);
}

void ApplicationInstance::ActivateAction(
    const QString &actionName, const QVariantList &parameter, const QVariantMap &platformData)
{
    const ActivationToken token = ActivationToken::fromPlatformData(platformData);
    Q_EMIT tokenUnused(token);
    const std::optional<DesktopAction> action = desktopActionNamed(actionName);
    if (!action || !parameter.isEmpty()) {
        qCDebug(windowLog) << "refused: unknown action, or an action with a parameter:" << shortened(actionName);
        return;
    }
    qCDebug(windowLog) << "asked for the action" << actionName;
    requestAction(*action, token);
}

} // namespace tunedeck
