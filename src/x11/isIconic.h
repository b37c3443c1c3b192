// SPDX-License-Identifier: MIT
#pragma once

class QWindow;

namespace tunedeck {

/// Whether the window manager has minimised `window`. Asks the X server. Always true on any other window system.
[[nodiscard]] bool isIconic(const QWindow &window);

} // namespace tunedeck
