// SPDX-License-Identifier: MIT
#include "app/DesktopAction.h"

#include "app/AppDelegate.h"
#include "music/MenuItemIdentifier.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace tunedeck {

namespace {
/// Carries the command out, or returns why it cannot be.
using Command = QString (*)(AppDelegate &delegate, const ActivationToken &token);

struct Title {
    const char *text;
    const char *comment; ///< for the translators
};

struct Entry {
    DesktopAction action;
    QStringView name;
    Title title;
    Command command;
};

/// The command of the menu item with this MenuItemIdentifier, without a token.
template <const QString &identifier, void (AppDelegate::*command)()>
QString asInMenu(AppDelegate &delegate, const ActivationToken &)
{
    QString obstacle = delegate.obstacleToCommand(identifier);
    if (obstacle.isEmpty()) {
        (delegate.*command)();
    }
    return obstacle;
}

template <void (AppDelegate::*command)()> QString seek(AppDelegate &delegate, const ActivationToken &)
{
    QString obstacle = delegate.obstacleToSeeking();
    if (obstacle.isEmpty()) {
        (delegate.*command)();
    }
    return obstacle;
}

QString showPlayer(AppDelegate &delegate, const ActivationToken &token)
{
    QString obstacle = delegate.obstacleToCommand(MenuItemIdentifier::showPlayer);
    if (obstacle.isEmpty()) {
        delegate.showPlayerWithToken(token);
    }
    return obstacle;
}

/// A request that the application fulfils, which knows the windows.
template <void (AppDelegate::*request)(const ActivationToken &)>
QString ask(AppDelegate &delegate, const ActivationToken &token)
{
    Q_EMIT(delegate.*request)(token);
    return {};
}

// The order is that of --help and of the desktop's list of shortcuts.
constexpr std::array entries{
    Entry{DesktopAction::ShowOrHide, u"show-or-hide",
        QT_TRANSLATE_NOOP3("DesktopAction", "Show or hide the window", "Keyboard shortcut in the desktop's settings"),
        &ask<&AppDelegate::showOrHideRequested>},
    Entry{DesktopAction::PlayPause, u"play-pause",
        QT_TRANSLATE_NOOP3("DesktopAction", "Play or pause", "Keyboard shortcut in the desktop's settings"),
        &asInMenu<MenuItemIdentifier::playPause, &AppDelegate::playPausePressed>},
    Entry{DesktopAction::Stop, u"stop",
        QT_TRANSLATE_NOOP3("DesktopAction", "Stop", "Keyboard shortcut in the desktop's settings"),
        &asInMenu<MenuItemIdentifier::playPause, &AppDelegate::pausePressed>},
    Entry{DesktopAction::Next, u"next",
        QT_TRANSLATE_NOOP3("DesktopAction", "Next", "Keyboard shortcut in the desktop's settings"),
        &asInMenu<MenuItemIdentifier::next, &AppDelegate::nextPressed>},
    Entry{DesktopAction::Previous, u"previous",
        QT_TRANSLATE_NOOP3("DesktopAction", "Previous", "Keyboard shortcut in the desktop's settings"),
        &asInMenu<MenuItemIdentifier::previous, &AppDelegate::prevPressed>},
    Entry{DesktopAction::SeekForward, u"seek-forward",
        QT_TRANSLATE_NOOP3("DesktopAction", "Five seconds forward", "Keyboard shortcut in the desktop's settings"),
        &seek<&AppDelegate::seekForward>},
    Entry{DesktopAction::SeekBackward, u"seek-backward",
        QT_TRANSLATE_NOOP3("DesktopAction", "Five seconds back", "Keyboard shortcut in the desktop's settings"),
        &seek<&AppDelegate::seekBackward>},
    Entry{DesktopAction::VolumeUp, u"volume-up",
        QT_TRANSLATE_NOOP3("DesktopAction", "Volume up", "Keyboard shortcut in the desktop's settings"),
        &asInMenu<MenuItemIdentifier::volumeUp, &AppDelegate::turnVolumeUp>},
    Entry{DesktopAction::VolumeDown, u"volume-down",
        QT_TRANSLATE_NOOP3("DesktopAction", "Volume down", "Keyboard shortcut in the desktop's settings"),
        &asInMenu<MenuItemIdentifier::volumeDown, &AppDelegate::turnVolumeDown>},
    Entry{DesktopAction::Playlists, u"playlists",
        QT_TRANSLATE_NOOP3(
            "DesktopAction", "Show or hide the playlists", "Keyboard shortcut in the desktop's settings"),
        &ask<&AppDelegate::playlistsRequested>},
    Entry{DesktopAction::RaisePlayer, u"raise-player",
        QT_TRANSLATE_NOOP3("DesktopAction", "Show the player", "Keyboard shortcut in the desktop's settings"),
        &showPlayer},
    Entry{DesktopAction::KeepAbove, u"keep-above",
        QT_TRANSLATE_NOOP3(
            "DesktopAction", "Keep above all other windows", "Keyboard shortcut in the desktop's settings"),
        &asInMenu<MenuItemIdentifier::keepAboveAllWindows, &AppDelegate::toggleKeepMainWindowAboveOtherWindows>},
};

const Entry &entryOf(DesktopAction action)
{
    return *std::ranges::find(entries, action, &Entry::action);
}
} // namespace

QString desktopActionName(DesktopAction action)
{
    return entryOf(action).name.toString();
}

std::optional<DesktopAction> desktopActionNamed(QStringView name)
{
    const auto *entry = std::ranges::find(entries, name, &Entry::name);
    return entry == entries.end() ? std::nullopt : std::optional(entry->action);
}

QStringList desktopActionNames()
{
    QStringList names;
    for (const Entry &entry : entries) {
        names.append(entry.name.toString());
    }
    return names;
}

QString desktopActionTitle(DesktopAction action)
{
    const Title &title = entryOf(action).title;
    return QCoreApplication::translate("DesktopAction", title.text, title.comment);
}

bool showsWindow(DesktopAction action)
{
    return action == DesktopAction::ShowOrHide || action == DesktopAction::Playlists;
}

bool needsMusic(DesktopAction action)
{
    return action != DesktopAction::KeepAbove && !showsWindow(action);
}

QString perform(DesktopAction action, AppDelegate &delegate, const ActivationToken &token)
{
    return entryOf(action).command(delegate, token);
}

} // namespace tunedeck
