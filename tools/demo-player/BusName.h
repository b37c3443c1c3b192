// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QString>

namespace tunedeck::demo {

/// The well-known name of a player on one connection.
class BusName {
public:
    /// The bus name of a player called `player`.
    [[nodiscard]] static QString of(const QString &player);

    BusName(const QDBusConnection &connection, const QString &player);

    [[nodiscard]] QString name() const { return m_name; }
    /// Takes the name, or, if another player has it, the name of a further instance. False if the bus gives neither.
    bool take();
    /// Takes the name, also from a demo player that has it. False if the bus does not give it.
    bool replaceOwner();
    void giveUp();
    /// Returns when every message sent so far has reached the bus. Call it before the process ends.
    void flush();

private:
    [[nodiscard]] bool isTaken(QDBusConnectionInterface::ServiceQueueOptions options) const;

    QDBusConnection m_connection;
    QString m_name;
};

} // namespace tunedeck::demo
