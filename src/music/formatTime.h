// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck {

/// Formats seconds as m:ss below an hour and h:mm:ss from an hour on; fractions are cut off. Negative seconds carry
/// their sign in each part (-1 gives "0:-1"). Empty for a value that is not finite; fatal for one beyond 64 bits.
[[nodiscard]] QString formatTime(double seconds);

} // namespace tunedeck
