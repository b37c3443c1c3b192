// SPDX-License-Identifier: MIT
#pragma once

#include "skin/drawing/Shadow.h"

#include <QColor>
#include <QRectF>
#include <QSizeF>

class QPainter;

namespace tunedeck {

/// The painter of the volume slider's groove and knob, in points and with y upwards.
class VolumeSliderCell {
public:
    static constexpr QSizeF knobSize{14, 14};

    /// The groove reaches beyond `bar` above and below.
    void drawBarInside(QPainter &painter, const QRectF &bar, bool dark) const;
    /// The picture of the knob and its shadow.
    void drawKnob(QPainter &painter, const QRectF &knob) const;

private:
    Shadow m_innerShadow{.offset = {0, -1.5}, .blurRadius = 1.25, .color = QColor::fromRgbF(0, 0, 0, 0.333F)};
    Shadow m_knobShadow{.offset = {0.25, -1.65}, .blurRadius = 1.5, .color = QColor::fromRgbF(0, 0, 0, 0.6F)};
};

} // namespace tunedeck
