// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QStringList>

class QPaintDevice;

namespace tunedeck {

/// The families of the skin's typeface: its own, then the substitutes, the most similar first.
[[nodiscard]] QStringList humanistSans();

/// The families for the letter of the information button, the best first. Where none is installed, a font's style hint
/// leads to the desktop's.
[[nodiscard]] QStringList romanSerif();

/// A font of the first of the families that is installed. Its size is given in logical pixels, fractions included:
/// QFont itself takes only whole ones.
[[nodiscard]] QFont pixelFont(const QStringList &families, double pixels, const QPaintDevice &device);

} // namespace tunedeck
