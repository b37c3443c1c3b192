// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck {

class MusicConnector;

/// Whether the menu item with this MenuItemIdentifier is enabled as far as Music decides: play/pause and the volume
/// while Music runs, next and previous only while it plays no live stream, opening Music and closing the window always.
/// Any other item is disabled.
[[nodiscard]] bool isMenuItemEnabled(const QString &identifier, const MusicConnector &musicConnector);

} // namespace tunedeck
