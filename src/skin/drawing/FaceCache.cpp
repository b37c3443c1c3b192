// SPDX-License-Identifier: MIT
#include "skin/drawing/FaceCache.h"

#include <QTransform>

#include <cmath>

namespace tunedeck {

QPixmap emptyFace(QSize size, double scale)
{
    QPixmap face(static_cast<int>(std::ceil(size.width() * scale)), static_cast<int>(std::ceil(size.height() * scale)));
    face.setDevicePixelRatio(scale);
    face.fill(Qt::transparent);
    return face;
}

void blit(QPainter &painter, QPointF position, const QPixmap &face)
{
    const QTransform toDevice = painter.deviceTransform();
    painter.save();
    painter.setWorldTransform(toDevice.inverted() * painter.worldTransform());
    // The rectangle in pixels overrides the face's own scale. Setting another scale would copy the whole face.
    painter.drawPixmap(QRect(toDevice.map(position).toPoint(), face.size()), face);
    painter.restore();
}

} // namespace tunedeck
