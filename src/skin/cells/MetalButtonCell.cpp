// SPDX-License-Identifier: MIT
#include "skin/cells/MetalButtonCell.h"

#include "skin/drawing/ResourceImage.h"
#include "skin/drawing/Shapes.h"
#include "skin/drawing/engraving.h"
#include "skin/drawing/metalBezel.h"

#include <QPainter>

namespace tunedeck {

namespace {
constexpr MetalBezel bezel{.highlightInset = {4, 5.25}, .rimInset = {4, 4}, .lift = 2};
constexpr double titleMargin = 3;

float titleAlpha(const MetalButtonState &state)
{
    const bool isInactive = !state.isEnabled || !state.isMainWindow;
    return isInactive && !state.isPressed ? inactiveMetalAlpha : 1;
}

void drawImage(QPainter &painter, const QRectF &frame, const MetalButtonState &state)
{
    const ResourceImage image(state.image);
    QRectF rect({}, image.size());
    rect.moveCenter(frame.center());
    painter.save();
    painter.setOpacity(titleAlpha(state));
    image.draw(painter, rect);
    painter.restore();
}
} // namespace

void MetalButtonCell::draw(QPainter &painter, const QRectF &frame, const MetalButtonState &state) const
{
    drawBezel(painter, frame, state);
    const QRectF face = metalFace(frame, bezel);
    if (state.image.isEmpty()) {
        drawTitle(painter, inset(face, titleMargin, 0), state);
    } else {
        drawImage(painter, face, state);
    }
}

QRectF MetalButtonCell::rim(const QRectF &frame)
{
    return metalRim(frame, bezel);
}

void MetalButtonCell::drawBezel(QPainter &painter, const QRectF &frame, const MetalButtonState &state) const
{
    drawMetalBezel(painter, frame, bezel, state.isPressed);
}

void MetalButtonCell::drawTitle(QPainter &painter, const QRectF &frame, const MetalButtonState &state) const
{
    Shadow shadow = metalTitleShadow(state.isPressed, painter.device()->devicePixelRatioF());
    shadow.blurRadius = state.isPressed ? 1 : 0;
    drawEngravedText(painter, frame,
        {.text = state.title,
            .font = state.font,
            .color = metalTitleColor(state.isPressed, titleAlpha(state)),
            .shadow = shadow});
}

} // namespace tunedeck
