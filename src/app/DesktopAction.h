// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>

namespace tunedeck {

class AppDelegate;
struct ActivationToken;

/// The actions that the desktop entry offers besides starting the program.
enum class DesktopAction { PlayPause, Next, Previous, RaisePlayer, KeepAbove };

/// The action's name in the desktop entry.
[[nodiscard]] QString desktopActionName(DesktopAction action);
/// No value if the desktop entry has no action of this name.
[[nodiscard]] std::optional<DesktopAction> desktopActionNamed(QStringView name);
[[nodiscard]] QStringList desktopActionNames();
/// Whether the action cannot be carried out before the state of Music is known.
[[nodiscard]] bool needsMusic(DesktopAction action);
/// Carries the action out. `token` came with it. Returns why it cannot be carried out now, as a text for the user;
/// empty if it was.
[[nodiscard]] QString perform(DesktopAction action, AppDelegate &delegate, const ActivationToken &token);

} // namespace tunedeck
