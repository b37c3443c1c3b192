// SPDX-License-Identifier: MIT
#include "platform/desktopEntry.h"

namespace tunedeck {

DesktopEntry findDesktopEntry(const QString &identifier)
{
    // The identifier comes from a player, and GIO reads one with a slash as the path of any file.
    if (identifier.isEmpty() || identifier.contains(u'/')) {
        return nullptr;
    }
    const QByteArray fileName = (withoutDesktopSuffix(identifier) + QStringLiteral(".desktop")).toUtf8();
    return DesktopEntry(g_desktop_app_info_new(fileName.constData()));
}

QString withoutDesktopSuffix(const QString &identifier)
{
    const QString suffix = QStringLiteral(".desktop");
    return identifier.endsWith(suffix) ? identifier.chopped(suffix.size()) : identifier;
}

} // namespace tunedeck
