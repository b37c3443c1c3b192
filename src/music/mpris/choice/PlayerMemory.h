// SPDX-License-Identifier: MIT
#pragma once

#include "platform/LaunchEntry.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <optional>

namespace tunedeck {

class UserDefaults;

/// A player as it describes itself.
struct PlayerDescription {
    QString name; ///< bus name without "org.mpris.MediaPlayer2."
    QString identity; ///< see menuText()
    QString desktopEntry; ///< the identifier of the entry that it names; may be empty
    std::optional<qint64> processId;
};

/// The settings' memory of followed players: how to launch the pinned one and the last one, and the pinned one's
/// name. A player that has never played is remembered by its name alone, as nobody has heard that it is a player. The
/// settings are written at most once in ten seconds, however often players change what they say of themselves; the last
/// of it is written when this object is destroyed.
class PlayerMemory : public QObject {
    Q_OBJECT

public:
    /// `defaults` must outlive this object. `processes` is the folder with a folder for each process.
    PlayerMemory(UserDefaults &defaults, const QString &processes, QObject *parent = nullptr);
    ~PlayerMemory() override;

    /// Remembers the followed player.
    void remember(const PlayerDescription &player, bool hasPlayed);
    /// The name of the pinned player; empty if no player is pinned.
    [[nodiscard]] QString pinnedPlayersName() const;
    /// The desktop entries to try when the user opens Music: the pinned player's, then that of the player followed
    /// last.
    [[nodiscard]] QStringList entriesToLaunch() const;

private:
    void handleEntry();
    [[nodiscard]] QString pinnedPlayersEntry() const;
    /// The value that the settings have or will have.
    [[nodiscard]] QString value(const QString &key) const;
    void store(const QString &key, const QString &text);
    void write();

    UserDefaults &m_defaults;
    LaunchEntry m_launchEntry;
    std::optional<PlayerDescription> m_subject; ///< the player whose entry is looked for
    QHash<QString, QString> m_unwritten; ///< by key
    QElapsedTimer m_sinceWrite; ///< invalid before the settings were written once
    QTimer m_write{this};
};

} // namespace tunedeck
