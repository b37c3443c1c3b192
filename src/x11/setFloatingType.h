// SPDX-License-Identifier: MIT
#pragma once

class QWindow;

namespace tunedeck {

/// Tells the window manager that `window` is one to let float where others are tiled. The toolkit takes this back
/// whenever it makes the native window anew or changes its flags. Does nothing on any window system but X11.
void setFloatingType(const QWindow &window);

} // namespace tunedeck
