// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QString>

namespace tunedeck::demo {

/// The well-known name by which a player is found, on one connection.
class BusName {
public:
    /// The bus name of a player called `player`.
    [[nodiscard]] static QString of(const QString &player);

    BusName(const QDBusConnection &connection, const QString &player);

    [[nodiscard]] QString name() const { return m_name; }
    /// Takes the name, or where another player has it, the one for a further instance. False if the bus gives neither.
    bool take();
    void giveUp();
    /// Returns when all that was sent so far has reached the bus: the last moment to end in without losing it.
    void flush();

private:
    QDBusConnection m_connection;
    QString m_name;
};

} // namespace tunedeck::demo
