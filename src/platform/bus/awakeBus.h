// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QString>

#include <optional>

namespace tunedeck {

/// Makes a connection to the session bus at `address`, with a name of its own in this process. The usual bus if the
/// address is empty. Waits for the bus.
[[nodiscard]] QDBusConnection connectToBusAt(const QString &address);

/// Does so if the bus greets back within two seconds; no value if there is no such bus. Of a list of addresses it takes
/// the first that greets. Waits, so call it on a thread.
///
/// While Qt connects, the thread that reads every connection waits for the bus, and the main thread may wait for that
/// thread. So only a bus that is awake is connected to.
[[nodiscard]] std::optional<QDBusConnection> connectIfAwake(const QString &address);

} // namespace tunedeck
