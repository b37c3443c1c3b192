// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <memory>

class QDBusConnection;

namespace tunedeck {

struct DeletedWhereItReads {
    void operator()(QObject *reader) const;
};

/// An object that receives from a connection to the bus, on the thread that reads the connection. It is deleted there,
/// later: disconnect it from the bus before.
template <typename Reader> using BusReader = std::unique_ptr<Reader, DeletedWhereItReads>;

/// Call it before the connection knows `reader`, which stays on this thread if the connection is not connected.
void moveToReadingThread(QObject &reader, const QDBusConnection &connection);

} // namespace tunedeck
