// SPDX-License-Identifier: MIT
#pragma once

#include "Picture.h"

#include <QSize>

namespace tunedeck {

/// Whether two pictures of `size`, at scale 1, are the same but for the rounding of blended text.
inline bool looksLike(const Picture &picture, const Picture &expected, QSize size)
{
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            if (!isNear(picture.at(x, y), expected.at(x, y), 2)) {
                return false;
            }
        }
    }
    return true;
}

} // namespace tunedeck
