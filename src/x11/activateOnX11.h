// SPDX-License-Identifier: MIT
#pragma once

class QWindow;

namespace tunedeck {

struct ActivationToken;

// These functions do nothing on any other window system.

// Any program on the bus can make up a startup id, so one counts only if it names a time in the last ten minutes.

/// Marks `window` as the one that the start with `token` opens. Call it before the window is shown: the window manager
/// then decides by the token's time whether the window gets the keyboard focus, because the user may have turned to
/// another window since.
void setStartupIdOnX11(const QWindow &window, const ActivationToken &token);

/// Raises `window`, which is shown, and asks the window manager to give it the keyboard focus with the token's time.
/// Without a time it does neither: window managers and docks then show that the window wants attention.
void activateOnX11(QWindow &window, const ActivationToken &token);

/// A token with the time when the user last did something in `window`, for another program whose window the user wants
/// to see now. Empty if the time is not known.
[[nodiscard]] ActivationToken tokenOfUserTimeOnX11(const QWindow &window);

/// A token with the time on the X server's clock, for what the user asks for now. Empty if the time is not known.
[[nodiscard]] ActivationToken tokenOfNowOnX11();

/// Ends the startup notification, so that docks stop showing a busy pointer.
void endStartupNotificationOnX11(const ActivationToken &token);

} // namespace tunedeck
