// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QSet>
#include <QString>
#include <QVariant>

namespace tunedeck {

/// Looks at the player on the session bus over a connection of its own, past everything that is tested: what it says is
/// so, as far as the player can be believed. Waits for the player.
class PlayerWitness : public QObject {
    Q_OBJECT

public:
    PlayerWitness();

    /// False while there is none.
    [[nodiscard]] bool findPlayer();
    /// "Playing", "Paused" or "Stopped"; empty if the player does not say.
    [[nodiscard]] QString status() const;
    /// Seconds; below 0 if the player does not say.
    [[nodiscard]] double position() const;
    /// 0 to 1; below 0 if the player does not say.
    [[nodiscard]] double volume() const;

    void quitPlayer() const;
    /// Whether the player has given up all its names.
    [[nodiscard]] bool isGone() const;

private Q_SLOTS:
    void nameOwnerChanged(const QString &name, const QString &oldOwner, const QString &newOwner);

private:
    [[nodiscard]] QVariant property(const QString &name) const;

    QDBusConnection m_bus;
    QString m_player;
    QSet<QString> m_names;
};

} // namespace tunedeck
