// SPDX-License-Identifier: MIT
#include "ContactSheet.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace tunedeck {

namespace {
constexpr int sheetWidth = 1'900;
constexpr int padding = 10;
constexpr int gap = 6;
// The metal behind the controls is light in the dark appearance, too.
constexpr QColor lightGround(200, 200, 200);
constexpr QColor darkGround(125, 125, 125);

QFont nameFont()
{
    QFont font(QStringLiteral("sans-serif"));
    font.setPixelSize(12);
    return font;
}
} // namespace

void ContactSheet::add(const QString &group, const QString &name, const QImage &picture, bool dark)
{
    Print print{group, name, picture, dark};
    print.picture.setDevicePixelRatio(1);
    m_prints.append(print);
}

QImage ContactSheet::image() const
{
    const QList<Place> places = this->places();
    const int height = places.isEmpty() ? gap : places.constLast().box.bottom() + 1 + gap;
    QImage sheet(sheetWidth, height, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    painter.setFont(nameFont());
    for (qsizetype i = 0; i < places.size(); ++i) {
        const Print &print = m_prints.at(i);
        const Place &place = places.at(i);
        painter.fillRect(place.box, print.dark ? darkGround : lightGround);
        painter.drawImage(place.picture, print.picture);
        painter.setPen(print.dark ? Qt::white : Qt::black);
        painter.drawText(place.box.adjusted(0, 0, 0, -padding / 2), Qt::AlignHCenter | Qt::AlignBottom, print.name);
    }
    return sheet;
}

/// Row by row; all boxes of a row are as high as the highest.
QList<ContactSheet::Place> ContactSheet::places() const
{
    const QFontMetrics metrics(nameFont());
    QList<Place> places;
    qsizetype rowStart = 0;
    QPoint corner(gap, gap);
    int rowHeight = 0;
    const auto endRow = [&] {
        if (rowStart == places.size()) {
            return;
        }
        for (qsizetype i = rowStart; i < places.size(); ++i) {
            places[i].box.setHeight(rowHeight);
        }
        rowStart = places.size();
        corner = QPoint(gap, corner.y() + rowHeight + gap);
        rowHeight = 0;
    };
    QString group;
    for (const Print &print : m_prints) {
        const bool beginsGroup = std::exchange(group, print.group) != print.group;
        const int width = std::max(print.picture.width(), metrics.horizontalAdvance(print.name)) + 2 * padding;
        if (beginsGroup || corner.x() + width > sheetWidth) {
            endRow();
        }
        rowHeight = std::max(rowHeight, print.picture.height() + metrics.height() + 2 * padding);
        places.append(
            {QRect(corner, QSize(width, rowHeight)), corner + QPoint((width - print.picture.width()) / 2, padding)});
        corner.rx() += width + gap;
    }
    endRow();
    return places;
}

} // namespace tunedeck
