// SPDX-License-Identifier: MIT
#include "skin/looks/FocusRing.h"

#include "skin/drawing/Ink.h"
#include "skin/drawing/Shapes.h"
#include "skin/looks/skinLooks.h"

#include <QFocusEvent>
#include <QPainter>
#include <QWidget>

namespace tunedeck {

namespace {
/// Distances in points from the control's edge outwards. The ring keeps clear of the edge: its pixels are the
/// control's.
constexpr double ringStart = 1;
constexpr double ringEnd = 2.5;
constexpr double glowEnd = 4;

class Ring : public QWidget {
public:
    Ring(const SkinEnvironment &environment, std::optional<double> cornerRadius, QWidget *parent)
        : QWidget(parent)
        , m_environment(environment)
        , m_cornerRadius(cornerRadius)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        repaintOnNewLooks(*this, environment);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const QColor accent = accentColor(isGraphite(m_environment));
        const QRectF control = inset(rect(), glowEnd, glowEnd);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(around(control, glowEnd), withAlpha(accent, 0.25F));
        painter.fillPath(around(control, ringEnd), withAlpha(accent, 0.75F));
    }

private:
    [[nodiscard]] QPainterPath around(const QRectF &control, double end) const
    {
        QPainterPath path = outline(control, end);
        path.addPath(outline(control, ringStart));
        return path;
    }

    [[nodiscard]] QPainterPath outline(const QRectF &control, double distance) const
    {
        const QRectF bounds = inset(control, -distance, -distance);
        return m_cornerRadius ? roundedRectangle(bounds, *m_cornerRadius + distance) : capsule(bounds);
    }

    SkinEnvironment m_environment;
    std::optional<double> m_cornerRadius;
};

bool isByTab(const QFocusEvent &event)
{
    return event.reason() == Qt::TabFocusReason || event.reason() == Qt::BacktabFocusReason;
}

/// Whether the keyboard goes to another window or a menu, or comes back from there.
bool isExcursion(const QFocusEvent &event)
{
    return event.reason() == Qt::ActiveWindowFocusReason || event.reason() == Qt::PopupFocusReason
        || event.reason() == Qt::MenuBarFocusReason;
}
} // namespace

FocusRing::FocusRing(QWidget &control, const SkinEnvironment &environment, const ControlOutline &outline)
    : QObject(&control)
    , m_control(control)
    , m_environment(environment)
    , m_outline(outline)
{
    control.installEventFilter(this);
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
    m_ring = new Ring(m_environment, m_outline.cornerRadius, m_control.parentWidget());
    follow();
    m_ring->stackUnder(&m_control);
    m_ring->show();
}

void FocusRing::follow()
{
    if (!m_ring) {
        return;
    }
    const QRectF control(m_control.rect());
    const QRectF drawn = m_outline.bounds ? m_outline.bounds(control) : control;
    m_ring->setGeometry(inset(drawn, -glowEnd, -glowEnd).translated(m_control.pos()).toAlignedRect());
}

} // namespace tunedeck
