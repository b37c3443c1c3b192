// SPDX-License-Identifier: MIT
#pragma once

class QDBusConnection;
class QDBusMessage;
class QThread;

namespace tunedeck {

/// The thread on which QtDBus reads a connection; null if it is not connected.
///
/// While 63 MB of messages wait to be released, libdbus reads no more, and the release of a message makes it start
/// again. Qt can do that on this thread alone: on any other, the connection stays deaf. So what any program may send is
/// to be received, and released, by objects on this thread.
[[nodiscard]] QThread *readingThread(const QDBusConnection &connection);

/// Makes Qt read the connection again if it has stopped. Returns at once.
void readAgain(const QDBusConnection &connection);

/// Has a large message released on the thread that reads `connection`, after the turn of the event loop in which Qt
/// hands it over.
void releaseWhereRead(const QDBusConnection &connection, const QDBusMessage &message);

} // namespace tunedeck
