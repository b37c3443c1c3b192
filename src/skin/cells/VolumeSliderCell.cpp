// SPDX-License-Identifier: MIT
#include "skin/cells/VolumeSliderCell.h"

#include "skin/drawing/DevicePixels.h"
#include "skin/drawing/Ink.h"
#include "skin/drawing/ResourceImage.h"
#include "skin/drawing/Shapes.h"
#include "skin/drawing/bezelGradient.h"
#include "skin/drawing/flipY.h"

#include <QPainter>
#include <QPainterPath>

namespace tunedeck {

namespace {
constexpr float bezelAlpha = 0.3F;
} // namespace

void VolumeSliderCell::drawBarInside(QPainter &painter, const QRectF &bar, bool dark) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const Gradient bezel = bezelGradient(bezelAlpha, dark, painter.device()->devicePixelRatioF());
    const DevicePixels pixels(painter);
    const QRectF bounds = pixels.snapped(inset(bar, 2, -2));
    const double line = pixels.lineWidth(1);
    bezel.drawInPath(painter, capsule(bounds), flippedDownwards);
    painter.fillPath(capsule(inset(bounds, 2 * line, line)), black(0.05F));
    const QPainterPath groove = capsule(inset(bounds, line, line));
    painter.fillPath(groove, black(0.15F));
    fillWithInnerShadow(painter, groove, m_innerShadow);
    painter.restore();
}

void VolumeSliderCell::drawKnob(QPainter &painter, const QRectF &knob) const
{
    const ResourceImage picture(QStringLiteral("knob"));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    drawShadow(painter, oval(knob), m_knobShadow);
    // The y of a picture counts downwards.
    flipY(painter, 2 * knob.center().y());
    picture.draw(painter, knob);
    painter.restore();
}

} // namespace tunedeck
