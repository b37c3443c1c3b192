// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/bus/BusCall.h"

#include <QDBusServiceWatcher>
#include <QObject>

namespace tunedeck {

/// Calls to a player, each with a deadline. A player that lets a deadline pass is not responding until it says
/// anything again.
class PlayerCalls : public QObject {
    Q_OBJECT

public:
    /// `owner` is the player's unique name on the bus. Calls go to it, so that none can start a program, or reach
    /// another player that takes the name over.
    PlayerCalls(const QDBusConnection &bus, const QString &owner, QObject *parent = nullptr);

    [[nodiscard]] const QString &owner() const { return m_owner; }
    /// Where calls go: owner(), unless addressByName() says otherwise.
    [[nodiscard]] const QString &destination() const { return m_destination; }
    /// Sends calls to `busName`, which the owner must own, or to owner() again if `busName` is empty. A connection that
    /// shows several players learns only so which of them is meant. Once another takes the name, its answers are
    /// errors; bus::send() forbids to start a program.
    void addressByName(const QString &busName);
    /// At first true.
    [[nodiscard]] bool isResponding() const { return m_isResponding; }

    /// `handler` gets the answer, after respondingChanged() if the call has changed that. It is never
    /// called if this object is deleted first.
    void ask(const QString &interface, const QString &method, const QVariantList &arguments,
        const bus::AnswerHandler &handler, Milliseconds patience = bus::deadline);
    /// Reads all properties of an interface.
    void getAll(const QString &interface, const bus::AnswerHandler &handler, Milliseconds patience = bus::deadline);
    /// Sets a property of the Player interface.
    void setProperty(const QString &property, const QVariant &value, const bus::AnswerHandler &handler);
    /// Call this for every signal of the player: it says something, so it is responding.
    void noteSignOfLife();

Q_SIGNALS:
    void respondingChanged(bool responding);

private:
    void noteNameOwner(const QString &owner);
    void setResponding(bool responding);

    QDBusConnection m_bus;
    QString m_owner;
    QString m_destination;
    QDBusServiceWatcher m_nameWatcher;
    bool m_isNameTaken = false; ///< by another than the owner
    quint64 m_takeovers = 0;
    bool m_isResponding = true;
    quint64 m_silences = 0; ///< that have ended
};

} // namespace tunedeck
