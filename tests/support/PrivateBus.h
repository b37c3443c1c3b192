// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>

namespace tunedeck {

/// A session bus of the test's own, which nothing on the machine knows of. It ends with the object.
class PrivateBus {
public:
    /// Waits until the bus can be reached; isRunning() tells whether it can.
    PrivateBus();
    /// At `address`, such as unix:path=/somewhere/socket.
    explicit PrivateBus(const QString &address);
    ~PrivateBus();
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    [[nodiscard]] bool isRunning() const;
    /// For DBUS_SESSION_BUS_ADDRESS of a child process.
    [[nodiscard]] QString address() const;
    /// Stops the bus, as a machine does that has no time for it, and lets it go on.
    void freeze() const;
    void thaw() const;
    /// A new connection to the bus, a peer of its own, under a name that is unique in this process.
    [[nodiscard]] QDBusConnection connect(const QString &name) const;

private:
    QProcess m_daemon;
    QString m_address;
};

} // namespace tunedeck
