// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QSocketNotifier>
#include <QTest>

namespace tunedeck {

/// Makes a connection deaf as a flood does: Qt has stopped reading, and was asked to start again on the wrong thread.
inline void stopReading(const QDBusConnection &connection)
{
    const QList<QSocketNotifier *> notifiers = connection.interface()->parent()->findChildren<QSocketNotifier *>();
    for (QSocketNotifier *notifier : notifiers) {
        if (notifier->type() != QSocketNotifier::Read) {
            continue;
        }
        QMetaObject::invokeMethod(
            connection.interface(), [notifier] { notifier->setEnabled(false); }, Qt::BlockingQueuedConnection);
        QTest::ignoreMessage(
            QtWarningMsg, "QSocketNotifier: Socket notifiers cannot be enabled or disabled from another thread");
        notifier->setEnabled(true);
    }
}

} // namespace tunedeck
