// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Appearance.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "skin/looks/SkinEnvironment.h"

#include <QDBusConnection>
#include <QTemporaryDir>

namespace tunedeck {

/// A user's desk as the skin sees it: light and with the accent colour that the desktop comes with, until told
/// otherwise.
class SkinDesk {
public:
    SkinDesk() { setDark(false); }

    void setDark(bool dark)
    {
        appearance.setApplicationAppearance(dark ? AppearanceName::DarkAqua : AppearanceName::Aqua);
    }
    void setAccentColor(int accent) { defaults.setSystemValue(SettingsKey::appleAccentColor, accent); }

    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("settings"))};
    Appearance appearance{defaults, QDBusConnection(QStringLiteral("none"))};
    WindowActivation windowActivation;
    SkinEnvironment environment{defaults, appearance, windowActivation};
};

} // namespace tunedeck
