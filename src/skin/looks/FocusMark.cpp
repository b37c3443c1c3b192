// SPDX-License-Identifier: MIT
#include "skin/looks/FocusMark.h"

#include "skin/looks/skinLooks.h"

#include <QApplication>
#include <QFocusEvent>
#include <QPainter>
#include <QWidget>

#include <utility>

namespace tunedeck {

namespace {
bool isByKey(const QFocusEvent &event)
{
    return event.reason() == Qt::TabFocusReason || event.reason() == Qt::BacktabFocusReason
        || event.reason() == Qt::ShortcutFocusReason;
}

/// Whether the keyboard goes to another window or a menu, or comes back from there.
bool isExcursion(const QFocusEvent &event)
{
    return event.reason() == Qt::ActiveWindowFocusReason || event.reason() == Qt::PopupFocusReason
        || event.reason() == Qt::MenuBarFocusReason;
}
} // namespace

class FocusMark::View : public QWidget {
public:
    View(const FocusMark &mark, QWidget *parent)
        : QWidget(parent)
        , m_mark(mark)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        repaintOnNewLooks(*this, mark.m_environment);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        m_mark.paint(painter, m_mark.drawnControl().translated(-pos()));
    }

private:
    const FocusMark &m_mark;
};

FocusMark::FocusMark(QWidget &control, const SkinEnvironment &environment, DrawnBounds bounds)
    : QObject(&control)
    , m_control(control)
    , m_environment(environment)
    , m_bounds(std::move(bounds))
{
    control.installEventFilter(this);
}

FocusMark::~FocusMark()
{
    delete m_view;
}

bool FocusMark::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
        focusIn(static_cast<const QFocusEvent &>(*event));
        break;
    case QEvent::FocusOut:
        focusOut(static_cast<const QFocusEvent &>(*event));
        break;
    case QEvent::Move:
    case QEvent::Resize:
        follow();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

/// The bounds of what the control draws, in the coordinates of its parent.
QRectF FocusMark::drawnControl() const
{
    const QRectF control(m_control.rect());
    return (m_bounds ? m_bounds(control) : control).translated(m_control.pos());
}

void FocusMark::focusIn(const QFocusEvent &event)
{
    m_cameByKey = isByKey(event) || (m_cameByKey && isExcursion(event));
    if (m_cameByKey) {
        show();
    }
}

void FocusMark::focusOut(const QFocusEvent &event)
{
    // The list of a picker takes the keyboard like any other control, and gives it back like a menu.
    m_cameByKey = m_cameByKey && (isExcursion(event) || QApplication::activePopupWidget());
    delete m_view;
}

void FocusMark::show()
{
    // A control that is a window has nothing around it.
    if (m_view || !m_control.parentWidget()) {
        return;
    }
    m_view = new View(*this, m_control.parentWidget());
    follow();
    m_view->stackUnder(&m_control);
    m_view->show();
}

void FocusMark::follow()
{
    if (m_view) {
        m_view->setGeometry(area(drawnControl()).toAlignedRect());
    }
}

} // namespace tunedeck
