// SPDX-License-Identifier: MIT
#pragma once

#include "skin/looks/SkinEnvironment.h"

class QWidget;

namespace tunedeck {

[[nodiscard]] bool isDark(const SkinEnvironment &environment);
/// Whether the user's accent colour is grey.
[[nodiscard]] bool isGraphite(const SkinEnvironment &environment);
/// Whether the user wants all that is said in shades said at full strength.
[[nodiscard]] bool isHighContrast(const SkinEnvironment &environment);
/// Repaints `view` whenever one of the three may have changed.
void repaintOnNewLooks(QWidget &view, const SkinEnvironment &environment);

} // namespace tunedeck
