// SPDX-License-Identifier: MIT
#pragma once

#include "skin/drawing/Gradient.h"

namespace tunedeck {

/// The gradient that sinks a control into the window's metal: dark at the top, and lit at the bottom. `alpha`, from 0
/// to 1, is that of the top in the light appearance. `scale` is the device pixel ratio.
[[nodiscard]] Gradient bezelGradient(float alpha, bool dark, double scale);

/// The light along the upper edge of a plate of metal, which fades towards its lower edge.
[[nodiscard]] Gradient metalEdgeLight();

} // namespace tunedeck
