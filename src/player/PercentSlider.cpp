// SPDX-License-Identifier: MIT
#include "PercentSlider.h"

#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace tunedeck {

namespace {
/// Finer than the pixels of any groove, so that the knob moves smoothly.
constexpr int ticksPerPercent = 100;
constexpr int ticks = 100 * ticksPerPercent;

int ticksOf(double percent)
{
    return static_cast<int>(std::lround(std::clamp(percent, 0.0, 100.0) * ticksPerPercent));
}
} // namespace

PercentSlider::PercentSlider(QWidget *parent)
    : QSlider(Qt::Horizontal, parent)
{
    setRange(0, ticks);
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QSlider::valueChanged, this, [this] { Q_EMIT adjusted(doubleValue()); });
}

double PercentSlider::doubleValue() const
{
    return static_cast<double>(value()) / ticksPerPercent;
}

void PercentSlider::setDoubleValue(double percent)
{
    const QSignalBlocker blocker(this);
    setValue(std::isfinite(percent) ? ticksOf(percent) : 0);
}

void PercentSlider::setStep(double percent)
{
    setSingleStep(ticksOf(percent));
    setPageStep(3 * ticksOf(percent));
}

void PercentSlider::setDrawsFocusRing(bool drawsFocusRing)
{
    if (m_drawsFocusRing == drawsFocusRing) {
        return;
    }
    m_drawsFocusRing = drawsFocusRing;
    update();
}

void PercentSlider::mousePressEvent(QMouseEvent *event)
{
    // With the knob under the pointer, the style goes on with its usual drag.
    if (event->button() == Qt::LeftButton && !isOnKnob(event->position().toPoint())) {
        const int knobWidth = style()->pixelMetric(QStyle::PM_SliderLength, nullptr, this);
        const int x = static_cast<int>(event->position().x()) - knobWidth / 2;
        setValue(QStyle::sliderValueFromPosition(minimum(), maximum(), x, width() - knobWidth));
    }
    QSlider::mousePressEvent(event);
}

void PercentSlider::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

void PercentSlider::initStyleOption(QStyleOptionSlider *option) const
{
    QSlider::initStyleOption(option);
    if (!m_drawsFocusRing) {
        option->state.setFlag(QStyle::State_HasFocus, false);
    }
}

bool PercentSlider::isOnKnob(QPoint position) const
{
    QStyleOptionSlider option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this).contains(position);
}

} // namespace tunedeck
