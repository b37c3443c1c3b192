// SPDX-License-Identifier: MIT
#pragma once

#include "BusName.h"
#include "MprisObject.h"
#include "Oddities.h"
#include "Player.h"
#include "Script.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <optional>

namespace tunedeck::demo {

/// A player with its bus name. A process may have several, each on a connection of its own, as KDE Connect has for the
/// players of a phone.
class PlayerOnBus : public QObject {
    Q_OBJECT

public:
    struct Start {
        qsizetype track = 0; ///< its number in the library
        bool plays = false;
        QStringList lines = {}; ///< for the script, carried out before the player appears
        bool replaces = false; ///< takes the name from the player that has it
    };

    /// `name` is the bus name without "org.mpris.MediaPlayer2.", `seed` decides the order of shuffling.
    PlayerOnBus(const QDBusConnection &connection, const QString &name, quint32 seed);

    /// Appears on the bus. Returns the reason if it cannot.
    [[nodiscard]] std::optional<QString> appear(const Start &start);
    /// Gives the name up. Returns when every message sent so far has reached the bus.
    void leave();

Q_SIGNALS:
    void quitRequested();

private:
    /// Wakes the player when its next event is due.
    void rearm();

    QDBusConnection m_connection;
    Player m_player;
    Oddities m_oddities;
    BusName m_busName;
    Script m_script{m_player, m_oddities, m_busName};
    MprisObject m_object{m_player, m_oddities, m_script, m_connection};
    QTimer m_timer;
};

} // namespace tunedeck::demo
