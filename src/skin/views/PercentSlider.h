// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QSizeF>
#include <QSlider>

namespace tunedeck {

/// A horizontal slider from 0 to 100, fractions included. A press beside the knob brings the knob there. What it looks
/// like is told by those derived from it.
class PercentSlider : public QSlider {
    Q_OBJECT

public:
    /// `knobSize` is in points.
    explicit PercentSlider(QSizeF knobSize, QWidget *parent = nullptr);

    [[nodiscard]] double doubleValue() const;
    /// Moves the knob without telling `adjusted`. What lies outside becomes the nearer end; what is not finite, 0.
    void setDoubleValue(double percent);
    /// What an arrow key changes the value by, 0 to 100; a page key changes it by thrice as much. With 0 the keys do
    /// nothing.
    void setStep(double percent);

Q_SIGNALS:
    /// The user moved the knob.
    void adjusted(double percent);

protected:
    bool event(QEvent *event) override;
    /// From edge to edge and 4 points high, halfway down the slider. In points.
    [[nodiscard]] QRectF barRect() const;
    /// Halfway down the slider, too. From 0 to 100 it travels from edge to edge.
    [[nodiscard]] QRectF knobRect() const;

    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void sliderChange(SliderChange change) override;

private:
    void moveKnobTo(double left);
    [[nodiscard]] qint64 knobPixel() const;

    QSizeF m_knobSize;
    /// Where the knob was last painted, in device pixels.
    qint64 m_paintedKnob = 0;
    /// How far right of the knob's left edge the pointer holds it.
    double m_grip = 0;
};

} // namespace tunedeck
