// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QStringList>

class QPaintDevice;

namespace tunedeck {

/// The families of the skin's typeface: its own, then the substitutes, the most similar first.
[[nodiscard]] QStringList humanistSans();

/// The families for the letter of the information button, the best first.
[[nodiscard]] QStringList romanSerif();

/// Finds the installed fonts that stand in for those, which takes long. Qt keeps what it has found for all threads.
/// Needs an application object, and may run on any thread.
void matchSkinFonts();

/// A font whose size is given in logical pixels, fractions included: QFont itself takes only whole ones.
[[nodiscard]] QFont pixelFont(const QStringList &families, double pixels, const QPaintDevice &device);

} // namespace tunedeck
