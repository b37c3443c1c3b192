// SPDX-License-Identifier: MIT
#include "skin/cells/MetalGlyphButtonCell.h"

#include "skin/drawing/FaceCache.h"
#include "skin/drawing/Ink.h"
#include "skin/drawing/ResourceImage.h"
#include "skin/drawing/Shapes.h"

#include <QPainter>

namespace tunedeck {

namespace {
/// The lip is hard-edged and, unlike a title's, the same at every scale. In points.
constexpr double lipDrop = 0.5;

void drawLip(QPainter &painter, const QRectF &frame, const ResourceImage &image, const QRectF &rect)
{
    QPixmap lip = emptyFace(frame.size().toSize(), painter.device()->devicePixelRatioF());
    QPainter lipPainter(&lip);
    lipPainter.setRenderHint(QPainter::Antialiasing);
    lipPainter.translate(-frame.topLeft());
    image.draw(lipPainter, rect.translated(0, lipDrop));
    lipPainter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    lipPainter.fillRect(frame, white(0.333F));
    lipPainter.end();
    painter.drawPixmap(frame.topLeft(), lip);
}
} // namespace

void MetalGlyphButtonCell::draw(QPainter &painter, const QRectF &frame, const MetalButtonState &state) const
{
    MetalButtonCell().drawBezel(painter, frame, state);
    if (state.image.isEmpty()) {
        return;
    }
    const ResourceImage image(state.image);
    const double verticalInset = painter.device()->devicePixelRatioF() > 1 ? 7.5 : 7;
    const QRectF rect = inset(frame, 12, verticalInset).translated(0, -2);
    if (!state.isPressed) {
        drawLip(painter, frame, image, rect);
    }
    image.draw(painter, rect);
}

} // namespace tunedeck
