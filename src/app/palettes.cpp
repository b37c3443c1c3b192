// SPDX-License-Identifier: MIT
#include "app/palettes.h"

#include "platform/Appearance.h"

namespace tunedeck {

QPalette lightPalette()
{
    QPalette palette(QColor(0xe8, 0xe8, 0xe8), QColor(0xf2, 0xf2, 0xf2));
    palette.setColor(QPalette::Highlight, QColor(0x38, 0x75, 0xd7));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QPalette darkPalette()
{
    QPalette palette(QColor(53, 54, 58), QColor(42, 43, 46));
    palette.setColor(QPalette::Base, QColor(32, 33, 36));
    palette.setColor(QPalette::Link, QColor(120, 170, 255));
    palette.setColor(QPalette::Highlight, QColor(61, 126, 212));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(150, 150, 155));
    return palette;
}

void applyPalette(Appearance &appearance, bool isClassic)
{
    if (isClassic) {
        appearance.setPalette(lightPalette());
        return;
    }
    // The desktop's palette is known only while it is in use.
    appearance.setPalette(std::nullopt);
    const bool isWantedDark = isDark(appearance.effectiveAppearance());
    if (isWantedDark != appearance.isSystemPaletteDark()) {
        appearance.setPalette(isWantedDark ? darkPalette() : lightPalette());
    }
}

} // namespace tunedeck
