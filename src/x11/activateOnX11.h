// SPDX-License-Identifier: MIT
#pragma once

class QWindow;

namespace tunedeck {

struct Startup;

// These do nothing on any other window system.

/// Tells the window manager that `window` is what `startup` brings up. Before the window is shown: with it goes whether
/// the window is given the keyboard, as the user may have turned to another one since.
void tellStartupOnX11(const QWindow &window, const Startup &startup);

/// Asks the window manager to give `window`, which is shown, the keyboard by right of `startup`. One that does not say
/// when the user asked for it is taken to be what the user asks for now. The toolkit asks by right of what the user
/// last did in this program, which may be long ago.
void activateOnX11(const QWindow &window, const Startup &startup);

/// Tells docks, which announce a start with a pointer that is busy for many seconds, that it is over.
void endStartupOnX11(const Startup &startup);

} // namespace tunedeck
