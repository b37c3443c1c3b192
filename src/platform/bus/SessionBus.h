// SPDX-License-Identifier: MIT
#pragma once

#include "platform/bus/BusProbe.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <optional>

namespace tunedeck {

/// The connection to the session bus, which may be missing at first, or end and come back while the program runs.
/// While there is no bus, a thread tries to connect from time to time: connecting may block.
class SessionBus : public QObject {
    Q_OBJECT

public:
    /// The time between two attempts to connect.
    static constexpr std::chrono::milliseconds retryInterval{5'000};

    explicit SessionBus(QObject *parent = nullptr);
    /// The bus at `address`. While it is missing, tries to connect every `interval`.
    SessionBus(const QString &address, std::chrono::milliseconds interval, QObject *parent = nullptr);

    /// The connection is not connected while there is no bus. The reference stays valid, and always refers to the
    /// current connection.
    [[nodiscard]] const QDBusConnection &connection() const { return m_connection; }

    /// Call this if nothing has come over the bus although something should have. A connection that no longer hears the
    /// bus is replaced within about four seconds.
    void check();
    /// Checks the connection a second after other programs have taken or given up a name that a QDBusServiceWatcher
    /// below `parent` watches by now: Qt hands such a signal over with all that it brings. Nothing is sent while none
    /// comes.
    void checkAfterNamesSeenBy(const QObject *parent);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The bus has gone, or there is a new connection.
    void changed();

private Q_SLOTS:
    void handleDisconnected();

private:
    void handleDeaf(const QString &connectionName);
    void watch();
    void tryAgain();
    void tryToConnect();
    /// Takes the connection that an attempt has made, if any.
    void handleAttempt(const std::optional<QDBusConnection> &connection);
    void setConnection(const QDBusConnection &connection);

    const QString m_address;
    QDBusConnection m_connection;
    QTimer m_nextAttempt{this};
    bool m_isConnecting = false;
    bool m_isLost = false; ///< whether m_connection has ended, as changed() has said
    BusProbe m_probe{this};
    QTimer m_checkSoon{this};
};

} // namespace tunedeck
