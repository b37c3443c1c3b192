// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPointF>

class QPainter;
class QPainterPath;
class QRectF;

namespace tunedeck {

/// A soft shadow.
struct Shadow {
    /// In points on the screen and with y upwards, however the painter is transformed: (0, -1.5) is 1.5 points down.
    QPointF offset;
    /// In points: twice the standard deviation of the Gaussian that the shape's alpha is blurred with. 0 is a hard
    /// copy.
    double blurRadius = 0;
    QColor color = Qt::black;
};

/// Paints a shadow inside `path`, as if the path were a hole and its surroundings cast the shadow. The path looks
/// recessed.
void fillWithInnerShadow(QPainter &painter, const QPainterPath &path, const Shadow &shadow);

/// Paints dark lines of one point every two points, `width` long and from y = 0 on, as far as `path` is high and only
/// inside it.
void fillWithScanLines(QPainter &painter, const QPainterPath &path, double width, bool dark);

/// Paints the shadow that `path` casts, without the path itself.
void drawShadow(QPainter &painter, const QPainterPath &path, const Shadow &shadow);

} // namespace tunedeck
