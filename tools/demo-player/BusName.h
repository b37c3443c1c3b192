// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
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
    void giveUp();
    /// Returns when every message sent so far has reached the bus. Call it before the process ends.
    void flush();

private:
    QDBusConnection m_connection;
    QString m_name;
};

} // namespace tunedeck::demo
