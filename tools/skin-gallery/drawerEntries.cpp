// SPDX-License-Identifier: MIT
#include "SkinGallery.h"

#include "skin/cells/AuxiliaryButtonCell.h"
#include "skin/cells/DrawerBackgroundCell.h"
#include "skin/cells/MetalButtonCell.h"
#include "skin/cells/MetalGlyphButtonCell.h"
#include "skin/cells/MetalPopupButtonCell.h"
#include "skin/cells/ShadowViewCell.h"
#include "skin/drawing/flipY.h"

#include <QRectF>

namespace tunedeck {

namespace {
SkinGalleryEntry drawerBackgroundEntry(const QString &variant, bool isMainWindow)
{
    return {QStringLiteral("DrawerBackground"), variant, QSize(450, 64),
        [isMainWindow](QPainter &painter, const QRectF &bounds, bool) {
            flipY(painter, bounds.height());
            DrawerBackgroundCell().draw(painter, bounds, {.isMainWindow = isMainWindow});
        }};
}

SkinGalleryEntry shadowViewEntry()
{
    return {QStringLiteral("ShadowView"), QStringLiteral("shadow"), QSize(450, 40),
        [](QPainter &painter, const QRectF &bounds, bool) {
            flipY(painter, bounds.height());
            ShadowViewCell().draw(painter, bounds);
        }};
}

/// The entry of a cell whose y counts downwards.
template <typename Cell, typename State>
SkinGalleryEntry metalEntry(const QString &className, const QString &variant, QSize size, const State &state)
{
    return {className, variant, size,
        [state](QPainter &painter, const QRectF &bounds, bool) { Cell().draw(painter, bounds, state); }};
}

SkinGalleryEntry metalButtonEntry(const QString &variant, bool isPressed)
{
    return metalEntry<MetalButtonCell>(QStringLiteral("MetalButton"), variant, QSize(44, 30),
        MetalButtonState{.isPressed = isPressed, .isMainWindow = true});
}

SkinGalleryEntry metalGlyphButtonEntry(const QString &variant, bool isPressed)
{
    return metalEntry<MetalGlyphButtonCell>(QStringLiteral("MetalGlyphButton"), variant, QSize(44, 30),
        MetalButtonState{.isPressed = isPressed, .isMainWindow = true});
}

SkinGalleryEntry metalPopupButtonEntry(const QString &variant, bool isPressed, bool isMainWindow)
{
    return metalEntry<MetalPopupButtonCell>(QStringLiteral("MetalPopupButton"), variant, QSize(180, 22),
        MetalPopupButtonState{.isPressed = isPressed, .isMainWindow = isMainWindow});
}

SkinGalleryEntry auxiliaryButtonEntry(const QString &variant, bool isPressed)
{
    return metalEntry<AuxiliaryButtonCell>(
        QStringLiteral("AuxiliaryButton"), variant, QSize(12, 11), AuxiliaryButtonState{.isPressed = isPressed});
}
} // namespace

SkinGalleryEntries drawerEntries()
{
    return {
        drawerBackgroundEntry(QStringLiteral("main"), true),
        drawerBackgroundEntry(QStringLiteral("inactive"), false),
        shadowViewEntry(),
        metalButtonEntry(QStringLiteral("bezel"), false),
        metalButtonEntry(QStringLiteral("bezel-pressed"), true),
        metalGlyphButtonEntry(QStringLiteral("bezel"), false),
        metalGlyphButtonEntry(QStringLiteral("bezel-pressed"), true),
        metalPopupButtonEntry(QStringLiteral("bezel"), false, true),
        metalPopupButtonEntry(QStringLiteral("bezel-pressed"), true, true),
        metalPopupButtonEntry(QStringLiteral("bezel-inactive"), false, false),
        auxiliaryButtonEntry(QStringLiteral("normal"), false),
        auxiliaryButtonEntry(QStringLiteral("pressed"), true),
    };
}

} // namespace tunedeck
