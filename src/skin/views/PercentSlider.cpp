// SPDX-License-Identifier: MIT
#include "skin/views/PercentSlider.h"

#include "widgets/isMouseButtonEvent.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace tunedeck {

namespace {
/// Finer than a hundredth of a second in a recording of a day, so that a step of a few seconds keeps its length.
constexpr int ticksPerPercent = 100'000;
constexpr int ticks = 100 * ticksPerPercent;
constexpr double barHeight = 4;

int ticksOf(double percent)
{
    return static_cast<int>(std::lround(std::clamp(percent, 0.0, 100.0) * ticksPerPercent));
}

double percentOf(int value)
{
    return static_cast<double>(value) / ticksPerPercent;
}

/// Reads and sets percents. Qt's own interface would read out the ticks.
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

PercentSlider::PercentSlider(QSizeF knobSize, QWidget *parent)
    : QSlider(Qt::Horizontal, parent)
    , m_knobSize(knobSize)
{
    // Qt keeps each factory once, however often it is installed.
    QAccessible::installFactory(accessiblePercentSlider);
    setRange(0, ticks);
    setFocusPolicy(Qt::TabFocus);
    // The keys move the knob in their own direction, also where text runs to the left.
    setLayoutDirection(Qt::LeftToRight);
    connect(&m_missedRelease, &MissedRelease::missed, this, [this] { setSliderDown(false); });
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

QRectF PercentSlider::barRect() const
{
    return {0, (height() - barHeight) / 2, static_cast<double>(width()), barHeight};
}

QRectF PercentSlider::knobRect() const
{
    const double travel = std::max(width() - m_knobSize.width(), 0.0);
    return {QPointF(doubleValue() / 100 * travel, (height() - m_knobSize.height()) / 2), m_knobSize};
}

bool PercentSlider::event(QEvent *event)
{
    // A press that a disabled slider ignores would reach the window and drag it.
    if (!isEnabled() && isMouseButtonEvent(*event)) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::Paint) {
        m_paintedKnob = knobPixel();
    }
    return QSlider::event(event);
}

void PercentSlider::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    const QPointF position = event->position();
    setSliderDown(true);
    if (!knobRect().contains(position)) {
        moveKnobTo(position.x() - m_knobSize.width() / 2);
    }
    m_grip = position.x() - knobRect().left();
}

void PercentSlider::mouseMoveEvent(QMouseEvent *event)
{
    if (!isSliderDown()) {
        event->ignore();
        return;
    }
    moveKnobTo(event->position().x() - m_grip);
}

void PercentSlider::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !isSliderDown()) {
        event->ignore();
        return;
    }
    setSliderDown(false);
}

void PercentSlider::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

void PercentSlider::hideEvent(QHideEvent *event)
{
    QSlider::hideEvent(event);
    // A hidden slider gets no release of the mouse button.
    setSliderDown(false);
}

void PercentSlider::sliderChange(SliderChange change)
{
    // A knob that follows a track creeps: most of its steps would repaint the same pixels.
    if (change == SliderValueChange && knobPixel() == m_paintedKnob) {
        return;
    }
    QSlider::sliderChange(change);
}

qint64 PercentSlider::knobPixel() const
{
    return std::llround(knobRect().left() * devicePixelRatioF());
}

void PercentSlider::moveKnobTo(double left)
{
    const double travel = width() - m_knobSize.width();
    if (travel > 0) {
        setValue(ticksOf(left / travel * 100));
    }
}

} // namespace tunedeck
