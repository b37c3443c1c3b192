// SPDX-License-Identifier: MIT
#pragma once

#include "above/AboveWay.h"

#include <QString>

namespace tunedeck {

/// The title of the menu item that keeps the window above others, which says how that is done, or why it is not.
[[nodiscard]] QString keepAboveTitle(AboveWay way);
/// The item's tooltip: what the user gets, and what else there is. Empty where the window itself asks.
[[nodiscard]] QString keepAboveToolTip(AboveWay way);
/// Why the command cannot be carried out from outside the window, where no title tells how it is done; empty if it can.
[[nodiscard]] QString keepAboveObstacle(AboveWay way);
/// Says outside the window, or to screen readers, that the compositor has refused the command.
[[nodiscard]] QString keepAboveRefusal();

} // namespace tunedeck
