// SPDX-License-Identifier: MIT
#include "window/Window.h"

#include "platform/windowLog.h"
#include "platform/windowSystem.h"
#include "widgets/bringToFront.h"
#include "widgets/canBeSeen.h"
#include "window/WindowController.h"
#include "x11/correctPlace.h"
#include "x11/frameExtents.h"
#include "x11/isIconic.h"
#include "x11/isScreenComposited.h"
#include "x11/setFloatingType.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScreen>
#include <QWindow>
#include <QWindowStateChangeEvent>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace tunedeck {

namespace {
constexpr int cornerRadius = 4;
/// A colour between the metal and its edge.
constexpr QColor cutOutlineColor(0x8c, 0x8c, 0x8c);
constexpr int initialWidth = 450;
/// Time that a window manager gets to minimise the window.
constexpr std::chrono::milliseconds minimisationTime{1000};

bool isCancel(const QKeyEvent &event)
{
    return event.matches(QKeySequence::Cancel)
        || (event.key() == Qt::Key_Period && event.modifiers() == Qt::ControlModifier);
}

/// Cuts row by row, because the region of a polygon is larger at its right and its bottom.
QRegion roundedRegion(const QRect &frame)
{
    QRegion region(frame);
    for (int row = 0; row < cornerRadius; ++row) {
        const double rise = cornerRadius - row - 0.5;
        const int inset = qRound(cornerRadius - std::sqrt(cornerRadius * cornerRadius - rise * rise));
        for (const int y : {frame.top() + row, frame.bottom() - row}) {
            region -= QRect(frame.left(), y, inset, 1);
            region -= QRect(frame.right() - inset + 1, y, inset, 1);
        }
    }
    return region;
}

/// Qt reports only QMainWindow and the like as windows to screen readers.
QAccessibleInterface *accessibleWindow(const QString &, QObject *object)
{
    auto *window = qobject_cast<Window *>(object);
    return window ? new QAccessibleWidget(window, QAccessible::Window) : nullptr;
}
} // namespace

Window::Window(WindowController &controller)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint)
    , m_controller(controller)
    , m_shadow(cornerRadius)
    , m_widthBeforeZoom(initialWidth)
{
    QAccessible::installFactory(accessibleWindow);
    setAttribute(Qt::WA_TranslucentBackground);
    setContextMenuPolicy(Qt::CustomContextMenu);
    setFocusPolicy(Qt::ClickFocus);
    resize(initialWidth, WindowController::collapsedHeight);
    create();
    windowHandle()->installEventFilter(this);
    connect(windowHandle(), &QWindow::screenChanged, this, &Window::invalidateShadow);
    connect(windowHandle(), &QWindow::screenChanged, this, &Window::watchScreen);
    watchScreen();
    m_minimisation.setSingleShot(true);
    m_minimisation.setInterval(minimisationTime);
    connect(&m_minimisation, &QTimer::timeout, this, &Window::confirmMinimisation);
    connect(windowHandle(), &QWindow::windowStateChanged, this, &Window::updateCanBeSeen);
    // Otherwise the first control has the keyboard focus, and Space presses it.
    setFocus();
}

void Window::setLevel(WindowLevel level)
{
    m_level = level;
    applyLevel();
    Q_EMIT levelChanged(level);
}

QRect Window::contentRect() const
{
    // Tiling window managers may make the window larger than its maximum size.
    const QRect inside = rect().marginsRemoved(m_shadowMargins);
    return {inside.topLeft(), inside.size().boundedTo(m_maximumContentSize)};
}

QRect Window::contentGeometry() const
{
    return contentRect().translated(geometry().topLeft());
}

void Window::setContentGeometry(const QRect &place)
{
    setGeometry(place.marginsAdded(m_shadowMargins));
}

void Window::resizeContent(QSize size)
{
    resize(size.grownBy(m_shadowMargins));
}

void Window::setContentSizeLimits(QSize minimum, QSize maximum)
{
    m_minimumContentSize = minimum;
    m_maximumContentSize = maximum;
    applySizeLimits();
}

void Window::setContentView(QWidget *view)
{
    m_contentView = view;
    m_contentView->setParent(this);
    m_contentView->setGeometry(contentRect());
    m_contentView->show();
}

void Window::flagsChanged(Qt::KeyboardModifiers modifiers)
{
    m_optionButtonHeld = modifiers.testFlag(Qt::AltModifier);
    Q_EMIT optionButtonHeldChanged(m_optionButtonHeld);
    m_shiftButtonHeld = modifiers.testFlag(Qt::ShiftModifier);
    Q_EMIT shiftButtonHeldChanged(m_shiftButtonHeld);
}

/// No event reports a key that is pressed or released while a window manager moves the window.
void Window::updateFlags(Qt::KeyboardModifiers modifiers)
{
    if (modifiers.testFlag(Qt::AltModifier) != m_optionButtonHeld
        || modifiers.testFlag(Qt::ShiftModifier) != m_shiftButtonHeld) {
        flagsChanged(modifiers);
    }
}

void Window::cancelOperation()
{
    if (m_controller.isExpanded()) {
        m_controller.setExpanded(false);
    } else {
        QApplication::beep();
    }
}

void Window::makeKeyAndOrderFront()
{
    bringToFront(*this);
}

void Window::invalidateShadow()
{
    m_isComposited = isScreenComposited();
    const QMargins margins = m_isComposited ? WindowShadow::reach : QMargins();
    setShadowMargins(setFrameExtents(*windowHandle(), margins) ? margins : QMargins());
    updateInputRegion();
    cutToOutline();
    update();
}

void Window::setShadowMargins(const QMargins &margins)
{
    if (margins == m_shadowMargins) {
        return;
    }
    // The content keeps its place on the screen.
    const QRect content = geometry().marginsRemoved(m_shadowMargins);
    m_shadowMargins = margins;
    applySizeLimits();
    if (m_hasBeenSeen || testAttribute(Qt::WA_Moved)) {
        setGeometry(content.marginsAdded(margins));
    } else {
        // The window has no place: the window manager will choose one.
        resizeContent(content.size());
    }
}

void Window::applySizeLimits()
{
    setMinimumSize(m_minimumContentSize.grownBy(m_shadowMargins));
    setMaximumSize(m_maximumContentSize.grownBy(m_shadowMargins).boundedTo({QWIDGETSIZE_MAX, QWIDGETSIZE_MAX}));
}

void Window::cutToOutline()
{
    const QRegion outline = m_isComposited ? QRegion() : roundedRegion(contentRect());
    if (outline == mask()) {
        return;
    }
    if (outline.isEmpty()) {
        clearMask();
    } else {
        setMask(outline);
    }
}

void Window::zoom()
{
    const QSize size = contentRect().size();
    if (size.width() == maximumContentWidth) {
        resizeContent({m_widthBeforeZoom, size.height()});
        return;
    }
    m_widthBeforeZoom = size.width();
    resizeContent({maximumContentWidth, size.height()});
}

bool Window::event(QEvent *event)
{
    // No event reports a key that is released while another window has the keyboard focus.
    if (event->type() == QEvent::WindowDeactivate) {
        flagsChanged(Qt::NoModifier);
    }
    if (event->type() == QEvent::WindowStateChange) {
        if (static_cast<QWindowStateChangeEvent *>(event)->oldState().testFlag(Qt::WindowMinimized)) {
            qCDebug(windowLog) << "restored";
            invalidateShadow();
        }
        leaveStatesThatFillTheScreen();
        if (isMinimized()) {
            qCDebug(windowLog) << "minimised";
        }
        watchMinimisation();
    }
    return QWidget::event(event);
}

bool Window::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress: {
        const auto &key = *static_cast<QKeyEvent *>(event);
        flagsChanged(key.modifiers());
        // Escape closes an open menu first. A key that is held down counts once.
        if (isCancel(key) && !QApplication::activePopupWidget()) {
            if (!key.isAutoRepeat()) {
                cancelOperation();
            }
            return true;
        }
        break;
    }
    case QEvent::KeyRelease:
        flagsChanged(static_cast<QKeyEvent *>(event)->modifiers());
        break;
    case QEvent::Expose:
        updateCanBeSeen();
        watchMinimisation();
        break;
    case QEvent::MouseMove: {
        const auto &move = *static_cast<QMouseEvent *>(event);
        updateFlags(move.modifiers());
        if (move.buttons() == Qt::NoButton) {
            m_drag.showCursor(move.position().toPoint(), contentRect());
        }
        break;
    }
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void Window::mousePressEvent(QMouseEvent *event)
{
    m_drag.end();
    if (event->button() == Qt::LeftButton) {
        m_drag.press(event->position().toPoint(), contentRect());
    }
}

void Window::mouseMoveEvent(QMouseEvent *event)
{
    m_drag.move(event->position().toPoint(), event->globalPosition().toPoint());
}

void Window::mouseReleaseEvent(QMouseEvent *)
{
    m_drag.end();
}

void Window::moveEvent(QMoveEvent *)
{
    // A drag sends many of these, so this asks nothing of the X server and paints nothing.
    cutToOutline();
}

void Window::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    if (!mask().isEmpty()) {
        // The mask has hard edges: without this, black would shine through the content's soft corners.
        painter.fillRect(rect(), cutOutlineColor);
    }
    // The shadow is also seen through the content's round corners.
    const QRect unshaded = contentRect().adjusted(0, cornerRadius, 0, -cornerRadius);
    if (!m_shadowMargins.isNull() && !unshaded.contains(event->rect())) {
        m_shadow.draw(painter, contentRect());
    }
}

void Window::resizeEvent(QResizeEvent *)
{
    // Qt 6.4 keeps the limits itself. Qt 6.8 takes every size that a Wayland desktop offers, also one beyond them. A
    // desktop that fills the screen with a window ends a program that takes another size, so that state is left first.
    const QSize inLimits = size().expandedTo(minimumSize()).boundedTo(maximumSize());
    const bool fillsScreen = windowState().testAnyFlags(Qt::WindowMaximized | Qt::WindowFullScreen);
    if (isWayland() && !fillsScreen && inLimits != size()) {
        resize(inLimits);
        return;
    }
    if (m_contentView) {
        m_contentView->setGeometry(contentRect());
    }
    updateInputRegion();
    cutToOutline();
}

void Window::showEvent(QShowEvent *)
{
    if (m_hasBeenSeen) {
        // Without a place of its own, a window that was hidden would be placed again by the window manager.
        windowHandle()->setPosition(windowHandle()->position());
    }
    applyLevel();
    setFloatingType(*windowHandle());
    invalidateShadow();
}

void Window::watchScreen()
{
    connect(screen(), &QScreen::geometryChanged, this, &Window::applyScaleOfScreen, Qt::UniqueConnection);
}

/// On Wayland, a shown window keeps the scale that its screen had when the window appeared there. Fractions are the
/// exception: Qt 6.8 applies them itself, and then rounds the screen's scale up, but not the window's.
void Window::applyScaleOfScreen()
{
    if (m_canBeSeen && std::ceil(windowHandle()->devicePixelRatio()) != std::ceil(screen()->devicePixelRatio())) {
        hide();
        windowHandle()->destroy();
        show();
    }
}

void Window::updateCanBeSeen()
{
    const bool canBeSeen = tunedeck::canBeSeen(*windowHandle());
    if (canBeSeen == m_canBeSeen) {
        return;
    }
    m_canBeSeen = canBeSeen;
    m_hasBeenSeen |= canBeSeen;
    if (canBeSeen) {
        correctPlace(*windowHandle());
    }
    Q_EMIT canBeSeenChanged(canBeSeen);
}

/// Window managers maximise windows unasked. The skin cannot fill a screen.
void Window::leaveStatesThatFillTheScreen()
{
    const Qt::WindowStates state = windowState() & ~(Qt::WindowMaximized | Qt::WindowFullScreen);
    if (state != windowState()) {
        setWindowState(state);
    }
}

/// Once the window has left the screen it needs no confirmation, which would wake the program.
void Window::watchMinimisation()
{
    if (!isMinimized() || !windowHandle()->isExposed()) {
        m_minimisation.stop();
    } else if (!m_minimisation.isActive()) {
        m_minimisation.start();
    }
}

/// Tiling window managers minimise nothing, but Qt reports a window as minimised as soon as it asks for that.
void Window::confirmMinimisation()
{
    if (!isIconic(*windowHandle())) {
        qCDebug(windowLog) << "the window manager has not minimised it";
        setWindowState(windowState() & ~Qt::WindowMinimized);
    }
}

/// Clicks on the shadow go to what is behind the window, except close to the edges that resize it.
void Window::updateInputRegion()
{
    const int grip = std::min(WindowDrag::edgeWidth, m_shadowMargins.left());
    setInputRegion(*windowHandle(), contentRect().adjusted(-grip, 0, grip, 0));
}

void Window::applyLevel()
{
    const Qt::WindowFlags flags = windowFlags().setFlag(Qt::WindowStaysOnTopHint, m_level == WindowLevel::Floating);
    if (flags == windowHandle()->flags()) {
        return;
    }
    qCDebug(windowLog) << "level" << (m_level == WindowLevel::Floating ? "floating" : "normal");
    // Otherwise the widget restores its own flags when it is shown.
    overrideWindowFlags(flags);
    windowHandle()->setFlags(flags);
    setFloatingType(*windowHandle());
    if (!isVisible()) {
        // On X11, Qt replaces the native window when it is shown with another level. That is too late for its frame
        // extents.
        windowHandle()->destroy();
        windowHandle()->create();
    }
}

} // namespace tunedeck
