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
    void (AppDelegate::*command)();
};

constexpr std::array entries{
    Entry{DesktopAction::PlayPause, u"play-pause", &AppDelegate::playPausePressed},
    Entry{DesktopAction::Next, u"next", &AppDelegate::nextPressed},
    Entry{DesktopAction::Previous, u"previous", &AppDelegate::prevPressed},
    Entry{DesktopAction::KeepAbove, u"keep-above", &AppDelegate::toggleKeepMainWindowAboveOtherWindows},
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

void perform(DesktopAction action, AppDelegate &delegate)
{
    (delegate.*entryOf(action).command)();
}

} // namespace tunedeck
