// SPDX-License-Identifier: MIT
#pragma once

#include "skin/drawing/Shadow.h"

#include <QColor>
#include <QFont>
#include <QString>

class QPainter;
class QRectF;

namespace tunedeck {

/// The alpha of what is drawn on a metal control that is disabled or whose window is not main.
constexpr float inactiveMetalAlpha = 0.667F;

/// Of a metal control's title.
[[nodiscard]] QColor metalTitleColor(bool isPressed, float alpha);
/// What makes a title look engraved; hard-edged. `scale` is the device pixel ratio.
[[nodiscard]] Shadow metalTitleShadow(bool isPressed, double scale);
/// `shadow` as something cast it that is filled with `color`: what is translucent casts less.
[[nodiscard]] Shadow castBy(const QColor &color, Shadow shadow);

struct EngravedText {
    QString text;
    QFont font;
    QColor color;
    Shadow shadow;
    Qt::Alignment alignment = Qt::AlignHCenter;
};

/// Draws one line of text halfway down `frame`, in points and with y downwards. What is too long for the frame ends in
/// an ellipsis.
void drawEngravedText(QPainter &painter, const QRectF &frame, const EngravedText &text);

} // namespace tunedeck
