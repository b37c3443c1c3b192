// SPDX-License-Identifier: MIT
#pragma once

class QDBusConnection;

namespace tunedeck {

/// From now on, gives back to the system what large messages on any connection to a bus have left, a second after
/// them. Qt unpacks every message, also one that nobody receives, and the allocator would keep the memory:
/// 120 megabytes after a message with 30 of them. The thread that reads `connection` reads all connections, and looks
/// whenever it has read. Does nothing if `connection` is not connected.
void giveBackLeftoverMemory(const QDBusConnection &connection);

} // namespace tunedeck
