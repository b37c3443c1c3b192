// SPDX-License-Identifier: MIT
#include "skin/cells/VolumeSliderCell.h"

#include "platform/FatalError.h"
#include "skin/drawing/DevicePixels.h"
#include "skin/drawing/Ink.h"
#include "skin/drawing/Shapes.h"
#include "skin/drawing/bezelGradient.h"

#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>

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
    bezel.drawInPath(painter, capsule(bounds), -90);
    painter.fillPath(capsule(inset(bounds, 2 * line, line)), black(0.05F));
    const QPainterPath groove = capsule(inset(bounds, line, line));
    painter.fillPath(groove, black(0.15F));
    fillWithInnerShadow(painter, groove, m_innerShadow);
    painter.restore();
}

void VolumeSliderCell::drawKnob(QPainter &painter, const QRectF &knob) const
{
    QSvgRenderer picture(QStringLiteral(":/images/knob.svg"));
    if (!picture.isValid()) {
        fatalError("the picture \"knob\" is missing");
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    drawShadow(painter, oval(knob), m_knobShadow);
    // Pictures count downwards.
    painter.translate(0, 2 * knob.center().y());
    painter.scale(1, -1);
    picture.render(&painter, knob);
    painter.restore();
}

} // namespace tunedeck
