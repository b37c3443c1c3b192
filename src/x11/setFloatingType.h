// SPDX-License-Identifier: MIT
#pragma once

class QWindow;

namespace tunedeck {

/// Asks tiling window managers to let `window` float. Qt undoes this whenever it recreates the native window or changes
/// its flags. Does nothing on any window system but X11.
void setFloatingType(const QWindow &window);

} // namespace tunedeck
