// SPDX-License-Identifier: MIT
#include "dock/DockMenuItems.h"

#include "music/MenuItemIdentifier.h"
#include "platform/windowSystem.h"

#include <QAction>
#include <QMenu>

namespace tunedeck {

namespace {
/// A menu reads "&" as the mark of a mnemonic; a track's title has none.
QString literalTitle(QString text)
{
    return text.replace(u'&', QStringLiteral("&&"));
}

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
    addKeepAboveItem(*menu, commands);
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
        addItem(menu, tr("Open \"Music\"", "Command to open main Music app"), MenuItemIdentifier::openMusicApp,
            commands.openMusicApp, commands);
        return;
    }
    addItem(menu, playPauseTitle, MenuItemIdentifier::playPause, commands.playPause, commands);
    if (!isLiveStream) {
        addItem(menu, tr("Next", "For UI labels: Next"), MenuItemIdentifier::next, commands.next, commands);
        addItem(
            menu, tr("Previous", "For UI labels: Previous"), MenuItemIdentifier::previous, commands.previous, commands);
    }
}

void DockMenuItems::addKeepAboveItem(QMenu &menu, const Commands &commands) const
{
    QAction *item =
        addItem(menu, tr("Keep Above All Other Windows", "For Menu Command labels: Keep Above All Other Windows"),
            MenuItemIdentifier::keepAboveAllWindows, commands.toggleKeepAbove, commands);
    item->setCheckable(true);
    item->setChecked(isKeptAbove);
    item->setEnabled(canKeepAbove());
}

} // namespace tunedeck
