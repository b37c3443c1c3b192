// SPDX-License-Identifier: MIT
#include "skin/views/PlainButton.h"

#include "skin/drawing/ResourceImage.h"
#include "skin/looks/FocusRing.h"

#include <QPaintEvent>
#include <QPainter>

namespace tunedeck {

namespace {
constexpr double pressedOpacity = 0.6;
constexpr double disabledOpacity = 0.35;
} // namespace

PlainButton::PlainButton(const SkinEnvironment &environment, QWidget *parent)
    : SkinnedButton(parent)
{
    new FocusRing(*this, environment, [this](const QRectF &) { return QRectF(visibleRect()); });
}

void PlainButton::setImage(const QString &name, QSize size)
{
    m_imageName = name;
    m_imageSize = size;
    m_image = {};
    update();
}

void PlainButton::setTargetMargins(const QMargins &margins)
{
    m_targetMargins = margins;
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
    const QRect seen = visibleRect();
    if (m_imageName.isEmpty()) {
        painter.setPen(palette().color(QPalette::ButtonText));
        painter.drawText(seen, Qt::AlignCenter, text());
        return;
    }
    const QPoint corner =
        seen.topLeft() + QPoint((seen.width() - m_imageSize.width()) / 2, (seen.height() - m_imageSize.height()) / 2);
    m_image.draw(painter, {corner, m_imageSize}, {}, [this](QPainter &image) { drawImage(image); });
}

void PlainButton::drawImage(QPainter &painter) const
{
    ResourceImage(m_imageName).draw(painter, QRectF({0, 0}, m_imageSize));
}

} // namespace tunedeck
