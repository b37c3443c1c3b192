// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QStringList>

class QPaintDevice;

namespace tunedeck {

/// The skin's face and what stands in for it, the nearest first.
[[nodiscard]] QStringList humanistSans();

/// A font whose size is given in logical pixels, fractions included: QFont itself takes only whole ones.
[[nodiscard]] QFont pixelFont(const QStringList &families, double pixels, const QPaintDevice &device);

} // namespace tunedeck
