// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/bus/BusCall.h"

#include <QObject>

namespace tunedeck {

/// Calls to a player, each with a deadline. A player that lets a deadline pass is not responding until it says
/// anything again.
class PlayerCalls : public QObject {
    Q_OBJECT

public:
    /// `owner` is the player's unique name on the bus, so that no call can start a program.
    PlayerCalls(const QDBusConnection &bus, const QString &owner, QObject *parent = nullptr);

    [[nodiscard]] const QString &owner() const { return m_owner; }
    /// At first true.
    [[nodiscard]] bool isResponding() const { return m_isResponding; }

    /// `handler` gets the reply or the error, after respondingChanged() if the call has changed that. It is never
    /// called if this object is deleted first.
    void ask(const QString &interface, const QString &method, const QVariantList &arguments,
        const bus::ReplyHandler &handler, Milliseconds patience = bus::deadline);
    /// Reads all properties of an interface.
    void getAll(const QString &interface, const bus::ReplyHandler &handler, Milliseconds patience = bus::deadline);
    /// Sets a property of the Player interface.
    void setProperty(const QString &property, const QVariant &value, const bus::ReplyHandler &handler);
    /// Call this for every signal of the player: it says something, so it is responding.
    void noteSignOfLife();

Q_SIGNALS:
    void respondingChanged(bool responding);

private:
    void setResponding(bool responding);

    QDBusConnection m_bus;
    QString m_owner;
    bool m_isResponding = true;
};

} // namespace tunedeck
