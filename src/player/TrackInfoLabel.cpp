// SPDX-License-Identifier: MIT
#include "TrackInfoLabel.h"

#include <QPainter>

namespace tunedeck {

TrackInfoLabel::TrackInfoLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

const QStringList &TrackInfoLabel::displayStrings() const
{
    return m_displayStrings;
}

void TrackInfoLabel::setDisplayStrings(const QStringList &strings)
{
    m_displayStrings = strings;
    setText(strings.join(QStringLiteral(" \u2013 ")));
}

void TrackInfoLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const QString line = fontMetrics().elidedText(text(), Qt::ElideRight, width());
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, line);
}

} // namespace tunedeck
