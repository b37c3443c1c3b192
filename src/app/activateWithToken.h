// SPDX-License-Identifier: MIT
#pragma once

namespace tunedeck {

class Application;
struct Startup;

/// Shows the main window for the first time, and by right of `startup` takes the keyboard.
void showByRight(Application &application, const Startup &startup);

/// Shows the main window for the first time, and leaves the keyboard where it is.
void showWithoutActivating(Application &application);

/// Brings the window of a program that is started again to the front, and by right of `startup` takes the keyboard.
void reopenByRight(Application &application, const Startup &startup);

} // namespace tunedeck
