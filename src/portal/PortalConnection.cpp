// SPDX-License-Identifier: MIT
#include "portal/PortalConnection.h"

#include "platform/BundleInfo.h"
#include "platform/bus/awakeBus.h"
#include "platform/bus/readingThread.h"
#include "platform/windowLog.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QPointer>
#include <QThread>
#include <QVariantMap>

#include <chrono>
#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

/// In milliseconds. The bus may have to start the portal first.
constexpr int deadline = 10'000;
constexpr auto checkDelay = 1s;
} // namespace

PortalConnection::PortalConnection(QString address, QObject *parent)
    : QObject(parent)
    , m_address(std::move(address))
{
    m_checkSoon.setSingleShot(true);
    m_checkSoon.setInterval(checkDelay);
    connect(&m_checkSoon, &QTimer::timeout, this, [this] {
        m_asksAgain = m_probe.isAsking();
        m_probe.ask(*m_connection);
    });
    // The probe makes the connection read again. Where even that does not help, either the whole bus stands still, and
    // the connection will hear it when it goes on, or another message has made the connection deaf once more.
    connect(&m_probe, &BusProbe::deaf, this, [this] {
        if (std::exchange(m_asksAgain, false)) {
            m_probe.ask(*m_connection);
        }
    });
}

PortalConnection::~PortalConnection()
{
    if (m_connection) {
        QDBusConnection::disconnectFromBus(m_connection->name());
    }
}

void PortalConnection::open()
{
    QThread *thread = QThread::create([portal = QPointer(this), address = m_address] {
        const std::optional<QDBusConnection> connection = connectIfAwake(address);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [portal, connection] {
                if (portal) {
                    portal->handleConnected(connection);
                } else if (connection) {
                    QDBusConnection::disconnectFromBus(connection->name());
                }
            },
            Qt::QueuedConnection);
    });
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
}

void PortalConnection::silenceRequestsFor(const QObject *receiver) const
{
    for (const QObject *child : children()) {
        child->disconnect(receiver);
    }
}

void PortalConnection::letGo(std::unique_ptr<PortalConnection> connection, const QObject *receiver)
{
    if (connection) {
        connection->disconnect(receiver);
        connection->silenceRequestsFor(receiver);
        connection.release()->deleteLater();
    }
}

QDBusConnection PortalConnection::bus() const
{
    return m_connection.value_or(QDBusConnection(QString()));
}

QDBusMessage PortalConnection::callTo(const QString &interface, const QString &method)
{
    return QDBusMessage::createMethodCall(service, objectPath, interface, method);
}

void PortalConnection::handleConnected(const std::optional<QDBusConnection> &connection)
{
    m_connection = connection;
    if (m_connection && m_connection->isConnected()) {
        watchPortal();
        registerProgram();
    } else {
        Q_EMIT failed(PortalAnswer::Failed);
    }
}

void PortalConnection::watchPortal()
{
    auto *watcher = new QDBusServiceWatcher(service, *m_connection, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &, const QString &formerOwner, const QString &owner) { handleOwner(formerOwner, owner); });
}

void PortalConnection::handleOwner(const QString &formerOwner, const QString &owner)
{
    // Qt hands over the message on this thread, where its release may make the connection deaf.
    m_checkSoon.start();
    // The bus may start the portal for the first call.
    if (!m_isOpened) {
        return;
    }
    if (!formerOwner.isEmpty() && !std::exchange(m_isLost, true)) {
        Q_EMIT lost();
    }
    if (!owner.isEmpty() && std::exchange(m_isLost, false)) {
        Q_EMIT back();
    }
}

void PortalConnection::registerProgram()
{
    QDBusMessage call = callTo(QStringLiteral("org.freedesktop.host.portal.Registry"), QStringLiteral("Register"));
    call << applicationId.toString() << QVariantMap();
    auto *watcher = new QDBusPendingCallWatcher(m_connection->asyncCall(call, deadline), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        releaseWhereRead(*m_connection, watcher->reply());
        const QDBusError error = watcher->error();
        m_isIdentified = !error.isValid();
        if (error.isValid()) {
            qCDebug(windowLog) << "the portal does not register the program:" << error.name();
        }
        const std::optional<PortalAnswer> answer = answerWithoutPortal(error);
        m_isOpened = !answer;
        if (answer) {
            Q_EMIT failed(*answer);
        } else {
            Q_EMIT opened();
        }
    });
}

} // namespace tunedeck
