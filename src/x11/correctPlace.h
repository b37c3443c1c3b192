// SPDX-License-Identifier: MIT
#pragma once

class QWindow;

namespace tunedeck {

/// Lets Qt know where `window` is, if Qt believes it elsewhere. Does nothing on any other window system. Asks the X
/// server.
///
/// As soon as a window manager has put a window into its frame, Qt asks the X server for the window's place. The frame
/// may not have reached its place by then, and no event reports the right one if the window is where it asked to be.
/// Qt would send the wrong place with the next size. Once the window can be seen, its frame is at its place.
void correctPlace(const QWindow &window);

} // namespace tunedeck
