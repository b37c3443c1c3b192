// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Appearance.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "platform/bus/PortalSettings.h"
#include "skin/looks/SkinEnvironment.h"

#include <QDBusConnection>
#include <QTemporaryDir>

namespace tunedeck {

/// The desktop as the skin sees it. It is light and has the default accent colour until a test changes that.
class SkinDesk {
public:
    SkinDesk() { setDark(false); }

    void setDark(bool dark)
    {
        appearance.setApplicationAppearance(dark ? AppearanceName::DarkAqua : AppearanceName::Aqua);
    }
    /// Announces the change as the portal does.
    void setHighContrast(bool isHigh)
    {
        Q_EMIT appearance.findChild<PortalSettings *>()->read(
            {QStringLiteral("org.freedesktop.appearance"), QStringLiteral("contrast")}, isHigh ? 1U : 0U);
    }
    void setAccentColor(int accent) { defaults.setSystemValue(SettingsKey::appleAccentColor, accent); }

    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("settings"))};
    Appearance appearance{defaults, QDBusConnection(QStringLiteral("none"))};
    WindowActivation windowActivation;
    SkinEnvironment environment{defaults, appearance, windowActivation};
};

} // namespace tunedeck
