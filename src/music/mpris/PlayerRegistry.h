// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/MprisPlayer.h"
#include "music/mpris/bus/Instant.h"
#include "music/mpris/bus/NamesOnBus.h"
#include "music/mpris/bus/SignalStream.h"

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

namespace tunedeck {

/// The players on the bus, as they come and go. A player is a name together with the connection that owns it: one
/// connection or process may show many players.
///
/// At most 64 players are read, and four of one process unless it is a phone bridge. Players that come in a flood, or
/// whose names change hands all the time, are read a few at a time.
class PlayerRegistry : public QObject {
    Q_OBJECT

public:
    PlayerRegistry(const QDBusConnection &bus, Clock clock, QObject *parent = nullptr);

    /// In the order in which they came to the bus.
    [[nodiscard]] std::vector<MprisPlayer *> players() const;
    /// The player with this bus name, without "org.mpris.MediaPlayer2."; null if there is none.
    [[nodiscard]] MprisPlayer *player(const QString &name) const;
    /// Whether every player that was there at the start has been found and asked.
    [[nodiscard]] bool isReady() const { return m_isReady; }
    /// Players of this family (see playerFamily()) are read even if there are too many; up to four.
    void prefer(const QString &family);

Q_SIGNALS:
    void ready();
    void playerAttached(tunedeck::MprisPlayer *player);
    void playerChanged(tunedeck::MprisPlayer *player, tunedeck::PlayerMirror::Changes changes);
    void playerRespondingChanged(tunedeck::MprisPlayer *player);
    /// The player is no longer among players(); it is deleted after this signal.
    void playerRemoved(tunedeck::MprisPlayer *player);

private:
    void handleOwned(const QString &name);
    void handleOwnerChanged(const QString &name);
    void admitLater(Milliseconds delay);
    void admit();
    [[nodiscard]] bool isTooMany(const QString &name, const NamesOnBus::Owner &owner) const;
    /// How many players may be read of the process that shows this one.
    [[nodiscard]] int mostOfProcess(const QString &name, const std::vector<const MprisPlayer *> &ofProcess) const;
    [[nodiscard]] bool isPreferred(const QString &name) const;
    /// Takes one addition from the budget, if there is any left.
    [[nodiscard]] bool mayAddNow();
    void add(const QString &name, const NamesOnBus::Owner &owner);
    /// Looks again at the names that were too many.
    void reconsiderSurplus();
    /// Whether its name has another owner by now, or none.
    [[nodiscard]] bool isOwnerless(const MprisPlayer &player) const;
    void removeOwnerless();
    void remove(const std::function<bool(const MprisPlayer &)> &isRemoved);
    void updateReady();

    QDBusConnection m_bus;
    Clock m_clock;
    NamesOnBus m_names;
    bus::SignalStream m_signals;
    QString m_preferred;
    std::vector<std::unique_ptr<MprisPlayer>> m_players;
    QStringList m_waiting; ///< names of players to read next
    bool m_hasSurplus = false; ///< whether there are more players than may be read
    double m_budget; ///< how many players may be added at m_budgetTime
    Instant m_budgetTime;
    QTimer m_admission{this};
    QTimer m_removal{this};
    bool m_isReady = false;
};

} // namespace tunedeck
