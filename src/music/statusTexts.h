// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck {

// Texts that the window shows where Music has no track to show or does not answer.

/// "Music is not open", for the display and for the empty playlist picker.
[[nodiscard]] QString musicIsNotOpenText();
/// "No Song", for the display while nothing is loaded.
[[nodiscard]] QString noSongText();
/// "Music is not responding", the tooltip of the display.
[[nodiscard]] QString musicIsNotRespondingText();

} // namespace tunedeck
