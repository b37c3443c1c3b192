// SPDX-License-Identifier: MIT
#include "ApplicationInstance.h"

#include "BundleInfo.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

#include <utility>

namespace tunedeck {

namespace {
constexpr int deadline = 1'000;
constexpr int longestToken = 1'000;
constexpr QLatin1String objectPath("/org/tunedeck/Tunedeck");
constexpr QLatin1String tokenKey("activation-token");
constexpr char tokenVariable[] = "XDG_ACTIVATION_TOKEN";
} // namespace

ApplicationInstance::ApplicationInstance(const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
{
    // The object first: whoever sees the name may call at once.
    m_bus.registerObject(objectPath, this, QDBusConnection::ExportScriptableSlots);
    m_isFirst = !m_bus.isConnected() || m_bus.registerService(applicationId.toString());
    // A program that is on its way out must not be taken for the one that runs.
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { m_bus.unregisterService(applicationId.toString()); });
}

bool ApplicationInstance::isFirst() const
{
    return m_isFirst;
}

void ApplicationInstance::activateFirst(std::function<void(bool answered)> done)
{
    QDBusMessage message = QDBusMessage::createMethodCall(applicationId.toString(), objectPath,
        QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
    message.setAutoStartService(false);
    // The right to take the keyboard, which the desktop gave to this start, goes with the request.
    QVariantMap platformData;
    if (const QString token = qEnvironmentVariable(tokenVariable); !token.isEmpty()) {
        platformData.insert(tokenKey, token);
    }
    message << platformData;
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, deadline), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher, done = std::move(done)] {
        watcher->deleteLater();
        done(!watcher->isError());
    });
}

void ApplicationInstance::Activate(const QVariantMap &platformData)
{
    const QString token = platformData.value(tokenKey).toString();
    if (!token.isEmpty() && token.size() <= longestToken) {
        qputenv(tokenVariable, token.toUtf8());
    }
    Q_EMIT activated();
}

} // namespace tunedeck
