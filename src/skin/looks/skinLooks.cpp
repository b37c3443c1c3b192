// SPDX-License-Identifier: MIT
#include "skin/looks/skinLooks.h"

#include "platform/Appearance.h"
#include "platform/UserDefaults.h"

#include <QWidget>

namespace tunedeck {

bool isDark(const SkinEnvironment &environment)
{
    return isDark(environment.appearance.effectiveAppearance());
}

bool isGraphite(const SkinEnvironment &environment)
{
    return environment.defaults.integerForKey(SettingsKey::appleAccentColor) == graphiteAccent;
}

bool isHighContrast(const SkinEnvironment &environment)
{
    return environment.appearance.isHighContrast();
}

void repaintOnNewLooks(QWidget &view, const SkinEnvironment &environment)
{
    QObject::connect(
        &environment.appearance, &Appearance::effectiveAppearanceChanged, &view, [&view] { view.update(); });
    QObject::connect(&environment.appearance, &Appearance::highContrastChanged, &view, [&view] { view.update(); });
    QObject::connect(&environment.defaults, &UserDefaults::valueChanged, &view, [&view](const QString &key) {
        if (key == SettingsKey::appleAccentColor) {
            view.update();
        }
    });
}

} // namespace tunedeck
