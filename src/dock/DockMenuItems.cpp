// SPDX-License-Identifier: MIT
#include "dock/DockMenuItems.h"

#include "above/keepAboveTexts.h"
#include "dock/addOutputItems.h"
#include "music/MenuItemIdentifier.h"
#include "music/statusTexts.h"
#include "widgets/literalTitle.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>

namespace tunedeck {

namespace {
/// Menus have no indentation of their own.
QString indented(const QString &title)
{
    constexpr int indentationLevel = 2;
    constexpr int spacesPerLevel = 2;
    return QString(indentationLevel * spacesPerLevel, u' ') + title;
}

void addLabel(QMenu &menu, const QString &title)
{
    menu.addAction(literalTitle(title))->setEnabled(false);
}

void addTrackLine(QMenu &menu, const QString &label, const std::optional<QString> &text)
{
    if (text && !text->isEmpty()) {
        addLabel(menu, indented(label + QStringLiteral(": ") + *text));
    }
}

QAction *addItem(QMenu &menu, const QString &title, const QString &identifier, const std::function<void()> &command,
    const DockMenuItems::Commands &commands)
{
    QAction *item = menu.addAction(title);
    item->setObjectName(identifier);
    item->setEnabled(commands.validate(*item));
    QObject::connect(item, &QAction::triggered, commands.receiver, command);
    return item;
}
} // namespace

std::unique_ptr<QMenu> DockMenuItems::menu(const Commands &commands) const
{
    auto menu = std::make_unique<QMenu>(QStringLiteral("Dock Menu Items"));
    addTrackBlock(*menu);
    addTransportBlock(*menu, commands);
    menu->addSeparator();
    addShowPlayerItem(*menu, commands);
    addOutputMenu(*menu, commands);
    addKeepAboveItem(*menu, commands);
    addFollowMenu(*menu, commands);
    return menu;
}

void DockMenuItems::addTrackBlock(QMenu &menu) const
{
    if (!track || track->trackName.value_or(QString()).isEmpty()) {
        return;
    }
    addLabel(menu, tr("Now Playing", "For UI labels: Now Playing"));
    menu.addSeparator();
    addTrackLine(menu, tr("Track", "For UI labels: Track"), track->trackName);
    addTrackLine(menu, tr("Artist", "For UI labels: Artist"), track->artistName);
    addTrackLine(menu, tr("Album", "For UI labels: Album"), track->albumName);
    menu.addSeparator();
}

void DockMenuItems::addTransportBlock(QMenu &menu, const Commands &commands) const
{
    if (!isMusicAppRunning) {
        QAction *open = addItem(
            menu, openMusicText(canOpenMusicApp), MenuItemIdentifier::openMusicApp, commands.openMusicApp, commands);
        open->setEnabled(canOpenMusicApp && open->isEnabled());
        return;
    }
    addItem(menu, playPauseTitle, MenuItemIdentifier::playPause, commands.playPause, commands);
    if (!isLiveStream) {
        addItem(menu, tr("Next", "For UI labels: Next"), MenuItemIdentifier::next, commands.next, commands);
        addItem(
            menu, tr("Previous", "For UI labels: Previous"), MenuItemIdentifier::previous, commands.previous, commands);
    }
}

void DockMenuItems::addShowPlayerItem(QMenu &menu, const Commands &commands) const
{
    if (isMusicAppRunning) {
        addItem(menu, literalTitle(showPlayerText(playerName)), MenuItemIdentifier::showPlayer, commands.showPlayer,
            commands);
    }
}

void DockMenuItems::addOutputMenu(QMenu &menu, const Commands &commands) const
{
    if (outputChoices) {
        QMenu *outputs = menu.addMenu(outputMenuTitle());
        outputs->menuAction()->setObjectName(QStringLiteral("PlayThrough"));
        addOutputItems(*outputs, *outputChoices, commands.receiver, commands.playThrough);
    }
}

void DockMenuItems::addKeepAboveItem(QMenu &menu, const Commands &commands) const
{
    QAction *item = addItem(
        menu, keepAboveTitle(aboveWay), MenuItemIdentifier::keepAboveAllWindows, commands.toggleKeepAbove, commands);
    item->setCheckable(true);
    item->setChecked(isKeptAbove);
    item->setEnabled(isKeptAbove || isPossible(aboveWay));
}

void DockMenuItems::addFollowMenu(QMenu &menu, const Commands &commands) const
{
    constexpr qsizetype automaticAlone = 1;
    if (followChoices.size() <= automaticAlone) {
        return;
    }
    QMenu *follow = menu.addMenu(followMenuTitle());
    follow->menuAction()->setObjectName(QStringLiteral("Follow"));
    auto *group = new QActionGroup(follow);
    for (const FollowChoice &choice : followChoices) {
        QAction *item = follow->addAction(literalTitle(choice.text));
        item->setObjectName(QStringLiteral("Follow_") + choice.id);
        item->setCheckable(true);
        item->setActionGroup(group);
        item->setChecked(choice.isChosen);
        item->setData(choice.desktopEntry.isEmpty() ? QString() : iconName(choice.desktopEntry));
        QObject::connect(
            item, &QAction::triggered, commands.receiver, [command = commands.follow, id = choice.id] { command(id); });
    }
    if (followedPlayer) {
        follow->addSeparator();
        QAction *item = follow->addAction(literalTitle(neverFollowText(*followedPlayer)));
        item->setObjectName(QStringLiteral("NeverFollow_") + followedPlayer->id);
        QObject::connect(item, &QAction::triggered, commands.receiver,
            [command = commands.neverFollow, id = followedPlayer->id] { command(id); });
    }
}

} // namespace tunedeck
