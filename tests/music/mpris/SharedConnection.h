// SPDX-License-Identifier: MIT
#pragma once

#include <gio/gio.h>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>
#include <mutex>

namespace tunedeck {

class PrivateBus;

/// Players that share one connection to the bus, and so one object: only the name that a call is sent to says which of
/// them is meant. It answers from a thread of its own.
class SharedConnection {
public:
    explicit SharedConnection(const PrivateBus &bus);
    ~SharedConnection();
    SharedConnection(const SharedConnection &) = delete;
    SharedConnection &operator=(const SharedConnection &) = delete;

    /// Adds a player. One plays if its name begins with "playing".
    bool take(const QByteArray &player);
    /// The calls, except for properties: the name that each was sent to, "?" for that of the connection, and the
    /// method.
    [[nodiscard]] QStringList calls();
    void forgetCalls();

private:
    static GDBusMessage *handle(GDBusConnection *connection, GDBusMessage *message, gboolean isIncoming, gpointer self);
    GVariant *answer(const QByteArray &player, GDBusMessage &call);

    GDBusConnection *m_connection;
    guint m_filter = 0;
    std::mutex m_mutex;
    QByteArray m_first; ///< the player that answers calls to the connection's own name
    QStringList m_calls;
};

} // namespace tunedeck
