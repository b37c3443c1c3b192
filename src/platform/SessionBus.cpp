// SPDX-License-Identifier: MIT
#include "platform/SessionBus.h"

#include <QCoreApplication>
#include <QFile>
#include <QPointer>
#include <QThread>

#include <atomic>

namespace tunedeck {

namespace {
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
    m_nextAttempt.setSingleShot(true);
    m_nextAttempt.setInterval(interval);
    connect(&m_nextAttempt, &QTimer::timeout, this, &SessionBus::tryToConnect);
    watch();
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
    m_connection.connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
        QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this, SLOT(handleDisconnected()));
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
    m_connection = connection;
    watch();
    Q_EMIT changed();
}

} // namespace tunedeck
