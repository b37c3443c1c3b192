// SPDX-License-Identifier: MIT
#include "skin/views/HoldableButton.h"

#include <QMouseEvent>
#include <QPointer>

namespace tunedeck {

HoldableButton::HoldableButton(QWidget *parent)
    : SkinnedButton(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(holdThreshold);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &HoldableButton::fireTimer);
}

void HoldableButton::setHoldButton(bool isHoldButton)
{
    m_isHoldButton = isHoldButton;
    Q_EMIT isHoldButtonChanged(isHoldButton);
}

void HoldableButton::fireTimer()
{
    setIntentionallyHeld(true);
}

void HoldableButton::mousePressEvent(QMouseEvent *event)
{
    const bool isPress = event->button() == Qt::LeftButton && hitButton(event->position().toPoint());
    if (isPress) {
        setHeld(true);
    }
    if (!isPress || !m_isHoldButton) {
        SkinnedButton::mousePressEvent(event);
        return;
    }
    beginPress();
}

void HoldableButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_isHeld) {
        SkinnedButton::mouseReleaseEvent(event);
        return;
    }
    setHeld(false);
    if (!m_isHoldButton) {
        SkinnedButton::mouseReleaseEvent(event);
        return;
    }
    const QPointer<HoldableButton> self(this);
    if (!m_isIntentionallyHeld && hitButton(event->position().toPoint())) {
        click();
    }
    // A slot of the click may have deleted the button.
    if (self) {
        endPress();
    }
}

void HoldableButton::changeEvent(QEvent *event)
{
    SkinnedButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && !isEnabled()) {
        cancelPress();
    }
}

void HoldableButton::hideEvent(QHideEvent *event)
{
    SkinnedButton::hideEvent(event);
    cancelPress();
}

void HoldableButton::setIntentionallyHeld(bool isIntentionallyHeld)
{
    m_isIntentionallyHeld = isIntentionallyHeld;
    Q_EMIT isIntentionallyHeldChanged(isIntentionallyHeld);
}

void HoldableButton::setHeld(bool isHeld)
{
    m_isHeld = isHeld;
    Q_EMIT isHeldChanged(isHeld);
}

void HoldableButton::beginPress()
{
    setDown(true);
    m_timer.start();
}

void HoldableButton::endPress()
{
    m_timer.stop();
    setIntentionallyHeld(false);
    setDown(false);
    // A click() has cleared isDown() by now, without a repaint.
    update();
}

void HoldableButton::cancelPress()
{
    SkinnedButton::cancelPress();
    if (!m_isHeld) {
        return;
    }
    setHeld(false);
    if (m_isHoldButton) {
        endPress();
    }
}

} // namespace tunedeck
