// SPDX-License-Identifier: MIT
#include "skin/views/VolumeSlider.h"

#include "platform/UserDefaults.h"
#include "skin/drawing/Shapes.h"
#include "skin/drawing/flipY.h"
#include "skin/looks/FocusRing.h"
#include "skin/looks/skinLooks.h"

#include <QPainter>
#include <QWheelEvent>

#include <cstdlib>

namespace tunedeck {

namespace {
constexpr int notch = QWheelEvent::DefaultDeltasPerStep;
constexpr double touchpadDivisor = 2.5;
constexpr double disabledOpacity = 0.35;
/// In milliseconds. After a longer pause a part of a notch no longer counts.
constexpr quint64 longestPauseInNotch = 1000;

bool isTouchpad(const QWheelEvent &event)
{
    // Wheels report no phases. Touchpads on X11 report none either: they act as a fine wheel.
    return event.phase() != Qt::NoScrollPhase;
}

/// The movement of the content by a touchpad, in points.
QPoint scrolled(const QWheelEvent &event)
{
    // A window system without points gives eighths of a degree. A wheel's notch has 120 of them and moves a text by
    // three lines of five points each.
    constexpr int eighthsPerPoint = 8;
    return event.pixelDelta().isNull() ? event.angleDelta() / eighthsPerPoint : event.pixelDelta();
}

/// Takes the whole notches out of `turned`, which keeps the rest.
int takeNotches(int &turned)
{
    const int notches = turned / notch;
    turned %= notch;
    return notches;
}

void turn(int &turned, int delta)
{
    const bool turnsBack = (turned < 0) != (delta < 0);
    turned = turnsBack ? delta : turned + delta;
}

QRectF drawnBounds(const QRectF &control)
{
    return inset(control, 0, (control.height() - VolumeSliderCell::knobSize.height()) / 2);
}
} // namespace

VolumeSlider::VolumeSlider(const SkinEnvironment &environment, QWidget *parent)
    : PercentSlider(VolumeSliderCell::knobSize, parent)
    , m_environment(environment)
{
    setStep(step);
    repaintOnNewLooks(*this, environment);
    new FocusRing(*this, environment, &drawnBounds);
}

void VolumeSlider::setScrollEventsDelegate(VolumeSliderScrollEventDelegate *delegate)
{
    m_scrollEventsDelegate = delegate;
}

QRectF VolumeSlider::customHitTestArea() const
{
    return QRectF(rect()).adjusted(3, 4, -3, -4).translated(1, 2);
}

void VolumeSlider::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setOpacity(isEnabled() ? 1 : disabledOpacity);
    paintBar(painter);
    paintKnob(painter);
}

void VolumeSlider::wheelEvent(QWheelEvent *event)
{
    event->accept();
    if (customHitTestArea().contains(event->position())) {
        scroll(*event);
    }
}

void VolumeSlider::scroll(const QWheelEvent &event)
{
    const double volumeStep = isTouchpad(event) ? touchpadStep(event) : wheelStep(event);
    m_lastTimestamp = event.timestamp();
    if (volumeStep == 0 || !m_scrollEventsDelegate) {
        return;
    }
    m_scrollEventsDelegate->adjustVolume(volumeStep);
    m_scrollEventsDelegate->volumeSliderDidScroll();
}

void VolumeSlider::paintBar(QPainter &painter)
{
    const bool dark = isDark(m_environment);
    m_bars.draw(painter, rect(), dark, [this, dark](QPainter &face) {
        flipY(face, height());
        m_cell.drawBarInside(face, barRect(), dark);
    });
}

void VolumeSlider::paintKnob(QPainter &painter)
{
    constexpr double shadowReach = 4;
    const QRectF knob(QPointF(shadowReach, shadowReach), VolumeSliderCell::knobSize);
    const QRect frame = inset(knob, -shadowReach, -shadowReach).toRect();
    painter.translate(knobRect().topLeft() - knob.topLeft());
    m_knobs.draw(painter, frame, {}, [this, frame, knob](QPainter &face) {
        flipY(face, frame.height());
        m_cell.drawKnob(face, knob);
    });
}

bool VolumeSlider::isInverted(const QWheelEvent &event) const
{
    // Qt does not report natural scrolling on X11, nor before 6.8 on Wayland. The user does then. A device that both
    // report is inverted once.
    return event.inverted() || m_environment.defaults.boolForKey(SettingsKey::wheelDirectionTurned);
}

double VolumeSlider::touchpadStep(const QWheelEvent &event) const
{
    // Natural scrolling turns the signs of the deltas round. The gesture for louder stays the same.
    const QPoint delta = scrolled(event);
    return isInverted(event) ? (delta.y() - delta.x()) / -touchpadDivisor : (delta.y() + delta.x()) / touchpadDivisor;
}

double VolumeSlider::wheelStep(const QWheelEvent &event)
{
    if (event.timestamp() - m_lastTimestamp > longestPauseInNotch) {
        m_turned = {};
    }
    const QPoint delta = event.angleDelta();
    int notches = 0;
    if (delta.y() != 0) {
        turn(m_turned.ry(), delta.y());
        notches = takeNotches(m_turned.ry());
    } else {
        // Tilting a wheel to either side makes it louder.
        turn(m_turned.rx(), std::abs(delta.x()));
        notches = takeNotches(m_turned.rx());
    }
    return step * (isInverted(event) ? -notches : notches);
}

} // namespace tunedeck
