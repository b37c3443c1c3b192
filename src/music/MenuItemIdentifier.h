// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck::MenuItemIdentifier {

// The object names of menu items. Code that validates an item recognises it by this name, in whichever menu it is.
inline const QString playPause = QStringLiteral("Controls_PlayPause");
inline const QString next = QStringLiteral("Controls_Next");
inline const QString previous = QStringLiteral("Controls_Prev");
inline const QString volumeUp = QStringLiteral("Controls_VolUp");
inline const QString volumeDown = QStringLiteral("Controls_VolDown");
inline const QString openMusicApp = QStringLiteral("File_OpenMusicApp");
inline const QString showPlayer = QStringLiteral("File_ShowPlayer");
inline const QString closeWindow = QStringLiteral("File_CloseWindow");
inline const QString keepAboveAllWindows = QStringLiteral("Window_KeepAboveAllWindows");
inline const QString remainingTime = QStringLiteral("ContextualMenu_RemainingTime");
inline const QString totalTime = QStringLiteral("ContextualMenu_TotalTime");

} // namespace tunedeck::MenuItemIdentifier
