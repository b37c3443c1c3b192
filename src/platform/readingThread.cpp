// SPDX-License-Identifier: MIT
#include "platform/readingThread.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
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
                notifier->setEnabled(true);
            }
        }
    };
    QMetaObject::invokeMethod(bus, enable, Qt::QueuedConnection);
}

} // namespace tunedeck
