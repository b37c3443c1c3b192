// SPDX-License-Identifier: MIT
#include "skin/views/HoldableButton.h"

#include <QKeyEvent>
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

bool HoldableButton::event(QEvent *event)
{
    // Another program has grabbed the keyboard and will get the release.
    if (event->type() == QEvent::UngrabKeyboard) {
        cancelPressByKey();
    }
    return SkinnedButton::event(event);
}

void HoldableButton::mousePressEvent(QMouseEvent *event)
{
    if (m_holder == Holder::Key) {
        return;
    }
    const bool isPress = event->button() == Qt::LeftButton && hitButton(event->position().toPoint());
    if (isPress) {
        setHolder(Holder::Mouse);
    }
    if (!isPress || !m_isHoldButton) {
        SkinnedButton::mousePressEvent(event);
        return;
    }
    beginPress();
}

void HoldableButton::mouseReleaseEvent(QMouseEvent *event)
{
    if (m_holder == Holder::Key) {
        return;
    }
    if (event->button() != Qt::LeftButton || m_holder == Holder::None) {
        SkinnedButton::mouseReleaseEvent(event);
        return;
    }
    setHolder(Holder::None);
    if (!m_isHoldButton) {
        SkinnedButton::mouseReleaseEvent(event);
        return;
    }
    finishPress(!m_isIntentionallyHeld && hitButton(event->position().toPoint()));
}

void HoldableButton::keyPressEvent(QKeyEvent *event)
{
    const bool wasDown = isDown();
    SkinnedButton::keyPressEvent(event);
    // Qt knows which keys press a button on this desktop.
    if (m_isHoldButton && !wasDown && isDown()) {
        m_heldKey = event->key();
        setHolder(Holder::Key);
        beginPress();
    }
}

void HoldableButton::keyReleaseEvent(QKeyEvent *event)
{
    if (m_holder == Holder::None) {
        SkinnedButton::keyReleaseEvent(event);
        return;
    }
    // A key that is held down repeats its release, too.
    if (m_holder != Holder::Key || event->key() != m_heldKey || event->isAutoRepeat()) {
        event->ignore();
        return;
    }
    setHolder(Holder::None);
    finishPress(!m_isIntentionallyHeld);
}

void HoldableButton::focusOutEvent(QFocusEvent *event)
{
    SkinnedButton::focusOutEvent(event);
    cancelPressByKey();
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

void HoldableButton::setHolder(Holder holder)
{
    m_holder = holder;
    Q_EMIT isHeldChanged(isHeld());
}

void HoldableButton::beginPress()
{
    setDown(true);
    m_timer.start();
}

void HoldableButton::finishPress(bool isClick)
{
    const QPointer<HoldableButton> self(this);
    if (isClick) {
        click();
    }
    // A slot of the click may have deleted the button.
    if (self) {
        endPress();
    }
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
    if (!isHeld()) {
        return;
    }
    setHolder(Holder::None);
    if (m_isHoldButton) {
        endPress();
    }
}

void HoldableButton::cancelPressByKey()
{
    if (m_holder == Holder::Key) {
        cancelPress();
    }
}

} // namespace tunedeck
