// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace tunedeck {

class MusicApplication;

// Texts that the window shows where Music has no track to show or does not answer.

/// "Music is not open", for the display and for the empty playlist picker.
[[nodiscard]] QString musicIsNotOpenText();
/// "No Song", for the display while nothing is loaded.
[[nodiscard]] QString noSongText();
/// "Strawberry is not responding", for the display and for the controls that are then disabled.
[[nodiscard]] QString playerIsNotRespondingText(const QString &playerName);
/// "Open "Music"", the command that launches Music. Says so if it can only be started elsewhere.
[[nodiscard]] QString openMusicText(bool canBeLaunched);
/// The name of the player that `music` is, or "Music" where it has none.
[[nodiscard]] QString playerNameText(const MusicApplication &music);
/// "Show Strawberry", the command that shows the player's own window; "Show Player" if `playerName` is empty.
[[nodiscard]] QString showPlayerText(const QString &playerName);

} // namespace tunedeck
