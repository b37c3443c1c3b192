// SPDX-License-Identifier: MIT
#include "platform/bus/SessionBus.h"

#include "platform/bus/awakeBus.h"
#include "platform/bus/leftoverMemory.h"

#include <QCoreApplication>
#include <QDBusServiceWatcher>
#include <QEvent>
#include <QList>
#include <QPointer>
#include <QThread>

#include <optional>
#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

constexpr auto checkDelay = 1s;
constexpr QLatin1String localPath("/org/freedesktop/DBus/Local");
constexpr QLatin1String localInterface("org.freedesktop.DBus.Local");
} // namespace

SessionBus::SessionBus(QObject *parent)
    : SessionBus(QString(), retryInterval, parent)
{
}

SessionBus::SessionBus(const QString &address, std::chrono::milliseconds interval, QObject *parent)
    : QObject(parent)
    , m_address(address)
    // Qt shares this connection and needs it anyway.
    , m_connection(address.isEmpty() ? QDBusConnection::sessionBus() : connectToBusAt(address))
{
    m_nextAttempt.setObjectName(QStringLiteral("nextAttempt"));
    m_nextAttempt.setSingleShot(true);
    m_nextAttempt.setInterval(interval);
    connect(&m_nextAttempt, &QTimer::timeout, this, &SessionBus::tryAgain);
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

void SessionBus::checkAfterNamesSeenBy(const QObject *parent)
{
    const QList<QDBusServiceWatcher *> watchers = parent->findChildren<QDBusServiceWatcher *>();
    for (QDBusServiceWatcher *watcher : watchers) {
        watcher->installEventFilter(this);
    }
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
        tryToConnect();
    }
}

void SessionBus::handleDisconnected()
{
    if (!std::exchange(m_isLost, true)) {
        m_nextAttempt.start();
        Q_EMIT changed();
    }
}

void SessionBus::watch()
{
    m_isLost = !m_connection.isConnected();
    if (m_isLost) {
        m_nextAttempt.start();
        return;
    }
    m_connection.connect(
        QString(), localPath, localInterface, QStringLiteral("Disconnected"), this, SLOT(handleDisconnected()));
    giveBackLeftoverMemory(m_connection);
}

void SessionBus::tryAgain()
{
    // A connection that seemed to be deaf may hear again: the whole bus stood still.
    if (m_isLost) {
        tryToConnect();
    } else {
        check();
    }
}

void SessionBus::tryToConnect()
{
    if (std::exchange(m_isConnecting, true)) {
        return;
    }
    QThread *thread = QThread::create([bus = QPointer(this), address = m_address] {
        const std::optional<QDBusConnection> connection = connectIfAwake(address);
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [bus, connection] {
                if (bus) {
                    bus->handleAttempt(connection);
                }
            },
            Qt::QueuedConnection);
    });
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
}

void SessionBus::handleAttempt(const std::optional<QDBusConnection> &connection)
{
    m_isConnecting = false;
    if (connection && connection->isConnected()) {
        setConnection(*connection);
        return;
    }
    if (connection) {
        QDBusConnection::disconnectFromBus(connection->name());
    }
    m_nextAttempt.start();
}

void SessionBus::setConnection(const QDBusConnection &connection)
{
    m_nextAttempt.stop();
    QDBusConnection former = std::exchange(m_connection, connection);
    // Its end must not be taken for that of the new one.
    former.disconnect(
        QString(), localPath, localInterface, QStringLiteral("Disconnected"), this, SLOT(handleDisconnected()));
    watch();
    Q_EMIT changed();
    // The bus would keep what comes for a connection that nobody reads. The first one is Qt's own, and stays open: Qt
    // keeps a pointer to it for all who ask for the session bus, such as its screen reader bridge, and would use it
    // after its end. Nothing of ours listens on it any more, and what still comes is read and let go.
    QDBusConnection::disconnectFromBus(former.name());
}

} // namespace tunedeck
