// SPDX-License-Identifier: MIT
#include "FocusRing.h"

#include "Ink.h"
#include "Shapes.h"
#include "skinLooks.h"

#include <QFocusEvent>
#include <QPainter>
#include <QWidget>

namespace tunedeck {

namespace {
/// In points, from the control's edge outwards. The ring keeps clear of the edge, whose pixels are the control's.
constexpr double ringStart = 1;
constexpr double ringEnd = 2.5;
constexpr double glowEnd = 4;

class Ring : public QWidget {
public:
    Ring(const SkinEnvironment &environment, QWidget *parent)
        : QWidget(parent)
        , m_environment(environment)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        repaintOnNewLooks(*this, environment);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const QColor accent =
            isGraphite(m_environment) ? QColor::fromRgbF(0.38F, 0.45F, 0.54F) : QColor::fromRgbF(0.21F, 0.53F, 0.85F);
        const QRectF control = inset(rect(), glowEnd, glowEnd);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(around(control, glowEnd), withAlpha(accent, 0.25F));
        painter.fillPath(around(control, ringEnd), withAlpha(accent, 0.75F));
    }

private:
    static QPainterPath around(const QRectF &control, double end)
    {
        QPainterPath path = capsule(inset(control, -end, -end));
        path.addPath(capsule(inset(control, -ringStart, -ringStart)));
        return path;
    }

    SkinEnvironment m_environment;
};

bool isByTab(const QFocusEvent &event)
{
    return event.reason() == Qt::TabFocusReason || event.reason() == Qt::BacktabFocusReason;
}

/// The keyboard goes to another window or a menu, and comes back from there.
bool isExcursion(const QFocusEvent &event)
{
    return event.reason() == Qt::ActiveWindowFocusReason || event.reason() == Qt::PopupFocusReason
        || event.reason() == Qt::MenuBarFocusReason;
}
} // namespace

FocusRing::FocusRing(QWidget &control, const SkinEnvironment &environment)
    : QObject(&control)
    , m_control(control)
    , m_environment(environment)
{
    control.installEventFilter(this);
}

FocusRing::FocusRing(QWidget &control, const SkinEnvironment &environment, int drawnHeight)
    : FocusRing(control, environment)
{
    m_drawnHeight = drawnHeight;
}

FocusRing::~FocusRing()
{
    delete m_ring;
}

bool FocusRing::eventFilter(QObject *watched, QEvent *event)
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

void FocusRing::focusIn(const QFocusEvent &event)
{
    m_cameByTab = isByTab(event) || (m_cameByTab && isExcursion(event));
    if (m_cameByTab) {
        show();
    }
}

void FocusRing::focusOut(const QFocusEvent &event)
{
    m_cameByTab = m_cameByTab && isExcursion(event);
    delete m_ring;
}

void FocusRing::show()
{
    // A control that is a window has nothing around it.
    if (m_ring || !m_control.parentWidget()) {
        return;
    }
    m_ring = new Ring(m_environment, m_control.parentWidget());
    follow();
    m_ring->stackUnder(&m_control);
    m_ring->show();
}

void FocusRing::follow()
{
    if (!m_ring) {
        return;
    }
    const int reach = static_cast<int>(glowEnd);
    const int margin = (m_control.height() - m_drawnHeight.value_or(m_control.height())) / 2;
    m_ring->setGeometry(m_control.geometry().adjusted(-reach, margin - reach, reach, reach - margin));
}

} // namespace tunedeck
