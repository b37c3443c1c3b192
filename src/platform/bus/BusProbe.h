// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>

#include <chrono>

namespace tunedeck {

/// Finds out whether a connection to the bus still hears anything. A connection that stopped reading in a flood of
/// messages looks like one on which nobody says anything.
class BusProbe : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Asks the bus itself, unless a question is under way. The answer to the first question is due within a second.
    /// Without it the connection is made to read again, and has three seconds more.
    void ask(const QDBusConnection &connection);
    [[nodiscard]] bool isAsking() const { return m_isAsking; }

Q_SIGNALS:
    /// The connection has answered neither question.
    void deaf(const QString &connectionName);

private:
    void send(const QDBusConnection &connection, std::chrono::milliseconds patience);
    void handleSilence(const QDBusConnection &connection);

    bool m_isAsking = false;
    bool m_hasReadAgain = false;
};

} // namespace tunedeck
