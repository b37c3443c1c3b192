// SPDX-License-Identifier: MIT
#include "app/DesktopAction.h"

#include "app/AppDelegate.h"
#include "music/MenuItemIdentifier.h"

#include <algorithm>
#include <array>

namespace tunedeck {

namespace {
struct Entry {
    DesktopAction action;
    QStringView name;
    const QString *menuItem; ///< the MenuItemIdentifier of the same command
    void (*command)(AppDelegate &delegate, const ActivationToken &token);
};

/// A command that needs no token.
template <void (AppDelegate::*command)()> void carryOut(AppDelegate &delegate, const ActivationToken &)
{
    (delegate.*command)();
}

void showPlayer(AppDelegate &delegate, const ActivationToken &token)
{
    delegate.showPlayerWithToken(token);
}

constexpr std::array entries{
    Entry{DesktopAction::PlayPause, u"play-pause", &MenuItemIdentifier::playPause,
        &carryOut<&AppDelegate::playPausePressed>},
    Entry{DesktopAction::Next, u"next", &MenuItemIdentifier::next, &carryOut<&AppDelegate::nextPressed>},
    Entry{DesktopAction::Previous, u"previous", &MenuItemIdentifier::previous, &carryOut<&AppDelegate::prevPressed>},
    Entry{DesktopAction::RaisePlayer, u"raise-player", &MenuItemIdentifier::showPlayer, &showPlayer},
    Entry{DesktopAction::KeepAbove, u"keep-above", &MenuItemIdentifier::keepAboveAllWindows,
        &carryOut<&AppDelegate::toggleKeepMainWindowAboveOtherWindows>},
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

bool needsMusic(DesktopAction action)
{
    return action != DesktopAction::KeepAbove;
}

QString perform(DesktopAction action, AppDelegate &delegate, const ActivationToken &token)
{
    const Entry &entry = entryOf(action);
    QString obstacle = delegate.obstacleToCommand(*entry.menuItem);
    if (obstacle.isEmpty()) {
        entry.command(delegate, token);
    }
    return obstacle;
}

} // namespace tunedeck
