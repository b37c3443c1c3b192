// SPDX-License-Identifier: MIT
#include "FaceCache.h"

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
    QPixmap pixels = face;
    pixels.setDevicePixelRatio(1);
    painter.save();
    painter.setWorldTransform(toDevice.inverted() * painter.worldTransform());
    painter.drawPixmap(toDevice.map(position).toPoint(), pixels);
    painter.restore();
}

} // namespace tunedeck
