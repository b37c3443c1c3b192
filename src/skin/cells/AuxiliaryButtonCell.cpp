// SPDX-License-Identifier: MIT
#include "skin/cells/AuxiliaryButtonCell.h"

#include "skin/drawing/Gradient.h"
#include "skin/drawing/Shapes.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

namespace tunedeck {

namespace {
constexpr QColor lightOlive(127, 129, 119);
constexpr QColor darkOlive(102, 103, 91);
constexpr QColor ivory(233, 234, 209);

Gradient olive(const AuxiliaryButtonState &state)
{
    return state.isPressed ? Gradient{{darkOlive, 0}, {darkOlive, 1}}
                           : Gradient{{lightOlive, 0}, {lightOlive, 0.5}, {darkOlive, 0.5}, {darkOlive, 1}};
}
} // namespace

void AuxiliaryButtonCell::draw(QPainter &painter, const QRectF &frame, const AuxiliaryButtonState &state) const
{
    QPainterPath triangle;
    triangle.addPolygon(QPolygonF({{4, 3}, {8.5, frame.height() / 2}, {4, 8}}));
    triangle.closeSubpath();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    olive(state).drawInPath(painter, oval(frame), downwards);
    painter.fillPath(triangle, ivory);
    painter.restore();
}

} // namespace tunedeck
