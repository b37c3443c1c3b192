// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QStringView>

#include <optional>

namespace tunedeck {

class AppDelegate;

/// What the desktop entry offers beside starting the program.
enum class DesktopAction { PlayPause, Next, Previous, KeepAbove };

/// The action's name in the desktop entry.
[[nodiscard]] QString desktopActionName(DesktopAction action);
/// None where the desktop entry has no action of this name.
[[nodiscard]] std::optional<DesktopAction> desktopActionNamed(QStringView name);
[[nodiscard]] QStringList desktopActionNames();
/// Whether there is nothing to carry out as long as it is not known what Music does.
[[nodiscard]] bool needsMusic(DesktopAction action);
void perform(DesktopAction action, AppDelegate &delegate);

} // namespace tunedeck
