// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace tunedeck {

/// The process that speaks for a player on the desktop.
struct PlayerProcess {
    qint64 id = 0; ///< as this machine counts; 0 if it is not known
    /// Whether it speaks for a player on another machine, such as a phone.
    bool isElsewhere = false;
    /// The names that the player and its desktop entry have, in any case. They never make a stream the player's; of
    /// streams that may be, they leave those out that bear another name.
    QStringList names = {};

    bool operator==(const PlayerProcess &) const = default;
};

} // namespace tunedeck
