// SPDX-License-Identifier: MIT
#include "music/mpris/bus/BusCall.h"

#include "music/mpris/bus/MprisNames.h"

#include <QDBusPendingCallWatcher>

namespace tunedeck::bus {

QDBusMessage playerCall(
    const QString &owner, const QString &interface, const QString &method, const QVariantList &arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(owner, mpris::objectPath, interface, method);
    call.setAutoStartService(false);
    call.setArguments(arguments);
    return call;
}

QDBusMessage daemonCall(const QString &method, const QVariantList &arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(mpris::busService, mpris::busPath, mpris::busService, method);
    call.setArguments(arguments);
    return call;
}

void send(const QDBusConnection &connection, const QDBusMessage &call, QObject *context, const ReplyHandler &handler,
    Milliseconds patience)
{
    auto *watcher = new QDBusPendingCallWatcher(connection.asyncCall(call, int(patience.count())), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [watcher, handler] {
        watcher->deleteLater();
        handler(watcher->reply());
    });
}

bool isError(const QDBusMessage &reply)
{
    return reply.type() == QDBusMessage::ErrorMessage;
}

bool isUnanswered(const QDBusError &error)
{
    switch (error.type()) {
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return true;
    default:
        return false;
    }
}

} // namespace tunedeck::bus
