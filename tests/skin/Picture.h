// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QDebug>
#include <QImage>
#include <QPainter>
#include <QSize>
#include <QWidget>

#include <cmath>
#include <cstdlib>
#include <functional>

namespace tunedeck {

/// A drawing on a transparent ground. Positions are in points, with y upwards.
class Picture {
public:
    Picture(QSize points, double scale, const std::function<void(QPainter &)> &draw)
        : m_image((QSizeF(points) * scale).toSize(), QImage::Format_ARGB32_Premultiplied)
        , m_scale(scale)
    {
        m_image.setDevicePixelRatio(scale);
        m_image.fill(Qt::transparent);
        QPainter painter(&m_image);
        painter.translate(0, points.height());
        painter.scale(1, -1);
        draw(painter);
    }

    /// The picture of a view at scale 1.
    explicit Picture(QWidget &view)
        : m_image(view.size(), QImage::Format_ARGB32_Premultiplied)
    {
        m_image.fill(Qt::transparent);
        view.render(&m_image, {}, {}, QWidget::DrawChildren);
    }

    /// The device pixel at the point (`x`, `y`).
    [[nodiscard]] QColor at(double x, double y) const
    {
        const int column = static_cast<int>(std::floor(x * m_scale));
        const int row = m_image.height() - 1 - static_cast<int>(std::floor(y * m_scale));
        return m_image.pixelColor(column, row);
    }

    bool operator==(const Picture &) const = default;

private:
    QImage m_image;
    double m_scale = 1;
};

/// Whether no component, of 0 to 255, is further off than `tolerance`; says so if not.
inline bool isNear(const QColor &color, const QColor &expected, int tolerance = 1)
{
    const bool isNear = std::abs(color.red() - expected.red()) <= tolerance
        && std::abs(color.green() - expected.green()) <= tolerance
        && std::abs(color.blue() - expected.blue()) <= tolerance
        && std::abs(color.alpha() - expected.alpha()) <= tolerance;
    if (!isNear) {
        qInfo() << color << "is not near" << expected;
    }
    return isNear;
}

/// A grey from 0 to 255.
inline QColor grey(int level, int alpha = 255)
{
    return {level, level, level, alpha};
}

} // namespace tunedeck
