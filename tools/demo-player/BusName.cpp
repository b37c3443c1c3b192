// SPDX-License-Identifier: MIT
#include "BusName.h"

#include <QCoreApplication>
#include <QDBusMessage>

namespace tunedeck::demo {

QString BusName::of(const QString &player)
{
    return QStringLiteral("org.mpris.MediaPlayer2.") + player;
}

BusName::BusName(const QDBusConnection &connection, const QString &player)
    : m_connection(connection)
    , m_name(of(player))
{
}

bool BusName::take()
{
    if (isTaken(QDBusConnectionInterface::DontQueueService)) {
        return true;
    }
    m_name += QStringLiteral(".instance%1").arg(QCoreApplication::applicationPid());
    return isTaken(QDBusConnectionInterface::DontQueueService);
}

bool BusName::replaceOwner()
{
    return isTaken(QDBusConnectionInterface::ReplaceExistingService);
}

bool BusName::isTaken(QDBusConnectionInterface::ServiceQueueOptions options) const
{
    const auto reply =
        m_connection.interface()->registerService(m_name, options, QDBusConnectionInterface::AllowReplacement);
    return reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered;
}

void BusName::giveUp()
{
    m_connection.unregisterService(m_name);
}

void BusName::flush()
{
    // Messages of one connection keep their order, so the bus has them all when it answers.
    m_connection.call(QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
}

} // namespace tunedeck::demo
