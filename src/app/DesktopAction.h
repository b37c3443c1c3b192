// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace tunedeck {

class AppDelegate;
struct ActivationToken;

/// The commands that can be given to the running program from anywhere: the command line, the desktop entry's menu, the
/// bus, the desktop's keyboard shortcuts.
enum class DesktopAction {
    ShowOrHide, ///< the window
    PlayPause,
    Stop, ///< what cannot be paused is stopped, such as live audio
    Next,
    Previous,
    SeekForward,
    SeekBackward,
    VolumeUp,
    VolumeDown,
    Playlists, ///< opens or closes the drawer
    RaisePlayer,
    KeepAbove,
};

/// The action's name for --action and in the desktop entry.
[[nodiscard]] QString desktopActionName(DesktopAction action);
/// No value if no action has this name.
[[nodiscard]] std::optional<DesktopAction> desktopActionNamed(QStringView name);
[[nodiscard]] QStringList desktopActionNames();
/// The action's name for people.
[[nodiscard]] QString desktopActionTitle(DesktopAction action);
/// Whether the user wants to see the window, which then opens with the keyboard focus.
[[nodiscard]] bool showsWindow(DesktopAction action);
/// Whether the action cannot be carried out before the state of Music is known.
[[nodiscard]] bool needsMusic(DesktopAction action);
/// Carries the action out. `token` came with it, and gives the keyboard focus to the window that the action shows.
/// Returns why it cannot be carried out now, as a text for the user; empty if it was.
[[nodiscard]] QString perform(DesktopAction action, AppDelegate &delegate, const ActivationToken &token);

} // namespace tunedeck
