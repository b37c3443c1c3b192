// SPDX-License-Identifier: MIT
#pragma once

namespace tunedeck {

/// How the window comes to stay above the windows of other programs.
enum class AboveWay {
    Window, ///< the window itself asks for it, as on X11
    KWin, ///< a script that runs in KWin
    Sway, ///< Sway floats the window, on every workspace
    Hyprland, ///< Hyprland floats and pins the window
    Restart, ///< the program restarts through XWayland, where the window itself can ask
    Refused, ///< the compositor was asked and has not done it
    Sandbox, ///< a sandbox keeps the program from the compositor
    None ///< the desktop offers no way
};

/// Whether this may keep the window above; else the user can only take the wish back.
[[nodiscard]] constexpr bool isPossible(AboveWay way)
{
    return way != AboveWay::None && way != AboveWay::Sandbox;
}

} // namespace tunedeck
