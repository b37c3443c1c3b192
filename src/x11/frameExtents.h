// SPDX-License-Identifier: MIT
#pragma once

class QMargins;
class QRect;
class QWindow;

namespace tunedeck {

/// Tells the window manager that the outermost `extents` of `window`, in points, are the window's shadow. Snapping and
/// screen shots then ignore them. Returns false on any window system but X11. (Qt can set such margins on Wayland, but
/// its size limits include them there.)
bool setFrameExtents(const QWindow &window, const QMargins &extents);

/// Sends clicks outside `region` to the windows behind `window`. `region` is in points from the window's top left
/// corner. Does nothing on any window system but X11.
void setInputRegion(const QWindow &window, const QRect &region);

} // namespace tunedeck
