// SPDX-License-Identifier: MIT
#include "platform/readingThread.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QSocketNotifier>

namespace tunedeck {

QThread *readingThread(const QDBusConnection &connection)
{
    // Qt makes this object for each connection to a bus, on the thread that reads it.
    const QDBusConnectionInterface *bus = connection.interface();
    return bus ? bus->thread() : nullptr;
}

void readAgain(const QDBusConnection &connection)
{
    QDBusConnectionInterface *bus = connection.interface();
    if (!bus) {
        return;
    }
    const auto enable = [bus] {
        const QObject *reader = bus->parent();
        const auto notifiers = reader ? reader->findChildren<QSocketNotifier *>() : QList<QSocketNotifier *>();
        for (QSocketNotifier *notifier : notifiers) {
            if (notifier->type() == QSocketNotifier::Read) {
                // Qt has noted the notifier as enabled when it refused to enable it on the wrong thread, and would do
                // nothing.
                notifier->setEnabled(false);
                notifier->setEnabled(true);
            }
        }
    };
    QMetaObject::invokeMethod(bus, enable, Qt::QueuedConnection);
}

void releaseWhereRead(const QDBusConnection &connection, const QDBusMessage &message)
{
    const auto release = [connection, kept = new QDBusMessage(message)] {
        QDBusConnectionInterface *bus = connection.interface();
        if (bus) {
            QMetaObject::invokeMethod(
                bus, [kept] { delete kept; }, Qt::QueuedConnection);
        } else {
            delete kept;
        }
    };
    QMetaObject::invokeMethod(QCoreApplication::instance(), release, Qt::QueuedConnection);
}

} // namespace tunedeck
