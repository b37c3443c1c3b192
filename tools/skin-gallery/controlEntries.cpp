// SPDX-License-Identifier: MIT
#include "SkinGallery.h"

#include "skin/cells/ClassicAudioProgressSliderCell.h"
#include "skin/cells/PlayerButtonCell.h"
#include "skin/cells/VolumeSliderCell.h"
#include "skin/cells/WindowControlButtonCell.h"
#include "skin/drawing/flipY.h"

#include <QRectF>

namespace tunedeck {

namespace {
template <typename Cell>
SkinGalleryEntry transportEntry(
    const QString &className, const QString &variant, QSize size, const PlayerButtonState &state)
{
    return {className, variant, size, [state](QPainter &painter, const QRectF &bounds, bool dark) {
                PlayerButtonState inAppearance = state;
                inAppearance.isDark = dark;
                flipY(painter, bounds.height());
                Cell().draw(painter, bounds, inAppearance);
            }};
}

SkinGalleryEntry playerButtonEntry(const QString &variant, const PlayerButtonState &state)
{
    return transportEntry<PlayerButtonCell>(QStringLiteral("PlayerButton"), variant, QSize(35, 35), state);
}

SkinGalleryEntry tunedeckPlayerButtonEntry(const QString &variant, const PlayerButtonState &state)
{
    return transportEntry<TunedeckPlayerButtonCell>(
        QStringLiteral("TunedeckPlayerButton"), variant, QSize(25, 25), state);
}

SkinGalleryEntries playerButtonEntries()
{
    using enum PlayerButtonTypes;
    return {
        playerButtonEntry(QStringLiteral("pause"), {.controlGlyph = pause}),
        playerButtonEntry(QStringLiteral("play"), {.controlGlyph = play}),
        playerButtonEntry(QStringLiteral("stop"), {.controlGlyph = stop}),
        playerButtonEntry(QStringLiteral("play-pressed"), {.controlGlyph = play, .isPressed = true}),
        playerButtonEntry(
            QStringLiteral("play-pressed-graphite"), {.controlGlyph = play, .isPressed = true, .isGraphite = true}),
    };
}

SkinGalleryEntries tunedeckPlayerButtonEntries()
{
    using enum PlayerButtonTypes;
    return {
        tunedeckPlayerButtonEntry(QStringLiteral("backward"), {.controlGlyph = backward}),
        tunedeckPlayerButtonEntry(QStringLiteral("forward"), {.controlGlyph = forward}),
        tunedeckPlayerButtonEntry(QStringLiteral("forward-pressed"), {.controlGlyph = forward, .isPressed = true}),
        tunedeckPlayerButtonEntry(QStringLiteral("forward-pressed-graphite"),
            {.controlGlyph = forward, .isPressed = true, .isGraphite = true}),
        tunedeckPlayerButtonEntry(QStringLiteral("forward-disabled"), {.controlGlyph = forward, .isEnabled = false}),
    };
}

SkinGalleryEntry windowControlButtonEntry(const QString &variant, const WindowControlButtonState &state)
{
    return {QStringLiteral("WindowControlButton"), variant, QSize(14, 14),
        [state](QPainter &painter, const QRectF &bounds, bool dark) {
            WindowControlButtonState inAppearance = state;
            inAppearance.isDark = dark;
            flipY(painter, bounds.height());
            WindowControlButtonCell().draw(painter, bounds, inAppearance);
        }};
}

SkinGalleryEntries windowControlButtonEntries(const QString &name, WindowControlButtonStyle style)
{
    return {
        windowControlButtonEntry(name, {.controlStyle = style}),
        windowControlButtonEntry(name + QStringLiteral("-hover"), {.controlStyle = style, .isHovered = true}),
        windowControlButtonEntry(
            name + QStringLiteral("-hover-pressed"), {.controlStyle = style, .isPressed = true, .isHovered = true}),
        windowControlButtonEntry(
            name + QStringLiteral("-hover-graphite"), {.controlStyle = style, .isHovered = true, .isGraphite = true}),
    };
}

SkinGalleryEntry volumeSliderEntry()
{
    return {QStringLiteral("VolumeSliderCell"), QStringLiteral("bar"), QSize(100, 20),
        [](QPainter &painter, const QRectF &bounds, bool dark) {
            flipY(painter, bounds.height());
            VolumeSliderCell().drawBarInside(painter, QRectF(0, 8, 100, 4), dark);
        }};
}

/// `value` is from 0 to 100.
SkinGalleryEntry progressSliderEntry(const QString &variant, double value, bool enabled)
{
    return {QStringLiteral("ClassicAudioProgressSliderCell"), variant, QSize(200, 20),
        [value, enabled](QPainter &painter, const QRectF &bounds, bool) {
            const QRectF knob(value / 100 * 183, 1.5, 17, 17);
            flipY(painter, bounds.height());
            ClassicAudioProgressSliderCell::drawBarInside(painter, QRectF(0, 8, 200, 4), knob, enabled);
            ClassicAudioProgressSliderCell::drawKnob(painter, knob, enabled);
        }};
}
} // namespace

SkinGalleryEntries controlEntries()
{
    using enum WindowControlButtonStyle;
    return playerButtonEntries() + tunedeckPlayerButtonEntries()
        + windowControlButtonEntries(QStringLiteral("close"), close)
        + windowControlButtonEntries(QStringLiteral("minimize"), minimize)
        + windowControlButtonEntries(QStringLiteral("maximize"), maximize)
        + SkinGalleryEntries{
            volumeSliderEntry(),
            progressSliderEntry(QStringLiteral("0"), 0, true),
            progressSliderEntry(QStringLiteral("50"), 50, true),
            progressSliderEntry(QStringLiteral("100"), 100, true),
            progressSliderEntry(QStringLiteral("disabled"), 50, false),
        };
}

} // namespace tunedeck
