// SPDX-License-Identifier: MIT
#pragma once

#include <QSlider>

namespace tunedeck {

/// A horizontal slider from 0 to 100, fractions included. A press beside the knob brings the knob there.
class PercentSlider : public QSlider {
    Q_OBJECT

public:
    explicit PercentSlider(QWidget *parent = nullptr);

    [[nodiscard]] double doubleValue() const;
    /// Moves the knob without telling `adjusted`. What lies outside becomes the nearer end; what is not finite, 0.
    void setDoubleValue(double percent);
    /// What an arrow key changes the value by; a page key changes it by thrice as much.
    void setStep(double percent);
    void setDrawsFocusRing(bool drawsFocusRing);

Q_SIGNALS:
    /// The user moved the knob.
    void adjusted(double percent);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void initStyleOption(QStyleOptionSlider *option) const override;

private:
    [[nodiscard]] bool isOnKnob(QPoint position) const;

    bool m_drawsFocusRing = true;
};

} // namespace tunedeck
