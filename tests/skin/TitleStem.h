// SPDX-License-Identifier: MIT
#pragma once

#include "Picture.h"
#include "skin/drawing/flipY.h"

#include <QFont>
#include <QRectF>

#include <algorithm>
#include <functional>
#include <vector>

namespace tunedeck {

/// A letter that is one thick stem.
inline QString stemTitle()
{
    return QStringLiteral("I");
}

inline QFont stemFont()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(30);
    font.setBold(true);
    return font;
}

/// The pixels halfway across the stem that `drawTitle` draws on a transparent ground, from top to bottom.
inline std::vector<QColor> stemColumn(
    double scale, const std::function<void(QPainter &painter, const QRectF &frame)> &drawTitle)
{
    constexpr QSize size(60, 44);
    const Picture picture(size, scale, [&](QPainter &painter) {
        flipY(painter, size.height());
        drawTitle(painter, QRectF({}, size));
    });
    std::vector<QColor> column;
    for (int row = 0; row < size.height() * scale; ++row) {
        const QColor color = picture.at(30, size.height() - (row + 0.5) / scale);
        if (color.alpha() > 0) {
            column.push_back(color);
        }
    }
    return column;
}

/// Whether most of a column is `color`.
inline bool isMostly(const std::vector<QColor> &column, const QColor &color)
{
    const auto near = std::count_if(column.begin(), column.end(), [&color](const QColor &pixel) {
        return std::abs(pixel.lightness() - color.lightness()) <= 2 && std::abs(pixel.alpha() - color.alpha()) <= 2;
    });
    const bool isMostly = near > static_cast<qsizetype>(column.size()) / 2;
    if (!isMostly) {
        qInfo() << "Not mostly" << color << "but" << column.at(column.size() / 2);
    }
    return isMostly;
}

/// The pixel that is `rows` above the lowest.
inline QColor fromBelow(const std::vector<QColor> &column, std::size_t rows)
{
    return column.at(column.size() - 1 - rows);
}

} // namespace tunedeck
