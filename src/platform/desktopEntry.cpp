// SPDX-License-Identifier: MIT
#include "platform/desktopEntry.h"

#include "platform/gio.h"

#include <QLatin1String>
#include <QStringList>

#include <algorithm>
#include <array>

namespace tunedeck {

namespace {
constexpr std::array audioCategories{
    QLatin1String("Audio"), QLatin1String("AudioVideo"), QLatin1String("Player"), QLatin1String("WebBrowser")};

bool isOfAudioCategory(const DesktopEntry &entry)
{
    const QStringList categories = QString::fromUtf8(gio()->categories(entry.get())).split(u';');
    return std::ranges::any_of(
        audioCategories, [&categories](QLatin1String category) { return categories.contains(category); });
}

bool opensAudioFiles(const DesktopEntry &entry)
{
    const char **types = gio()->supportedTypes(asAppInfo(entry.get()));
    for (; types && *types; ++types) {
        if (QLatin1String(*types).startsWith(QLatin1String("audio/"))) {
            return true;
        }
    }
    return false;
}
} // namespace

void UnrefDesktopEntry::operator()(GDesktopAppInfo *entry) const
{
    gio()->unref(entry);
}

GAppInfo *asAppInfo(GDesktopAppInfo *entry)
{
    return reinterpret_cast<GAppInfo *>(entry);
}

DesktopEntry findDesktopEntry(const QString &identifier)
{
    // The identifier comes from a player, and GIO reads one with a slash as the path of any file.
    if (identifier.isEmpty() || identifier.contains(u'/') || !gio()) {
        return nullptr;
    }
    const QByteArray fileName = (withoutDesktopSuffix(identifier) + QStringLiteral(".desktop")).toUtf8();
    return DesktopEntry(gio()->readEntry(fileName.constData()));
}

bool isShownAudioApplication(const DesktopEntry &entry)
{
    const bool isShown = !gio()->isNotShown(entry.get()) && !gio()->isHidden(entry.get());
    return isShown && (isOfAudioCategory(entry) || opensAudioFiles(entry));
}

QString withoutDesktopSuffix(const QString &identifier)
{
    const QString suffix = QStringLiteral(".desktop");
    return identifier.endsWith(suffix) ? identifier.chopped(suffix.size()) : identifier;
}

} // namespace tunedeck
