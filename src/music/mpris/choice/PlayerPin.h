// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

namespace tunedeck {

/// The name that all instances of a player share: "chromium" for "chromium.instance1234". For a player whose name is
/// new at every start, the part before what is new: "kdeconnect" for
/// "kdeconnect.mpris_3f0b9a44c1de4c2f8f2f0d6a9be1c7aa".
[[nodiscard]] QString playerFamily(const QString &name);
/// Whether `family` is the playerFamily() of `name`.
[[nodiscard]] bool isOfFamily(const QString &name, const QString &family);

/// How the settings name a player, so that it is found again when its bus name has changed: by its family, and where
/// several players are of one family, by the name that it gives itself.
struct PlayerPin {
    QString family; ///< see playerFamily(); empty for no player at all
    QString identity; ///< see menuText(); empty if the family is enough
    QString name; ///< bus name without "org.mpris.MediaPlayer2."; empty if the others are enough

    bool operator==(const PlayerPin &) const = default;

    /// Reads an identifier. Any text is one: at worst of a player that does not exist.
    [[nodiscard]] static PlayerPin fromId(const QString &id);
    /// The value of a setting for this pin: the family alone, or "FAMILY/NAME/IDENTITY".
    [[nodiscard]] QString id() const;

    /// The grades of a match, the best last.
    enum class Match { None, SamePlayer, SameName };
    /// How well the pin fits the player with this bus name and identity.
    [[nodiscard]] Match match(const QString &playerName, const QString &playerIdentity) const;
};

/// A running player, as far as a pin can name it.
struct NamedPlayer {
    QString name; ///< bus name without "org.mpris.MediaPlayer2."
    QString identity; ///< see menuText()
};

/// A pin for each of `players`, in the same order, no two alike.
[[nodiscard]] QList<PlayerPin> distinctPins(const QList<NamedPlayer> &players);

} // namespace tunedeck
