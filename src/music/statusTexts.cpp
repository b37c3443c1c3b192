// SPDX-License-Identifier: MIT
#include "music/statusTexts.h"

#include "music/MusicApplication.h"

#include <QCoreApplication>

namespace tunedeck {

QString musicIsNotOpenText()
{
    //: Also the tooltip of the empty playlist picker.
    return QCoreApplication::translate("tunedeck", "Music is not open", "'Music is not open' displayed in LCD");
}

QString noSongText()
{
    return QCoreApplication::translate("tunedeck", "No Song", "'No Song' displayed in LCD");
}

QString playerIsNotRespondingText(const QString &playerName)
{
    //: %1 is the player. Also the tooltip of the controls that are then disabled.
    return QCoreApplication::translate("tunedeck", "%1 is not responding", "In the LCD while the player hangs")
        .arg(playerName);
}

QString openMusicText(bool canBeLaunched)
{
    return canBeLaunched ? QCoreApplication::translate("tunedeck", "Open \"Music\"", "Command to open main Music app")
                         : QCoreApplication::translate("tunedeck", "Open \"Music\" (Not Possible in a Sandbox)",
                               "Menu command that is disabled");
}

QString playerNameText(const MusicApplication &music)
{
    const QString name = music.playerName();
    return name.isEmpty() ? QCoreApplication::translate(
                                "tunedeck", "Music", "In place of the name of a player that has none: the music player")
                          : name;
}

QString showPlayerText(const QString &playerName)
{
    if (playerName.isEmpty()) {
        return QCoreApplication::translate("tunedeck", "Show Player", "Menu command that is disabled");
    }
    //: %1 is the player.
    return QCoreApplication::translate("tunedeck", "Show %1", "Menu command: show the player's own window")
        .arg(playerName);
}

} // namespace tunedeck
