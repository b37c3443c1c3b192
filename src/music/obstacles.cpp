// SPDX-License-Identifier: MIT
#include "music/obstacles.h"

#include "music/MenuItemIdentifier.h"
#include "music/MusicApplication.h"
#include "music/MusicConnector.h"
#include "music/statusTexts.h"
#include "platform/FatalError.h"

#include <QCoreApplication>

namespace tunedeck {

namespace {
QString missingText(MusicControl control)
{
    switch (control) {
    case MusicControl::position:
        //: %1 is the player.
        return QCoreApplication::translate("tunedeck", "%1 cannot seek in this track", "Tooltip of a disabled control");
    case MusicControl::volume:
        return QCoreApplication::translate("tunedeck", "%1 has no volume control", "Tooltip of a disabled control");
    case MusicControl::shuffle:
        return QCoreApplication::translate("tunedeck", "%1 has no shuffle mode", "Tooltip of a disabled control");
    case MusicControl::repeat:
        return QCoreApplication::translate("tunedeck", "%1 has no repeat mode", "Tooltip of a disabled control");
    }
    fatalError("Impossible control");
}

QString ignoredText(MusicControl control)
{
    switch (control) {
    case MusicControl::position:
        return missingText(control);
    case MusicControl::volume:
        return QCoreApplication::translate("tunedeck", "%1 keeps its own volume", "Tooltip of a disabled control");
    case MusicControl::shuffle:
        return QCoreApplication::translate(
            "tunedeck", "%1 keeps its own shuffle mode", "Tooltip of a disabled control");
    case MusicControl::repeat:
        return QCoreApplication::translate("tunedeck", "%1 keeps its own repeat mode", "Tooltip of a disabled control");
    }
    fatalError("Impossible control");
}

QString obstacleToLaunch(const MusicApplication &music)
{
    return music.canBeLaunched()
        ? QString()
        : QCoreApplication::translate("tunedeck",
              "The sandbox that Tunedeck runs in lets it start no other programs. Start your player yourself.",
              "Tooltip of a disabled menu command");
}

QString obstacleToShowing(const MusicApplication &music)
{
    if (const QString silence = obstacleToCommands(music); !silence.isEmpty()) {
        return silence;
    }
    return music.isRunning() && !music.canShowPlayer()
        ? QCoreApplication::translate("tunedeck", "%1 cannot show its window", "Tooltip of a disabled menu command")
              .arg(playerNameText(music))
        : QString();
}
} // namespace

QString obstacleToCommands(const MusicApplication &music)
{
    return music.isRunning() && !music.isResponding() ? playerIsNotRespondingText(playerNameText(music)) : QString();
}

QString obstacleTo(MusicControl control, const MusicApplication &music)
{
    if (const QString silence = obstacleToCommands(music); !silence.isEmpty()) {
        return silence;
    }
    switch (music.answerTo(control)) {
    case ControlAnswer::taken:
        return {};
    case ControlAnswer::missing:
        return missingText(control).arg(playerNameText(music));
    case ControlAnswer::ignored:
        return ignoredText(control).arg(playerNameText(music));
    }
    fatalError("Impossible answer to a control");
}

QString obstacleToOtherTracks(const MusicConnector &musicConnector)
{
    const QString silence = obstacleToCommands(musicConnector.musicApp());
    return silence.isEmpty() && musicConnector.feedType() == FeedType::liveStream
        ? QCoreApplication::translate("tunedeck", "Live audio has no other tracks",
              "Tooltip of what goes to the next and previous track, while it is disabled")
        : silence;
}

QString obstacleToMenuItem(const QString &identifier, const MusicConnector &musicConnector)
{
    using namespace MenuItemIdentifier;
    const MusicApplication &music = musicConnector.musicApp();
    if (identifier == openMusicApp) {
        return obstacleToLaunch(music);
    }
    if (!music.isRunning()) {
        return {};
    }
    if (identifier == next || identifier == previous) {
        return obstacleToOtherTracks(musicConnector);
    }
    if (identifier == volumeUp || identifier == volumeDown) {
        return obstacleTo(MusicControl::volume, music);
    }
    if (identifier == showPlayer) {
        return obstacleToShowing(music);
    }
    return identifier == playPause ? obstacleToCommands(music) : QString();
}

} // namespace tunedeck
