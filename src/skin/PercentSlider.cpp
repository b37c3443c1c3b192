// SPDX-License-Identifier: MIT
#include "PercentSlider.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace tunedeck {

namespace {
/// Finer than a hundredth of a second in a recording of a day, so that a step of some seconds is one.
constexpr int ticksPerPercent = 100'000;
constexpr int ticks = 100 * ticksPerPercent;

int ticksOf(double percent)
{
    return static_cast<int>(std::lround(std::clamp(percent, 0.0, 100.0) * ticksPerPercent));
}

double percentOf(int value)
{
    return static_cast<double>(value) / ticksPerPercent;
}

/// Tells and takes percents; the toolkit's own would read the ticks out.
class AccessiblePercentSlider : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit AccessiblePercentSlider(PercentSlider &slider)
        : QAccessibleWidget(&slider, QAccessible::Slider)
        , m_slider(slider)
    {
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface *>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    [[nodiscard]] QVariant currentValue() const override { return m_slider.doubleValue(); }
    void setCurrentValue(const QVariant &value) override
    {
        const double percent = value.toDouble();
        m_slider.setValue(std::isfinite(percent) ? ticksOf(percent) : m_slider.value());
    }
    [[nodiscard]] QVariant maximumValue() const override { return 100.0; }
    [[nodiscard]] QVariant minimumValue() const override { return 0.0; }
    [[nodiscard]] QVariant minimumStepSize() const override { return percentOf(m_slider.singleStep()); }

private:
    PercentSlider &m_slider;
};

QAccessibleInterface *accessiblePercentSlider(const QString &, QObject *object)
{
    auto *slider = qobject_cast<PercentSlider *>(object);
    return slider ? new AccessiblePercentSlider(*slider) : nullptr;
}
} // namespace

PercentSlider::PercentSlider(QWidget *parent)
    : QSlider(Qt::Horizontal, parent)
{
    // The toolkit keeps one of each.
    QAccessible::installFactory(accessiblePercentSlider);
    setRange(0, ticks);
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QSlider::valueChanged, this, [this] { Q_EMIT adjusted(doubleValue()); });
}

double PercentSlider::doubleValue() const
{
    return percentOf(value());
}

void PercentSlider::setDoubleValue(double percent)
{
    const QSignalBlocker blocker(this);
    setValue(std::isfinite(percent) ? ticksOf(percent) : 0);
}

void PercentSlider::setStep(double percent)
{
    setSingleStep(ticksOf(percent));
    setPageStep(ticksOf(3 * percent));
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
