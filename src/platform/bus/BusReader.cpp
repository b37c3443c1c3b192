// SPDX-License-Identifier: MIT
#include "platform/bus/BusReader.h"

#include "platform/bus/readingThread.h"

#include <QDBusConnection>
#include <QThread>

namespace tunedeck {

void DeletedWhereItReads::operator()(QObject *reader) const
{
    // Qt waits on the reading thread when an object that it knows is destroyed, and would wait for itself.
    QObject::disconnect(reader, &QObject::destroyed, nullptr, nullptr);
    reader->deleteLater();
}

void moveToReadingThread(QObject &reader, const QDBusConnection &connection)
{
    if (QThread *thread = readingThread(connection)) {
        reader.moveToThread(thread);
    }
}

} // namespace tunedeck
