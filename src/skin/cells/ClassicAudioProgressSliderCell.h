// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QSizeF>

class QPainter;

namespace tunedeck {

/// The painter of the progress slider's bar and knob, in the ink of the LCD, in points and with y upwards. At high
/// contrast, the band is as dark as the frame.
class ClassicAudioProgressSliderCell {
public:
    static constexpr QSizeF knobSize{17, 17};

    /// A thin frame around `bar` and, if the slider is enabled, a dotted band up to the middle of `knob`.
    static void drawBarInside(
        QPainter &painter, const QRectF &bar, const QRectF &knob, bool enabled, bool isHighContrast = false);
    /// A diamond in `knob`; nothing if the slider is not enabled.
    static void drawKnob(QPainter &painter, const QRectF &knob, bool enabled, bool isHighContrast = false);
};

} // namespace tunedeck
