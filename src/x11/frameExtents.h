// SPDX-License-Identifier: MIT
#pragma once

class QMargins;
class QRect;
class QWindow;

namespace tunedeck {

/// Tells the window manager that the outermost `extents` of `window`, in points, are no part of what the user takes for
/// the window: it snaps and photographs what is inside. False where there is no one to tell, as on any window system
/// but X11: on Wayland, Qt can tell the margins, but tells size limits that include them.
bool setFrameExtents(const QWindow &window, const QMargins &extents);

/// Lets the pointer reach what is behind `window` everywhere but in `region`, in points from the window's corner.
void setInputRegion(const QWindow &window, const QRect &region);

} // namespace tunedeck
