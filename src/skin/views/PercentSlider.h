// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/MissedRelease.h"

#include <QRectF>
#include <QSizeF>
#include <QSlider>

namespace tunedeck {

/// A horizontal slider from 0 to 100, fractions included. A press beside the knob brings the knob there. Derived
/// classes paint it.
class PercentSlider : public QSlider {
    Q_OBJECT

public:
    /// `knobSize` is in points.
    explicit PercentSlider(QSizeF knobSize, QWidget *parent = nullptr);

    [[nodiscard]] double doubleValue() const;
    /// Moves the knob without emitting adjusted(). A value out of range becomes the nearer end; one that is not finite,
    /// 0.
    void setDoubleValue(double percent);
    /// The change by an arrow key, from 0 to 100; a page key changes the value three times as much. With 0 the keys do
    /// nothing.
    void setStep(double percent);

Q_SIGNALS:
    /// The user moved the knob.
    void adjusted(double percent);

protected:
    bool event(QEvent *event) override;
    /// The bar in points: from edge to edge, 4 points high, halfway down the slider.
    [[nodiscard]] QRectF barRect() const;
    /// The knob in points, halfway down the slider. From 0 to 100 it travels from edge to edge.
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
    /// The left edge of the knob as last painted, in device pixels.
    qint64 m_paintedKnob = 0;
    /// The distance of the pointer from the left edge of the knob it drags, in points.
    double m_grip = 0;
    MissedRelease m_missedRelease{*this};
};

} // namespace tunedeck
