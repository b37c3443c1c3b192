// SPDX-License-Identifier: MIT
#include "dock/dockTileIcon.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace tunedeck {

// An icon made from the file itself would load the toolkit's plugins for every kind of image there is.
QIcon dockTileIcon(const QString &imageName)
{
    QSvgRenderer image;
    QIcon icon;
    if (!image.load(QStringLiteral(":/images/%1.svg").arg(imageName))) {
        return icon;
    }
    for (const int size : {16, 22, 24, 32, 48, 64, 128}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        image.render(&painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace tunedeck
