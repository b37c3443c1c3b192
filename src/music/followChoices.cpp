// SPDX-License-Identifier: MIT
#include "music/followChoices.h"

#include "music/menuText.h"

#include <QCoreApplication>
#include <QHash>

#include <algorithm>
#include <utility>

namespace tunedeck {

namespace {
FollowChoice automaticChoice(const FollowablePlayers &players, bool isChosen)
{
    const std::optional<FollowablePlayer> followed = isChosen ? followedPlayer(players) : std::nullopt;
    const QString text = followed
        ? QCoreApplication::translate(
              "tunedeck", "Automatic (%1)", "In the list of players to follow: the one that plays, which is %1 now")
              .arg(followed->name)
        : QCoreApplication::translate("tunedeck", "Automatic", "In the list of players to follow: the one that plays");
    return {.id = {}, .text = menuText(text), .desktopEntry = {}, .isChosen = isChosen};
}

QString textOf(const FollowablePlayer &player)
{
    QString name = menuText(player.name);
    if (name.isEmpty()) {
        name = menuText(player.id);
    }
    if (player.title.isEmpty()) {
        return name;
    }
    return menuText(QCoreApplication::translate(
        "tunedeck", "%1: %2", "In the list of players to follow: the player, and the track that it plays")
            .arg(name, menuText(player.title)));
}

/// `text`, or if an entry has it already, with the first number from 2 on that makes it another. `numbers` has the
/// texts of the entries, each with the last number that was given to it.
QString distinctText(const QString &text, QHash<QString, int> &numbers)
{
    QString distinct = text;
    while (numbers.contains(distinct)) {
        const QString mark = QStringLiteral(" (%1)").arg(++numbers[text]);
        distinct = menuText(text, longestMenuText - mark.size()) + mark;
    }
    numbers.insert(distinct, 1);
    return distinct;
}

/// The index of the one that is followed among the players with the identifier `pinned`, which several may have. That
/// of the first one if none is followed, -1 if there is none.
qsizetype indexOfPinned(const QList<FollowablePlayer> &players, const QString &pinned)
{
    qsizetype index = -1;
    for (qsizetype i = 0; i < players.size(); ++i) {
        if (players.at(i).id == pinned && (index < 0 || players.at(i).isFollowed)) {
            index = i;
        }
    }
    return index;
}

FollowChoice awaitedChoice(const FollowablePlayers &players, const QString &id)
{
    const QString awaited = players.awaitedPlayer();
    const QString text = QCoreApplication::translate(
        "tunedeck", "%1 (not open)", "In the list of players to follow: a chosen player that does not run")
                             .arg(awaited.isEmpty() ? id : awaited);
    return {.id = id, .text = menuText(text), .desktopEntry = {}, .isChosen = true};
}
} // namespace

QList<FollowChoice> followChoices(const FollowablePlayers &players, const QString &pinned)
{
    QList<FollowChoice> choices{automaticChoice(players, pinned.isEmpty())};
    QList<FollowablePlayer> running = players.followablePlayers();
    running.resize(std::min(running.size(), qsizetype(FollowablePlayers::maximumPlayers)));
    QHash<QString, int> numbers;
    for (const FollowablePlayer &player : std::as_const(running)) {
        const QString text = distinctText(textOf(player), numbers);
        choices.append(
            {.id = player.id, .text = text, .desktopEntry = player.desktopEntry, .isFollowed = player.isFollowed});
    }
    if (pinned.isEmpty()) {
        return choices;
    }
    if (const qsizetype chosen = indexOfPinned(running, pinned); chosen >= 0) {
        choices[chosen + 1].isChosen = true;
    } else {
        choices.append(awaitedChoice(players, pinned));
    }
    return choices;
}

std::optional<FollowablePlayer> followedPlayer(const FollowablePlayers &players)
{
    const QList<FollowablePlayer> running = players.followablePlayers();
    const auto followed = std::ranges::find_if(running, &FollowablePlayer::isFollowed);
    return followed == running.end() ? std::nullopt : std::optional(*followed);
}

QString followMenuTitle()
{
    return QCoreApplication::translate("tunedeck", "Follow", "Menu title: which player to follow");
}

QString neverFollowText(const FollowablePlayer &player)
{
    return QCoreApplication::translate("tunedeck", "Never Follow %1", "Menu command: leave the player %1 out for good")
        .arg(player.name);
}

QString waitingText(const FollowablePlayers &players)
{
    const QString awaited = players.awaitedPlayer();
    return awaited.isEmpty()
        ? QString()
        : QCoreApplication::translate("tunedeck", "Waiting for %1", "Tooltip of the LCD: %1 is the player to follow")
              .arg(awaited);
}

} // namespace tunedeck
