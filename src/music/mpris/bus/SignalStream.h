// SPDX-License-Identifier: MIT
#pragma once

#include "platform/bus/BusReader.h"

#include <QDBusConnection>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariantList>

namespace tunedeck::bus {

/// A signal of a player, with plain arguments (see plainValue()).
struct PlayerSignal {
    QString member = {};
    QVariantList arguments = {};
};

class PlayerSignals;
class PlayerSignalReader;

/// The signals of players on a connection to the bus, sorted by sender. Signals are unpacked and released on the
/// thread that reads the bus. Nothing waits for the bus.
class SignalStream : public QObject {
    Q_OBJECT

public:
    /// Signals of one connection that reach this thread in 20 ms at most. The further ones are dropped, unread.
    static constexpr int mostInAWhile = 32;

    explicit SignalStream(const QDBusConnection &connection, QObject *parent = nullptr);
    ~SignalStream() override;

private:
    friend class PlayerSignals;

    struct Sender {
        QList<PlayerSignals *> listeners;
        int received = 0; ///< since m_while was started
    };

    void add(const QString &owner, PlayerSignals *listener);
    void remove(const QString &owner, PlayerSignals *listener);
    void handle(const QString &owner, const PlayerSignal &signal);
    void makeRoom();

    QDBusConnection m_bus;
    const BusReader<PlayerSignalReader> m_reader;
    QHash<QString, Sender> m_senders; ///< by the unique name of the connection
    QTimer m_while{this};
};

} // namespace tunedeck::bus
