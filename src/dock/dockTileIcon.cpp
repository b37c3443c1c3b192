// SPDX-License-Identifier: MIT
#include "dock/dockTileIcon.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace tunedeck {

// A QIcon made from the file would load all of Qt's image plugins.
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
