// SPDX-License-Identifier: MIT
#include "skin/cells/MetalPopupButtonCell.h"

#include "skin/drawing/Ink.h"
#include "skin/drawing/Shapes.h"
#include "skin/drawing/engraving.h"
#include "skin/drawing/metalBezel.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

namespace tunedeck {

namespace {
constexpr MetalBezel bezel{.highlightInset = {3, 2.25}, .rimInset = {3, 2}, .lift = 1};
constexpr double titleMargin = 6;

float alpha(const MetalPopupButtonState &state)
{
    return state.isEnabled && state.isMainWindow ? 1 : inactiveMetalAlpha;
}

QRectF arrowBox(const QRectF &frame)
{
    return inset(QRectF(frame.width() - 4, 10, 0, 0), -5, -5);
}

QPainterPath arrows(const QRectF &box)
{
    const QPointF middle = box.center();
    const double left = box.left() + 2;
    const double right = box.right() - 2;
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.addPolygon(QPolygonF({{middle.x(), box.bottom()}, {left, middle.y() + 1}, {right, middle.y() + 1}}));
    path.closeSubpath();
    path.addPolygon(QPolygonF({{middle.x(), box.top()}, {left, middle.y() - 1}, {right, middle.y() - 1}}));
    path.closeSubpath();
    return path;
}

void drawArrows(QPainter &painter, const QRectF &frame, const MetalPopupButtonState &state)
{
    const QPainterPath path = arrows(arrowBox(frame));
    const QColor ink = grey(0.25F, alpha(state));
    const double scale = painter.device()->devicePixelRatioF();
    if (scale > 1) {
        drawShadow(painter, path, castBy(ink, metalTitleShadow(state.isPressed, scale)));
    }
    painter.fillPath(path, ink);
}
} // namespace

void MetalPopupButtonCell::draw(QPainter &painter, const QRectF &frame, const MetalPopupButtonState &state) const
{
    drawBezel(painter, frame, state);
    QRectF title = metalFace(frame, bezel);
    title.setLeft(title.left() + titleMargin);
    title.setRight(arrowBox(frame).left());
    drawTitle(painter, title, state);
}

QRectF MetalPopupButtonCell::rim(const QRectF &frame)
{
    return metalRim(frame, bezel);
}

void MetalPopupButtonCell::drawBezel(QPainter &painter, const QRectF &frame, const MetalPopupButtonState &state) const
{
    drawMetalBezel(painter, frame, bezel, state.isPressed);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    drawArrows(painter, frame, state);
    painter.restore();
}

void MetalPopupButtonCell::drawTitle(QPainter &painter, const QRectF &frame, const MetalPopupButtonState &state) const
{
    drawEngravedText(painter, frame,
        {.text = state.title,
            .font = state.font,
            .color = metalTitleColor(state.isPressed, alpha(state)),
            .shadow = metalTitleShadow(state.isPressed, painter.device()->devicePixelRatioF()),
            .alignment = Qt::AlignLeft});
}

} // namespace tunedeck
