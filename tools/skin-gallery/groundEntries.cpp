// SPDX-License-Identifier: MIT
#include "SkinGallery.h"

#include "skin/cells/LCDBackgroundCell.h"
#include "skin/cells/PinstripeCell.h"
#include "skin/cells/WindowBackgroundCell.h"
#include "skin/drawing/flipY.h"

#include <QRectF>

namespace tunedeck {

namespace {
SkinGalleryEntry windowBackgroundEntry(const QString &variant, bool isMainWindow)
{
    return {QStringLiteral("WindowBackground"), variant, QSize(450, 64),
        [isMainWindow](QPainter &painter, const QRectF &bounds, bool) {
            flipY(painter, bounds.height());
            WindowBackgroundCell().draw(painter, bounds, {.isMainWindow = isMainWindow});
        }};
}

SkinGalleryEntry pinstripeEntry(const QString &variant, bool isKeyWindow)
{
    return {QStringLiteral("PinstripeView"), variant, QSize(64, 32),
        [isKeyWindow](QPainter &painter, const QRectF &bounds, bool dark) {
            PinstripeCell().draw(painter, bounds, bounds.height(), {.isKeyWindow = isKeyWindow, .isDark = dark});
        }};
}

SkinGalleryEntry lcdBackgroundEntry()
{
    return {QStringLiteral("LCDBackgroundView"), QStringLiteral("lcd"), QSize(220, 52),
        [](QPainter &painter, const QRectF &bounds, bool dark) {
            flipY(painter, bounds.height());
            LCDBackgroundCell().draw(painter, bounds, {.isDark = dark});
        }};
}
} // namespace

SkinGalleryEntries groundEntries()
{
    return {
        windowBackgroundEntry(QStringLiteral("main"), true),
        windowBackgroundEntry(QStringLiteral("inactive"), false),
        pinstripeEntry(QStringLiteral("key"), true),
        pinstripeEntry(QStringLiteral("inactive"), false),
        lcdBackgroundEntry(),
    };
}

} // namespace tunedeck
