// SPDX-License-Identifier: MIT
#include "ApplicationInstance.h"

#include "BundleInfo.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

#include <chrono>
#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

constexpr int deadline = 1'000;
constexpr int longestToken = 1'000;
constexpr auto patience = 1s;
constexpr int mostWaitingActions = 10;
constexpr QLatin1String objectPath("/org/tunedeck/Tunedeck");
constexpr QLatin1String tokenKey("activation-token");
constexpr QLatin1String startupIdKey("desktop-startup-id");
constexpr char tokenVariable[] = "XDG_ACTIVATION_TOKEN";
constexpr char startupIdVariable[] = "DESKTOP_STARTUP_ID";

/// The right to take the keyboard, which the desktop gave to this start.
QVariantMap ownPlatformData()
{
    QVariantMap platformData;
    for (const auto &[key, variable] :
        {std::pair(tokenKey, tokenVariable), std::pair(startupIdKey, startupIdVariable)}) {
        if (const QString value = qEnvironmentVariable(variable); !value.isEmpty()) {
            platformData.insert(key, value);
        }
    }
    return platformData;
}

/// Desktops that know no tokens yet have them in the startup id.
void takeOverToken(const QVariantMap &platformData)
{
    for (const QLatin1String key : {tokenKey, startupIdKey}) {
        const QString token = platformData.value(key).toString();
        if (!token.isEmpty() && token.size() <= longestToken) {
            qputenv(tokenVariable, token.toUtf8());
            return;
        }
    }
}
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
    // A program that is on its way out must not be taken for the one that runs.
    connect(qApp, &QCoreApplication::aboutToQuit, this,
        [this] { tellBus(QStringLiteral("ReleaseName"), {applicationId.toString()}); });
}

bool ApplicationInstance::isFirst() const
{
    return m_isFirst;
}

void ApplicationInstance::setBus(const QDBusConnection &bus)
{
    constexpr uint doNotQueue = 4;
    m_bus = bus;
    registerObject();
    tellBus(QStringLiteral("RequestName"), {applicationId.toString(), doNotQueue});
}

/// Before the name is taken: whoever sees that may call at once.
void ApplicationInstance::registerObject()
{
    m_bus.registerObject(objectPath, this, QDBusConnection::ExportScriptableSlots);
}

/// Without waiting for an answer: neither the window nor the program's end is to wait for a bus that hangs.
void ApplicationInstance::tellBus(const QString &method, const QVariantList &arguments)
{
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    QDBusMessage message = QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus, method);
    message.setArguments(arguments);
    m_bus.send(message);
}

void ApplicationInstance::askFirst(std::optional<DesktopAction> action, std::function<void(bool answered)> done)
{
    QDBusMessage message = QDBusMessage::createMethodCall(applicationId.toString(), objectPath,
        QStringLiteral("org.freedesktop.Application"),
        action ? QStringLiteral("ActivateAction") : QStringLiteral("Activate"));
    message.setAutoStartService(false);
    if (action) {
        message << desktopActionName(*action) << QVariantList();
    }
    message << ownPlatformData();
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

void ApplicationInstance::requestAction(DesktopAction action)
{
    m_isActionRequested = true;
    if (m_tellsActions) {
        Q_EMIT actionRequested(action);
        return;
    }
    if (m_waitingActions.isEmpty()) {
        m_patience.start();
    }
    if (m_waitingActions.size() < mostWaitingActions) {
        m_waitingActions.append(action);
    }
}

void ApplicationInstance::tellActions()
{
    m_tellsActions = true;
    m_patience.stop();
    const QList<DesktopAction> actions = std::exchange(m_waitingActions, {});
    for (const DesktopAction action : actions) {
        Q_EMIT actionRequested(action);
    }
}

void ApplicationInstance::Activate(const QVariantMap &platformData)
{
    takeOverToken(platformData);
    m_isActivated = true;
    Q_EMIT activated();
}

void ApplicationInstance::Open(const QStringList &, const QVariantMap &platformData)
{
    // The program opens no files; who asks it to, wants to see it.
    Activate(platformData);
}

void ApplicationInstance::ActivateAction(const QString &actionName, const QVariantList &parameter, const QVariantMap &)
{
    const std::optional<DesktopAction> action = desktopActionNamed(actionName);
    if (!action || !parameter.isEmpty()) {
        qDebug("An action that there is not, or one with a parameter, was asked for over D-Bus.");
        return;
    }
    // The right to take the keyboard, which may be in the platform data, is left: an action does not take it.
    requestAction(*action);
}

} // namespace tunedeck
