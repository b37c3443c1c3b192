// SPDX-License-Identifier: MIT
#include "skin/views/EngravedLabel.h"

#include "skin/drawing/engraving.h"

#include <QPaintEvent>
#include <QPainter>

namespace tunedeck {

EngravedLabel::EngravedLabel(const QColor &ink, const tunedeck::Shadow &shadow, QWidget *parent)
    : QLabel(parent)
    , m_ink(ink)
    , m_shadow(shadow)
{
    setTextFormat(Qt::PlainText);
}

void EngravedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawEngravedText(painter, rect(),
        {.text = text(), .font = font(), .color = m_ink, .shadow = m_shadow, .alignment = alignment()});
}

} // namespace tunedeck
