// SPDX-License-Identifier: MIT
#include "platform/bus/readingThread.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QSocketNotifier>

#include <memory>
#include <utility>

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
    // A function that is never called, because its thread ends, releases the message when Qt deletes it.
    auto kept = std::make_shared<QDBusMessage>(message);
    auto release = [connection, kept = std::move(kept)]() mutable {
        if (QDBusConnectionInterface *bus = connection.interface()) {
            QMetaObject::invokeMethod(bus, [kept = std::move(kept)]() mutable { kept.reset(); }, Qt::QueuedConnection);
        }
    };
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(release), Qt::QueuedConnection);
}

} // namespace tunedeck
