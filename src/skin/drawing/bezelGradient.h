// SPDX-License-Identifier: MIT
#pragma once

#include "skin/drawing/Gradient.h"

namespace tunedeck {

/// What sinks a control into the window's metal: dark at its top, of `alpha` in the light appearance, and lit at its
/// bottom. `scale` is the device pixel ratio.
[[nodiscard]] Gradient bezelGradient(float alpha, bool dark, double scale);

} // namespace tunedeck
