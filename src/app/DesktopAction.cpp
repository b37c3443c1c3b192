// SPDX-License-Identifier: MIT
#include "app/DesktopAction.h"

#include "app/AppDelegate.h"

#include <algorithm>
#include <array>

namespace tunedeck {

namespace {
struct Entry {
    DesktopAction action;
    QStringView name;
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
    Entry{DesktopAction::PlayPause, u"play-pause", &carryOut<&AppDelegate::playPausePressed>},
    Entry{DesktopAction::Next, u"next", &carryOut<&AppDelegate::nextPressed>},
    Entry{DesktopAction::Previous, u"previous", &carryOut<&AppDelegate::prevPressed>},
    Entry{DesktopAction::RaisePlayer, u"raise-player", &showPlayer},
    Entry{DesktopAction::KeepAbove, u"keep-above", &carryOut<&AppDelegate::toggleKeepMainWindowAboveOtherWindows>},
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

void perform(DesktopAction action, AppDelegate &delegate, const ActivationToken &token)
{
    entryOf(action).command(delegate, token);
}

} // namespace tunedeck
