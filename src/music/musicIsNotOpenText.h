// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck {

/// "Music is not open" in the user's language, for the display and for the empty playlist picker.
[[nodiscard]] QString musicIsNotOpenText();

} // namespace tunedeck
