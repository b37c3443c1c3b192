// SPDX-License-Identifier: MIT
#include "skin/drawing/metalBezel.h"

#include "skin/drawing/DevicePixels.h"
#include "skin/drawing/Gradient.h"
#include "skin/drawing/Ink.h"
#include "skin/drawing/Shapes.h"

#include <QPainter>

namespace tunedeck {

namespace {
constexpr QColor rimSlate(72, 72, 90);

Gradient highlight(double scale)
{
    return {{black(0), 0.667}, {white(scale > 1 ? 0.25F : 0.333F), 1}};
}

Gradient face(bool isPressed)
{
    return isPressed ? Gradient{{grey(0.4627F), 0}, {grey(0.5882F), 1}}
                     : Gradient{{grey(0.94F), 0}, {grey(0.85F), 0.05}, {grey(0.58F), 1}};
}
} // namespace

void drawMetalBezel(QPainter &painter, const QRectF &frame, const MetalBezel &bezel, bool isPressed)
{
    const DevicePixels pixels(painter);
    const QRectF plainRim = metalRim(frame, bezel);
    const QRectF rim = pixels.snapped(plainRim);
    const double rimWidth = pixels.lineWidth(1);
    const QRectF plainLit = inset(frame, bezel.highlightInset.x(), bezel.highlightInset.y());
    QRectF lit = pixels.snapped(plainLit);
    lit.setBottom(rim.bottom() + pixels.lineWidth(plainLit.bottom() - plainRim.bottom()));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    highlight(painter.device()->devicePixelRatioF()).drawInPath(painter, roundedRectangle(lit, 3), downwards);
    painter.fillPath(roundedRectangle(rim, metalRimRadius), rimSlate);
    face(isPressed).drawInPath(painter, roundedRectangle(inset(rim, rimWidth, rimWidth), 2.5), downwards);
    painter.restore();
}

QRectF metalRim(const QRectF &frame, const MetalBezel &bezel)
{
    return inset(frame, bezel.rimInset.x(), bezel.rimInset.y()).translated(0, -bezel.lift);
}

QRectF metalFace(const QRectF &frame, const MetalBezel &bezel)
{
    return inset(metalRim(frame, bezel), 1, 1);
}

} // namespace tunedeck
