// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck {

class MusicConnector;

/// Whether the menu item with this MenuItemIdentifier is enabled as far as Music decides: play/pause while Music runs
/// and responds, the volume if Music then takes it, next and previous if it then plays no live stream, opening Music
/// and closing the window always. Any other item is disabled.
[[nodiscard]] bool isMenuItemEnabled(const QString &identifier, const MusicConnector &musicConnector);

} // namespace tunedeck
