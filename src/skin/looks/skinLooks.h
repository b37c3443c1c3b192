// SPDX-License-Identifier: MIT
#pragma once

#include "skin/looks/SkinEnvironment.h"

class QWidget;

namespace tunedeck {

[[nodiscard]] bool isDark(const SkinEnvironment &environment);
/// Whether the user's accent colour is grey.
[[nodiscard]] bool isGraphite(const SkinEnvironment &environment);
/// Repaints `view` whenever one of the two may have changed.
void repaintOnNewLooks(QWidget &view, const SkinEnvironment &environment);

} // namespace tunedeck
