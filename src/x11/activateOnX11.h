// SPDX-License-Identifier: MIT
#pragma once

class QWindow;

namespace tunedeck {

struct ActivationToken;

// These functions do nothing on any other window system.

/// Marks `window` as the one that the start with `token` opens. Call it before the window is shown: the window manager
/// then decides by the token's time whether the window gets the keyboard focus, because the user may have turned to
/// another window since.
void setStartupIdOnX11(const QWindow &window, const ActivationToken &token);

/// Asks the window manager to give `window`, which is shown, the keyboard focus with `token`. A token without a time
/// counts as a request that the user makes now. Qt's own request names the time when the user last did something in
/// this program, which may be long ago.
void activateOnX11(const QWindow &window, const ActivationToken &token);

/// A token with the time when the user last did something in `window`, for another program whose window the user wants
/// to see now. Empty if the time is not known.
[[nodiscard]] ActivationToken tokenOfUserTimeOnX11(const QWindow &window);

/// Ends the startup notification, so that docks stop showing a busy pointer.
void endStartupNotificationOnX11(const ActivationToken &token);

} // namespace tunedeck
