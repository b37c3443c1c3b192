// SPDX-License-Identifier: MIT
#include "platform/SessionBus.h"

#include "platform/windowLog.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QPointer>
#include <QThread>

#include <atomic>
#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

constexpr auto checkDelay = 1s;
constexpr QLatin1String localPath("/org/freedesktop/DBus/Local");
constexpr QLatin1String localInterface("org.freedesktop.DBus.Local");

/// Makes a connection with a name of its own in this process.
QDBusConnection connectTo(const QString &address)
{
    static std::atomic<int> connections = 0;
    const QString name = QStringLiteral("session bus %1").arg(++connections);
    if (!address.isEmpty()) {
        return QDBusConnection::connectToBus(address, name);
    }
    // libdbus looks up the default address once per process, and keeps the result even if it found nothing.
    const QString usual = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
    return qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") && QFile::exists(usual)
        ? QDBusConnection::connectToBus(QStringLiteral("unix:path=") + usual, name)
        : QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
}
} // namespace

SessionBus::SessionBus(QObject *parent)
    : SessionBus(QString(), retryInterval, parent)
{
}

SessionBus::SessionBus(const QString &address, std::chrono::milliseconds interval, QObject *parent)
    : QObject(parent)
    , m_address(address)
    // Qt shares this connection and needs it anyway.
    , m_connection(address.isEmpty() ? QDBusConnection::sessionBus() : connectTo(address))
{
    m_nextAttempt.setObjectName(QStringLiteral("nextAttempt"));
    m_nextAttempt.setSingleShot(true);
    m_nextAttempt.setInterval(interval);
    connect(&m_nextAttempt, &QTimer::timeout, this, &SessionBus::tryToConnect);
    connect(&m_probe, &BusProbe::deaf, this, &SessionBus::handleDeaf);
    m_checkSoon.setSingleShot(true);
    m_checkSoon.setInterval(checkDelay);
    connect(&m_checkSoon, &QTimer::timeout, this, &SessionBus::check);
    watch();
}

void SessionBus::check()
{
    if (m_connection.isConnected()) {
        m_probe.ask(m_connection);
    }
}

void SessionBus::checkAfterCallsTo(QObject *exported)
{
    exported->installEventFilter(this);
}

bool SessionBus::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::MetaCall && !m_checkSoon.isActive()) {
        m_checkSoon.start();
    }
    return false;
}

void SessionBus::handleDeaf(const QString &connectionName)
{
    if (connectionName == m_connection.name()) {
        qCDebug(windowLog) << "the session bus no longer answers on" << connectionName;
        tryToConnect();
    }
}

void SessionBus::handleDisconnected()
{
    if (m_nextAttempt.isActive()) {
        return;
    }
    m_nextAttempt.start();
    Q_EMIT changed();
}

void SessionBus::watch()
{
    if (!m_connection.isConnected()) {
        m_nextAttempt.start();
        return;
    }
    m_connection.connect(
        QString(), localPath, localInterface, QStringLiteral("Disconnected"), this, SLOT(handleDisconnected()));
}

void SessionBus::tryToConnect()
{
    QThread *thread = QThread::create([bus = QPointer(this), address = m_address] {
        const QDBusConnection connection = connectTo(address);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [bus, connection] {
                if (bus) {
                    bus->setConnection(connection);
                }
            },
            Qt::QueuedConnection);
    });
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
}

void SessionBus::setConnection(const QDBusConnection &connection)
{
    if (!connection.isConnected()) {
        QDBusConnection::disconnectFromBus(connection.name());
        m_nextAttempt.start();
        return;
    }
    QDBusConnection former = std::exchange(m_connection, connection);
    // Its end must not be taken for that of the new one.
    former.disconnect(
        QString(), localPath, localInterface, QStringLiteral("Disconnected"), this, SLOT(handleDisconnected()));
    watch();
    Q_EMIT changed();
    // The bus would keep what comes for a connection that nobody reads.
    QDBusConnection::disconnectFromBus(former.name());
}

} // namespace tunedeck
