// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/MprisPlayer.h"
#include "music/mpris/bus/Instant.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QMap>
#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

namespace tunedeck {

/// The players on the bus, as they come and go. A player is a connection, identified by its unique name, whatever names
/// it owns.
class PlayerRegistry : public QObject {
    Q_OBJECT

public:
    PlayerRegistry(const QDBusConnection &bus, Clock clock, QObject *parent = nullptr);

    /// In the order in which they came to the bus.
    [[nodiscard]] std::vector<MprisPlayer *> players() const;
    /// Whether every player that was there at the start has been found and asked.
    [[nodiscard]] bool isReady() const { return m_isReady; }

Q_SIGNALS:
    void ready();
    void playerAttached(tunedeck::MprisPlayer *player);
    void playerChanged(tunedeck::MprisPlayer *player, tunedeck::PlayerMirror::Changes changes);
    void playerRespondingChanged(tunedeck::MprisPlayer *player);
    /// The player is no longer among players(); it is deleted after this signal.
    void playerRemoved(tunedeck::MprisPlayer *player);

private:
    void list();
    void handleList(const QStringList &names);
    void findOwner(const QString &name);
    void ownerChanged(const QString &name, const QString &owner);
    void add(const QString &name, const QString &owner, MprisPlayer::Arrival arrival);
    void removeOwnerless();
    void updateReady();

    QDBusConnection m_bus;
    Clock m_clock;
    QDBusServiceWatcher m_watcher;
    QMap<QString, QString> m_owners; ///< by name on the bus
    std::vector<std::unique_ptr<MprisPlayer>> m_players;
    QTimer m_removal{this};
    int m_ownersToFind = 0;
    bool m_isListed = false;
    bool m_isReady = false;
};

} // namespace tunedeck
