// SPDX-License-Identifier: MIT
#include "help/pageStyle.h"

#include <QColor>
#include <QPalette>

#include <algorithm>

namespace tunedeck {

namespace {
/// Dark desktops often do not set a link colour, and Qt's blue is legible on white only.
QColor linkColor(const QPalette &palette)
{
    constexpr float lightnessOnDark = 0.8F;
    constexpr float lightnessOnLight = 0.4F;
    const QColor link = palette.color(QPalette::Active, QPalette::Link);
    const bool isDark = palette.color(QPalette::Active, QPalette::Base).lightnessF()
        < palette.color(QPalette::Active, QPalette::Text).lightnessF();
    // A grey has no hue.
    return QColor::fromHslF(
        std::max(link.hslHueF(), 0.0F), link.hslSaturationF(), isDark ? lightnessOnDark : lightnessOnLight);
}

/// The colour of thin lines, weaker than the text.
QColor lineColor(const QPalette &palette)
{
    const QColor base = palette.color(QPalette::Active, QPalette::Base);
    const QColor text = palette.color(QPalette::Active, QPalette::Text);
    constexpr int partsOfBase = 4;
    const auto mixed = [](int of, int with) { return (partsOfBase * of + with) / (partsOfBase + 1); };
    return {mixed(base.red(), text.red()), mixed(base.green(), text.green()), mixed(base.blue(), text.blue())};
}
} // namespace

QString pageStyle(const QPalette &palette)
{
    return QStringLiteral("a:link { color: %1; }"
                          "h1 { font-size: x-large; margin-top: 0px; margin-bottom: 8px; }"
                          "h2 { font-size: large; margin-top: 18px; margin-bottom: 4px; }"
                          "p { line-height: 115%; margin-top: 6px; margin-bottom: 8px; }"
                          "li { line-height: 115%; margin-top: 2px; margin-bottom: 4px; }"
                          "table { margin-top: 6px; margin-bottom: 8px; }"
                          "th { text-align: left; }"
                          "td, th { padding: 4px 12px 4px 0px; border-bottom: 1px solid %2; }")
        .arg(linkColor(palette).name(), lineColor(palette).name());
}

} // namespace tunedeck
