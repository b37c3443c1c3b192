// SPDX-License-Identifier: MIT
#include "platform/SessionBus.h"

#include <QCoreApplication>
#include <QFile>
#include <QPointer>
#include <QThread>

#include <atomic>

namespace tunedeck {

namespace {
/// A connection under a name that no other has in this process.
QDBusConnection connectTo(const QString &address)
{
    static std::atomic<int> connections = 0;
    const QString name = QStringLiteral("session bus %1").arg(++connections);
    if (!address.isEmpty()) {
        return QDBusConnection::connectToBus(address, name);
    }
    // The library looks for its address once in a process, and then keeps to what it found or did not find.
    const QString usual = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
    return qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") && QFile::exists(usual)
        ? QDBusConnection::connectToBus(QStringLiteral("unix:path=") + usual, name)
        : QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
}
} // namespace

SessionBus::SessionBus(QObject *parent)
    : SessionBus(QString(), patience, parent)
{
}

SessionBus::SessionBus(const QString &address, std::chrono::milliseconds interval, QObject *parent)
    : QObject(parent)
    , m_address(address)
    // Everybody's connection is there already, or will be wanted by the toolkit anyway.
    , m_connection(address.isEmpty() ? QDBusConnection::sessionBus() : connectTo(address))
{
    m_nextLook.setSingleShot(true);
    m_nextLook.setInterval(interval);
    connect(&m_nextLook, &QTimer::timeout, this, &SessionBus::look);
    watch();
}

const QDBusConnection &SessionBus::connection() const
{
    return m_connection;
}

void SessionBus::lose()
{
    if (m_nextLook.isActive()) {
        return;
    }
    m_nextLook.start();
    Q_EMIT changed();
}

void SessionBus::watch()
{
    if (!m_connection.isConnected()) {
        m_nextLook.start();
        return;
    }
    m_connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
        QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this, SLOT(lose()));
}

void SessionBus::look()
{
    QThread *thread = QThread::create([bus = QPointer(this), address = m_address] {
        const QDBusConnection connection = connectTo(address);
        QMetaObject::invokeMethod(
            qApp,
            [bus, connection] {
                if (bus) {
                    bus->take(connection);
                }
            },
            Qt::QueuedConnection);
    });
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
}

void SessionBus::take(const QDBusConnection &connection)
{
    if (!connection.isConnected()) {
        QDBusConnection::disconnectFromBus(connection.name());
        m_nextLook.start();
        return;
    }
    m_connection = connection;
    watch();
    Q_EMIT changed();
}

} // namespace tunedeck
