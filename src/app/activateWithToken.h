// SPDX-License-Identifier: MIT
#pragma once

namespace tunedeck {

class Application;
struct ActivationToken;

/// Shows the main window for the first time, and takes the keyboard focus with `token`.
void activateWithToken(Application &application, const ActivationToken &token);

/// Shows the main window for the first time, and leaves the keyboard focus where it is.
void showWithoutActivating(Application &application);

/// Brings the main window to the front after the user started the program again, and takes the keyboard focus with
/// `token`.
void reopenWithToken(Application &application, const ActivationToken &token);

/// Hides the application's window if it can be seen. Otherwise the same as reopenWithToken().
void showOrHideWithToken(Application &application, const ActivationToken &token);

/// Opens or closes the drawer. A window that cannot be seen is shown first, with `token`, and its drawer is then open.
void showOrHidePlaylistsWithToken(Application &application, const ActivationToken &token);

} // namespace tunedeck
