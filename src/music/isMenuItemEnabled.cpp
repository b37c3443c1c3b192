// SPDX-License-Identifier: MIT
#include "music/isMenuItemEnabled.h"

#include "music/MenuItemIdentifier.h"
#include "music/MusicApplication.h"
#include "music/MusicConnector.h"

namespace tunedeck {

bool isMenuItemEnabled(const QString &identifier, const MusicConnector &musicConnector)
{
    using namespace MenuItemIdentifier;
    const MusicApplication &music = musicConnector.musicApp();
    const bool takesCommands = musicConnector.isMusicAppRunning() && music.isResponding();
    if (identifier == playPause) {
        return takesCommands;
    }
    if (identifier == volumeUp || identifier == volumeDown) {
        return takesCommands && music.answerTo(MusicControl::volume) == ControlAnswer::taken;
    }
    if (identifier == next || identifier == previous) {
        return takesCommands && musicConnector.feedType() != FeedType::liveStream;
    }
    return identifier == openMusicApp || identifier == closeWindow;
}

} // namespace tunedeck
