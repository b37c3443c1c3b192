// SPDX-License-Identifier: MIT
#include "skin/drawing/DevicePixels.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tunedeck {

DevicePixels::DevicePixels(const QPainter &painter)
    : m_toDevice(painter.deviceTransform())
    , m_scale(std::abs(m_toDevice.m11()))
    , m_deviceScale(painter.device()->devicePixelRatioF())
    , m_isWhole(m_scale == std::round(m_scale))
{
}

QRectF DevicePixels::snapped(const QRectF &rect) const
{
    if (m_isWhole) {
        return rect;
    }
    const QRectF pixels = m_toDevice.mapRect(rect);
    const double left = std::round(pixels.left());
    const double top = std::round(pixels.top());
    const double width = std::max(1.0, std::round(pixels.right()) - left);
    const double height = std::max(1.0, std::round(pixels.bottom()) - top);
    return m_toDevice.inverted().mapRect(QRectF(left, top, width, height));
}

double DevicePixels::lineWidth(double points) const
{
    return m_isWhole ? points : std::max(1.0, std::floor(points * m_scale)) / m_scale;
}

double DevicePixels::hairline() const
{
    return lineWidth(m_deviceScale > 1 ? 0.5 : 1);
}

} // namespace tunedeck
