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

[[nodiscard]] inline QColor withAlpha(QColor color, float alpha)
{
    color.setAlphaF(alpha);
    return color;
}

} // namespace tunedeck
