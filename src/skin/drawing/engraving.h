// SPDX-License-Identifier: MIT
#pragma once

#include "skin/drawing/Shadow.h"

#include <QColor>
#include <QFont>
#include <QString>

class QPainter;
class QRectF;

namespace tunedeck {

/// The alpha of the title, image or arrows of a metal control while it is disabled or no window is main.
constexpr float inactiveMetalAlpha = 0.667F;

/// The colour of a metal control's title. `alpha` is from 0 to 1.
[[nodiscard]] QColor metalTitleColor(bool isPressed, float alpha);
/// The hard-edged shadow that makes a title look engraved. `scale` is the device pixel ratio.
[[nodiscard]] Shadow metalTitleShadow(bool isPressed, double scale);
/// `shadow` as a shape filled with `color` casts it: a translucent shape casts less.
[[nodiscard]] Shadow castBy(const QColor &color, Shadow shadow);

struct EngravedText {
    QString text;
    QFont font;
    QColor color;
    Shadow shadow;
    Qt::Alignment alignment = Qt::AlignHCenter;
};

/// Draws one line of text halfway down `frame`, in points and with y downwards. A text too long for the frame ends in
/// an ellipsis.
void drawEngravedText(QPainter &painter, const QRectF &frame, const EngravedText &text);

} // namespace tunedeck
