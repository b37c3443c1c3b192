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
    /// In points, as the screen sees it and with y upwards, whatever the painter is turned to: (0, -1.5) is 1.5 points
    /// down.
    QPointF offset;
    /// In points: twice the standard deviation of the Gaussian that the shape's alpha is blurred with. 0 is a hard
    /// copy.
    double blurRadius = 0;
    QColor color = Qt::black;
};

/// Paints what lands inside `path` of the shadow that the world around a hole of its shape casts: the path looks
/// recessed.
void fillWithInnerShadow(QPainter &painter, const QPainterPath &path, const Shadow &shadow);

/// Paints dark lines of one point every two points, `width` long and from y = 0 on, as far as `path` is high and only
/// inside it.
void fillWithScanLines(QPainter &painter, const QPainterPath &path, double width, bool dark);

/// Paints the shadow that `path` casts, without the path itself.
void drawShadow(QPainter &painter, const QPainterPath &path, const Shadow &shadow);

} // namespace tunedeck
