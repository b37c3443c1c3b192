// SPDX-License-Identifier: MIT
#include "skin/drawing/PixelFont.h"

#include <QPaintDevice>

namespace tunedeck {

QStringList humanistSans()
{
    return {QStringLiteral("Lucida Grande"), QStringLiteral("Lucida Sans"), QStringLiteral("Noto Sans"),
        QStringLiteral("DejaVu Sans")};
}

QFont pixelFont(const QStringList &families, double pixels, const QPaintDevice &device)
{
    QFont font(families);
    font.setPointSizeF(pixels * 72 / device.logicalDpiY());
    // An attribute that is not set comes from the desktop's font, which may be bold.
    font.setWeight(QFont::Normal);
    font.setStyle(QFont::StyleNormal);
    return font;
}

} // namespace tunedeck
