// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

namespace tunedeck {

[[nodiscard]] inline QColor black(float alpha)
{
    return QColor::fromRgbF(0, 0, 0, alpha);
}

[[nodiscard]] inline QColor white(float alpha)
{
    return QColor::fromRgbF(1, 1, 1, alpha);
}

/// `level` is from 0, black, to 1, white.
[[nodiscard]] inline QColor grey(float level, float alpha = 1)
{
    return QColor::fromRgbF(level, level, level, alpha);
}

/// The accent of the skin, for the user's accent colour graphite or for any other.
[[nodiscard]] inline QColor accentColor(bool isGraphite)
{
    return isGraphite ? QColor::fromRgbF(0.38F, 0.45F, 0.54F) : QColor::fromRgbF(0.21F, 0.53F, 0.85F);
}

[[nodiscard]] inline QColor withAlpha(QColor color, float alpha)
{
    color.setAlphaF(alpha);
    return color;
}

} // namespace tunedeck
