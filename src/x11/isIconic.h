// SPDX-License-Identifier: MIT
#pragma once

class QWindow;

namespace tunedeck {

/// Whether the window manager has minimised `window`, which the X server is asked. True on any window system but X11,
/// where there is no one to ask.
[[nodiscard]] bool isIconic(const QWindow &window);

} // namespace tunedeck
