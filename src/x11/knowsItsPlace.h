// SPDX-License-Identifier: MIT
#pragma once

class QWindow;

namespace tunedeck {

/// Whether `window`, which is on the screen, is where Qt says. Weston puts X11 windows into frames, and reports their
/// places in the frames. Asks the X server. Always false on Wayland, and true on any other window system.
[[nodiscard]] bool knowsItsPlace(const QWindow &window);

} // namespace tunedeck
