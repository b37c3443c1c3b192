// SPDX-License-Identifier: MIT
#pragma once

#include <QPalette>

namespace tunedeck {

class Appearance;

/// The palettes of menus and ordinary windows, where the desktop's own does not fit the appearance.
[[nodiscard]] QPalette lightPalette();
[[nodiscard]] QPalette darkPalette();

/// Gives menus and ordinary windows the palette that fits the appearance: the desktop's own if it does, since some
/// desktops report a dark appearance but have a light palette. `isClassic` is for the program's own light one.
void applyPalette(Appearance &appearance, bool isClassic);

} // namespace tunedeck
