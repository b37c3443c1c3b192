// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QElapsedTimer>
#include <QObject>
#include <QSet>
#include <QString>
#include <QVariant>

namespace tunedeck {

/// Asks the player on the session bus over a connection of its own, independently of the tested classes. Each question
/// waits for the answer.
class PlayerWitness : public QObject {
    Q_OBJECT

public:
    PlayerWitness();

    /// Finds the player with this bus name, which is without "org.mpris.MediaPlayer2."; any player without a name.
    /// False while there is none.
    [[nodiscard]] bool findPlayer(const QString &name = {});
    /// "Playing", "Paused" or "Stopped"; empty if the player does not say.
    [[nodiscard]] QString status() const;
    /// The title in the player's metadata; empty if there is none.
    [[nodiscard]] QString title() const;
    /// Seconds; below 0 if the player does not say.
    [[nodiscard]] double position() const;
    /// 0 to 1; below 0 if the player does not say.
    [[nodiscard]] double volume() const;

    /// How many playlists the player has; below 0 if it does not say.
    [[nodiscard]] int playlistCount() const;
    /// Returns when the player has reported nothing for 700 ms: it has carried out all commands. Returns after 5 s even
    /// if the player keeps reporting.
    void awaitQuiet();

    /// Sets the volume, 0 to 1, as the player's own window would.
    void setVolume(double volume) const;
    /// Plays or pauses, as the player's own window would.
    void playPause() const;
    /// Asks the player to play the file.
    void openFile(const QString &path) const;
    void quitPlayer() const;
    /// Ends the player's process as its user would who closes its window.
    void closePlayer() const;
    /// Whether the player has given up all its names.
    [[nodiscard]] bool isGone() const;

private Q_SLOTS:
    void nameOwnerChanged(const QString &name, const QString &oldOwner, const QString &newOwner);
    void playerReported() { m_sinceReport.start(); }

private:
    [[nodiscard]] QVariant property(const QString &interface, const QString &name) const;

    QDBusConnection m_bus;
    QString m_player;
    QSet<QString> m_names;
    QElapsedTimer m_sinceReport;
};

} // namespace tunedeck
