// SPDX-License-Identifier: MIT
#pragma once

#include <pulse/volume.h>

namespace tunedeck {

/// The volume of the loudest channel on the scale that desktops show, 0 to 100; 100 also for a louder one.
[[nodiscard]] int percentOf(const pa_cvolume &volume);

/// `balance` as a whole turned up or down, so that its loudest channel has `percent`, 0 to 100. All channels are alike
/// if `balance` is silent.
[[nodiscard]] pa_cvolume turnedTo(const pa_cvolume &balance, int percent);

} // namespace tunedeck
