// SPDX-License-Identifier: MIT
#pragma once

#include "skin/drawing/Gradient.h"

namespace tunedeck {

/// The gradient that sinks a control into the window's metal: dark at the top, and lit at the bottom. `alpha`, from 0
/// to 1, is that of the top in the light appearance. `scale` is the device pixel ratio.
[[nodiscard]] Gradient bezelGradient(float alpha, bool dark, double scale);

} // namespace tunedeck
