// SPDX-License-Identifier: MIT
#include "music/isMenuItemEnabled.h"

#include "music/MenuItemIdentifier.h"
#include "music/MusicConnector.h"

namespace tunedeck {

bool isMenuItemEnabled(const QString &identifier, const MusicConnector &musicConnector)
{
    using namespace MenuItemIdentifier;
    const bool isMusicAppRunning = musicConnector.isMusicAppRunning();
    if (identifier == playPause || identifier == volumeUp || identifier == volumeDown) {
        return isMusicAppRunning;
    }
    if (identifier == next || identifier == previous) {
        return isMusicAppRunning && musicConnector.feedType() != FeedType::liveStream;
    }
    return identifier == openMusicApp || identifier == closeWindow;
}

} // namespace tunedeck
