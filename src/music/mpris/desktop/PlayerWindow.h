// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

#include <optional>

namespace tunedeck {

struct ActivationToken;
class DesktopEntries;

/// The own window of a player. It is shown by activating the player's application over D-Bus, where its desktop entry
/// allows that and the player's process has the entry's name on the bus; then by the player's Raise, where it says that
/// it has one. Neither starts a program.
class PlayerWindow : public QObject {
    Q_OBJECT

public:
    struct Player {
        QString owner; ///< its unique name on the bus
        QString destination; ///< where calls to it go, see MprisPlayer::destination()
        std::optional<qint64> processId;
        QString desktopEntry; ///< the identifier that the player names; empty if it names none
        bool canRaise = false;

        bool operator==(const Player &) const = default;
    };

    /// `entries` must outlive this object.
    PlayerWindow(const QDBusConnection &bus, DesktopEntries &entries, QObject *parent = nullptr);

    /// Forgets the player.
    void setBus(const QDBusConnection &bus);
    void setPlayer(const std::optional<Player> &player);

    [[nodiscard]] bool canBeShown() const;
    /// Sends the first message, and does not wait for the answer. Returns canBeShown().
    bool show(const ActivationToken &token);

Q_SIGNALS:
    /// canBeShown() may have changed, though the player is the same.
    void changed();

private:
    void handleFacts(const QString &desktopEntry);
    void findApplication();
    /// `owner` has the desktop entry's name on the bus.
    void compareProcess(const QString &owner);
    void setApplication(const QString &owner);
    void activate(const ActivationToken &token);
    void raise();

    QDBusConnection m_bus;
    DesktopEntries &m_entries;
    QDBusServiceWatcher m_watcher{this};
    QTimer m_search{this};
    std::optional<Player> m_player;
    QString m_application; ///< unique name on the bus under which the player can be activated; empty if it cannot
};

} // namespace tunedeck
