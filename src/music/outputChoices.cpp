// SPDX-License-Identifier: MIT
#include "music/outputChoices.h"

#include "music/MusicApplication.h"
#include "music/menuText.h"
#include "music/statusTexts.h"
#include "platform/FatalError.h"

#include <QCoreApplication>

#include <algorithm>

namespace tunedeck {

namespace {
QString obstacleText(SoundObstacle obstacle, const QString &player, bool isServerForbidden)
{
    switch (obstacle) {
    case SoundObstacle::None:
        return {};
    case SoundObstacle::NoPlayer:
    case SoundObstacle::NotAsked:
    case SoundObstacle::NoStream:
        //: %1 is the player.
        return QCoreApplication::translate("tunedeck", "%1 plays no sound yet", "In the menu Play Through").arg(player);
    case SoundObstacle::PlayerElsewhere:
        return QCoreApplication::translate("tunedeck", "%1 plays on another device", "In the menu Play Through")
            .arg(player);
    case SoundObstacle::NoServer:
        return isServerForbidden
            ? QCoreApplication::translate(
                  "tunedeck", "The sandbox keeps the sound server from Tunedeck", "In the menu Play Through")
            : QCoreApplication::translate("tunedeck", "There is no sound server", "In the menu Play Through");
    case SoundObstacle::NotResponding:
        return QCoreApplication::translate(
            "tunedeck", "The sound server is not responding", "In the menu Play Through");
    case SoundObstacle::Ambiguous:
        return QCoreApplication::translate(
            "tunedeck", "The sound of %1 cannot be told from that of others", "In the menu Play Through")
            .arg(player);
    }
    fatalError("Impossible obstacle to sound");
}

QList<OutputChoice> choicesOf(const PlayerSoundState &sound)
{
    QList<OutputChoice> choices;
    for (const SoundOutput &output : sound.outputs) {
        const QString name = menuText(output.name);
        choices.append({.id = output.id,
            .text = name.isEmpty() ? menuText(output.id) : name,
            .isCurrent = sound.currentOutputs.contains(output.id)});
    }
    std::ranges::stable_sort(choices, [](const OutputChoice &one, const OutputChoice &other) {
        return QString::localeAwareCompare(one.text, other.text) < 0;
    });
    const QString automatic = QCoreApplication::translate(
        "tunedeck", "Default", "In the menu Play Through: the output that the desktop is set to");
    choices.prepend({.id = {}, .text = automatic});
    return choices;
}
} // namespace

OutputChoices outputChoices(const MusicApplication &music, bool isServerForbidden)
{
    const QString player = menuText(playerNameText(music));
    if (!music.isRunning() || !music.sound()) {
        return {.obstacle = musicIsNotOpenText(), .choices = {}};
    }
    const PlayerSoundState &sound = music.sound()->state();
    if (sound.obstacle != SoundObstacle::None) {
        return {.obstacle = obstacleText(sound.obstacle, player, isServerForbidden), .choices = {}};
    }
    const QString obstacle = sound.canMove
        ? QString()
        : QCoreApplication::translate("tunedeck", "%1 chooses its output itself", "In the menu Play Through")
              .arg(player);
    return {.obstacle = obstacle, .choices = choicesOf(sound)};
}

QString outputMenuTitle()
{
    return QCoreApplication::translate(
        "tunedeck", "Play Through", "Title of a menu: the loudspeakers or headphones that the player plays to");
}

} // namespace tunedeck
