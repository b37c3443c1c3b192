// SPDX-License-Identifier: MIT
#pragma once

#include "music/PlayerSound.h"
#include "platform/isInSandbox.h"

#include <QList>
#include <QString>

namespace tunedeck {

class MusicApplication;

/// An entry of the menu from which the user chooses the output that the player plays through.
struct OutputChoice {
    QString id; ///< see PlayerSound::moveTo()
    QString text; ///< for people, see menuText()
    bool isCurrent = false;

    bool operator==(const OutputChoice &) const = default;
};

/// The contents of the menu "Play Through".
struct OutputChoices {
    QString obstacle; ///< why nothing can be chosen; empty if it can
    /// Default, whose identifier is empty, then the outputs in the order of their names. Without any if they are not
    /// known. Default is never current: the server does not say whether a stream follows the default output.
    QList<OutputChoice> choices;

    bool operator==(const OutputChoices &) const = default;
};

/// If `isServerForbidden`, a sandbox keeps the sound server from this program; the obstacle then says so.
[[nodiscard]] OutputChoices outputChoices(
    const MusicApplication &music, bool isServerForbidden = isSoundServerForbidden());

/// "Play Through", the title of the menu.
[[nodiscard]] QString outputMenuTitle();

} // namespace tunedeck
