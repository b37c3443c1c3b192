// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicTypes.h"

#include <QString>

namespace tunedeck {

class MusicApplication;
class MusicConnector;

// Texts for the user that say why a control of Music cannot be used. Empty where it can be, and, but for the command
// that launches Music, while Music does not run.

/// Why no command reaches Music: "Strawberry is not responding".
[[nodiscard]] QString obstacleToCommands(const MusicApplication &music);
/// Why the user cannot set `control`: obstacleToCommands(), else that Music does not take it.
[[nodiscard]] QString obstacleTo(MusicControl control, const MusicApplication &music);
/// Why the user cannot go to another track: obstacleToCommands(), else that Music plays a live stream.
[[nodiscard]] QString obstacleToOtherTracks(const MusicConnector &musicConnector);
/// Why the menu item with this MenuItemIdentifier is disabled.
[[nodiscard]] QString obstacleToMenuItem(const QString &identifier, const MusicConnector &musicConnector);

} // namespace tunedeck
