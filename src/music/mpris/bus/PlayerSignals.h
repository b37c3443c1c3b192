// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
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

class SignalReader;

/// The signals of one connection on the bus that are about a player. They are unpacked and released on the thread that
/// reads the bus. While this thread does not come round to them, or they come in a flood, most of them are dropped
/// there, unread.
class PlayerSignals : public QObject {
    Q_OBJECT

public:
    /// Signals that reach this thread in 20 ms at most.
    static constexpr int mostInAWhile = 32;

    /// `owner` is the unique name of the player's connection.
    PlayerSignals(const QDBusConnection &connection, const QString &owner, QObject *parent = nullptr);
    ~PlayerSignals() override;

Q_SIGNALS:
    void received(const tunedeck::bus::PlayerSignal &signal);
    /// Signals have been dropped since the last one received.
    void missed();

private:
    void handle(const PlayerSignal &signal);
    void makeRoom();

    QDBusConnection m_bus;
    const QString m_owner;
    SignalReader *m_reader; ///< on the thread that reads the bus, where it is deleted
    QTimer m_while{this};
    int m_received = 0; ///< since m_while was started
};

} // namespace tunedeck::bus
