// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QRect>

namespace tunedeck {

/// The smallest rectangle around the pixels that are not the same. Both pictures have the same size.
inline QRect difference(const QImage &one, const QImage &other)
{
    QRect bounds;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            if (one.pixel(x, y) != other.pixel(x, y)) {
                bounds |= QRect(x, y, 1, 1);
            }
        }
    }
    return bounds;
}

} // namespace tunedeck
