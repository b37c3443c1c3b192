// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QStringView>

#include <optional>

namespace tunedeck {

class AppDelegate;

/// The actions that the desktop entry offers besides starting the program.
enum class DesktopAction { PlayPause, Next, Previous, KeepAbove };

/// The action's name in the desktop entry.
[[nodiscard]] QString desktopActionName(DesktopAction action);
/// No value if the desktop entry has no action of this name.
[[nodiscard]] std::optional<DesktopAction> desktopActionNamed(QStringView name);
[[nodiscard]] QStringList desktopActionNames();
/// Whether the action cannot be carried out before the state of Music is known.
[[nodiscard]] bool needsMusic(DesktopAction action);
void perform(DesktopAction action, AppDelegate &delegate);

} // namespace tunedeck
