// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>

namespace tunedeck {

/// The session bus, which may not be there at first, go away and come back while the program runs. While there is none,
/// it is looked for from time to time, on a thread of its own: to connect may mean to wait.
class SessionBus : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds patience{5'000};

    explicit SessionBus(QObject *parent = nullptr);
    /// The bus at `address`, looked for every `interval` while it is not there.
    SessionBus(const QString &address, std::chrono::milliseconds interval, QObject *parent = nullptr);

    /// One that is not connected while there is no bus. The reference stays good, and always tells of the bus that is.
    [[nodiscard]] const QDBusConnection &connection() const;

Q_SIGNALS:
    /// The bus has gone, or another connection has taken the place of the one that was.
    void changed();

private Q_SLOTS:
    void lose();

private:
    void watch();
    void look();
    void take(const QDBusConnection &connection);

    const QString m_address;
    QDBusConnection m_connection;
    QTimer m_nextLook;
};

} // namespace tunedeck
