// SPDX-License-Identifier: MIT
#include "skin/views/SkinnedButton.h"

#include "widgets/isMouseButtonEvent.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace tunedeck {

namespace {
bool isSpaceAskedFor(const QEvent &event)
{
    return event.type() == QEvent::ShortcutOverride && static_cast<const QKeyEvent &>(event).key() == Qt::Key_Space;
}
} // namespace

SkinnedButton::SkinnedButton(QWidget *parent)
    : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    connect(&m_missedRelease, &MissedRelease::missed, this, [this] { cancelPress(); });
}

bool SkinnedButton::event(QEvent *event)
{
    // Space is also the shortcut of Play. On a button that has the keyboard focus it must press the button.
    if (isSpaceAskedFor(*event) || (!isEnabled() && isMouseButtonEvent(*event))) {
        event->accept();
        return true;
    }
    return QAbstractButton::event(event);
}

void SkinnedButton::mouseMoveEvent(QMouseEvent *event)
{
    QAbstractButton::mouseMoveEvent(event);
    // An ignored event would reach the window and drag it.
    event->accept();
}

void SkinnedButton::cancelPress()
{
    setDown(false);
}

} // namespace tunedeck
