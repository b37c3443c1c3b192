// SPDX-License-Identifier: MIT
#include "skin/drawing/PixelFont.h"

#include "skin/drawing/skinLog.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QPaintDevice>

#include <algorithm>

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

/// `installed` has a family of several foundries once for each, as "Family [foundry]". A family that only a user's
/// settings call so counts as missing.
bool isInstalled(const QString &family, const QStringList &installed)
{
    const QString ofFoundry = family + QStringLiteral(" [");
    return std::ranges::any_of(installed, [&family, &ofFoundry](const QString &name) {
        return name.compare(family, Qt::CaseInsensitive) == 0 || name.startsWith(ofFoundry, Qt::CaseInsensitive);
    });
}

/// Saves time: for a missing first family Qt asks fontconfig for substitutes, even if the next family is installed.
QStringList installedFirst(QStringList families)
{
    const QStringList installed = QFontDatabase::families();
    std::stable_partition(families.begin(), families.end(),
        [&installed](const QString &family) { return isInstalled(family, installed); });
    return families;
}
} // namespace

QStringList humanistSans()
{
    return {QStringLiteral("Lucida Grande"), QStringLiteral("Lucida Sans"), QStringLiteral("Noto Sans"),
        QStringLiteral("DejaVu Sans")};
}

QStringList romanSerif()
{
    return {QStringLiteral("Times New Roman"), QStringLiteral("Liberation Serif"), QStringLiteral("Nimbus Roman")};
}

QFont pixelFont(const QStringList &families, double pixels, const QPaintDevice &device)
{
    QFont font(installedFirst(families));
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
