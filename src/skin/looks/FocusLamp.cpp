// SPDX-License-Identifier: MIT
#include "skin/looks/FocusLamp.h"

#include "skin/drawing/Ink.h"
#include "skin/drawing/Shapes.h"
#include "skin/looks/skinLooks.h"

#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <utility>

namespace tunedeck {

namespace {
/// In points.
constexpr QSizeF slotSize(11, 3);
constexpr double distance = 1;
constexpr double glowReach = 3;
constexpr double wall = 0.5;

QRectF slotBelow(const QRectF &control)
{
    return {{control.center().x() - slotSize.width() / 2, control.bottom() + distance}, slotSize};
}
} // namespace

FocusLamp::FocusLamp(QWidget &control, const SkinEnvironment &environment, DrawnBounds bounds)
    : FocusMark(control, environment, std::move(bounds))
{
}

QRectF FocusLamp::area(const QRectF &control) const
{
    // The control keeps its own pixels.
    return slotBelow(control).adjusted(-glowReach, -distance, glowReach, glowReach);
}

void FocusLamp::paint(QPainter &painter, const QRectF &control) const
{
    const QColor accent = accentColor(isGraphite(environment()));
    const QRectF slot = slotBelow(control);
    for (double reach = glowReach; reach > 0; --reach) {
        painter.fillPath(capsule(inset(slot, -reach, -reach)), withAlpha(accent, 0.09F));
    }
    // The metal catches the light below the slot, as below an engraving.
    painter.fillPath(capsule(slot.translated(0, 1)), white(0.6F));
    painter.fillPath(capsule(slot), accent.darker(220));
    QRadialGradient light(slot.center(), slot.width() / 2);
    light.setColorAt(0, accent.lighter(190));
    light.setColorAt(1, accent);
    painter.fillPath(capsule(inset(slot, wall, wall)), light);
}

} // namespace tunedeck
