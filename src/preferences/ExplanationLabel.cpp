// SPDX-License-Identifier: MIT
#include "preferences/ExplanationLabel.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyle>

namespace tunedeck {

namespace {
constexpr double inkOpacity = 0.7;
} // namespace

ExplanationLabel::ExplanationLabel(const QString &text, QWidget &control)
    : QLabel(control.parentWidget())
    , m_control(control)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setExplanation(text);
}

void ExplanationLabel::setExplanation(const QString &text)
{
    setText(text);
    m_control.setAccessibleDescription(text);
}

// The opacity weakens the text's colour: no role of the palette is both weak and legible in every theme.
void ExplanationLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setOpacity(inkOpacity);
    const Qt::Alignment visual = QStyle::visualAlignment(layoutDirection(), alignment());
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(visual) | Qt::TextWordWrap, palette(), isEnabled(),
        text(), foregroundRole());
}

} // namespace tunedeck
