// SPDX-License-Identifier: MIT
#include "skin/drawing/PixelFont.h"

#include "skin/drawing/skinLog.h"

#include <QFontInfo>
#include <QPaintDevice>

namespace tunedeck {

namespace {
void logSubstitute(const QFont &font)
{
    const QString substitute = QFontInfo(font).family();
    if (!font.families().contains(substitute, Qt::CaseInsensitive)) {
        qCDebug(skinLog).noquote() << "no font of" << font.families().join(QStringLiteral(", "))
                                   << "is installed, Qt uses" << substitute;
    }
}
} // namespace

QStringList humanistSans()
{
    return {QStringLiteral("Lucida Grande"), QStringLiteral("Lucida Sans"), QStringLiteral("Noto Sans"),
        QStringLiteral("DejaVu Sans")};
}

QStringList romanSerif()
{
    return {QStringLiteral("Times New Roman"), QStringLiteral("Liberation Serif"), QStringLiteral("serif")};
}

QFont pixelFont(const QStringList &families, double pixels, const QPaintDevice &device)
{
    QFont font(families);
    font.setPointSizeF(pixels * 72 / device.logicalDpiY());
    // An attribute that is not set comes from the desktop's font, which may be bold.
    font.setWeight(QFont::Normal);
    font.setStyle(QFont::StyleNormal);
    if (skinLog().isDebugEnabled()) {
        logSubstitute(font);
    }
    return font;
}

} // namespace tunedeck
