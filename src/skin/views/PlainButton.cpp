// SPDX-License-Identifier: MIT
#include "skin/views/PlainButton.h"

#include "skin/drawing/ResourceImage.h"
#include "skin/looks/FocusRing.h"

#include <QPainter>

namespace tunedeck {

namespace {
constexpr double pressedOpacity = 0.6;
constexpr double disabledOpacity = 0.35;
} // namespace

PlainButton::PlainButton(const SkinEnvironment &environment, QWidget *parent)
    : SkinnedButton(parent)
{
    new FocusRing(*this, environment);
}

void PlainButton::setImage(const QString &name, QSize size)
{
    m_imageName = name;
    m_imageSize = size;
    m_image = {};
    update();
}

void PlainButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    if (!isEnabled()) {
        painter.setOpacity(disabledOpacity);
    } else if (isDown()) {
        painter.setOpacity(pressedOpacity);
    }
    if (m_imageName.isEmpty()) {
        painter.setPen(palette().color(QPalette::ButtonText));
        painter.drawText(rect(), Qt::AlignCenter, text());
        return;
    }
    const QPoint corner((width() - m_imageSize.width()) / 2, (height() - m_imageSize.height()) / 2);
    m_image.draw(painter, {corner, m_imageSize}, {}, [this](QPainter &image) { drawImage(image); });
}

void PlainButton::drawImage(QPainter &painter) const
{
    ResourceImage(m_imageName).draw(painter, QRectF({0, 0}, m_imageSize));
}

} // namespace tunedeck
