// SPDX-License-Identifier: MIT
#include "skin/drawing/bezelGradient.h"

#include "skin/drawing/Ink.h"

namespace tunedeck {

Gradient bezelGradient(float alpha, bool dark, double scale)
{
    if (dark) {
        return {{black(0.42F), 0}, {white(0.15F), 1}};
    }
    return {{black(alpha), 0}, {white(scale > 1 ? 0.4F : 0.65F), 1}};
}

Gradient metalEdgeLight()
{
    return {{white(0.62F), 0}, {white(0), 1}};
}

} // namespace tunedeck
