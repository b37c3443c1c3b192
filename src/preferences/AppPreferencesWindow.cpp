// SPDX-License-Identifier: MIT
#include "preferences/AppPreferencesWindow.h"

#include "platform/UserDefaults.h"
#include "widgets/movedInto.h"

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QScreen>
#include <QShowEvent>
#include <QStringList>
#include <QStyle>
#include <QWindow>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>

namespace tunedeck {

namespace {
/// No desktop is as large.
constexpr int farthest = 100'000;

std::optional<QRect> frameFromText(const QString &text)
{
    const QStringList parts = text.split(u' ');
    std::array<int, 4> numbers{};
    if (parts.size() != static_cast<qsizetype>(numbers.size())) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        bool isNumber = false;
        numbers.at(i) = parts.at(static_cast<qsizetype>(i)).toInt(&isNumber);
        if (!isNumber || numbers.at(i) < -farthest || numbers.at(i) > farthest) {
            return std::nullopt;
        }
    }
    const auto [x, y, width, height] = numbers;
    const QRect frame(x, y, width, height);
    return frame.isValid() ? std::optional(frame) : std::nullopt;
}

QString textFromFrame(const QRect &frame)
{
    return QStringLiteral("%1 %2 %3 %4").arg(frame.x()).arg(frame.y()).arg(frame.width()).arg(frame.height());
}

int visibleArea(const QScreen &screen, const QRect &frame)
{
    const QRect visible = screen.availableGeometry().intersected(frame);
    return visible.width() * visible.height();
}

/// The screen that shows most of `frame`. Null if no screen shows any of it.
QScreen *screenWithMostOf(const QRect &frame)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    const auto most = std::max_element(screens.begin(), screens.end(),
        [&frame](const QScreen *a, const QScreen *b) { return visibleArea(*a, frame) < visibleArea(*b, frame); });
    return most != screens.end() && visibleArea(**most, frame) > 0 ? *most : nullptr;
}

QScreen *screenOfUser()
{
    if (const QWidget *active = QApplication::activeWindow()) {
        return active->screen();
    }
    QScreen *underPointer = QGuiApplication::screenAt(QCursor::pos());
    return underPointer ? underPointer : QGuiApplication::primaryScreen();
}
} // namespace

AppPreferencesWindow::AppPreferencesWindow(UserDefaults &defaults)
    : m_defaults(defaults)
{
    // Closing the player quits the program, even if this window is open.
    setAttribute(Qt::WA_QuitOnClose, false);
    // The context menu of a QMainWindow would let the user hide the toolbar.
    setContextMenuPolicy(Qt::NoContextMenu);
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] {
        if (isVisible()) {
            saveFrame();
        }
    });
}

void AppPreferencesWindow::cancelOperation()
{
    close();
}

void AppPreferencesWindow::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    windowHandle()->installEventFilter(this);
}

bool AppPreferencesWindow::eventFilter(QObject *watched, QEvent *event)
{
    // The last moment before the window system gets the window. A place given any earlier does not outlast Qt's own
    // preparations.
    if (watched == windowHandle() && event->type() == QEvent::Show && !event->spontaneous()) {
        restoreFrame();
    }
    return QMainWindow::eventFilter(watched, event);
}

void AppPreferencesWindow::closeEvent(QCloseEvent *event)
{
    saveFrame();
    QMainWindow::closeEvent(event);
}

void AppPreferencesWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Cancel)) {
        cancelOperation();
        return;
    }
    QMainWindow::keyPressEvent(event);
}

void AppPreferencesWindow::restoreFrame()
{
    const QSize size = expectedFrameSize();
    const auto saved = frameFromText(m_defaults.stringForKey(windowFrameAutosaveNameIdentifier));
    if (const QScreen *screen = saved ? screenWithMostOf(*saved) : nullptr) {
        moveFrame(movedInto(screen->availableGeometry(), QRect(saved->topLeft(), size)));
        return;
    }
    const bool hasPlace = testAttribute(Qt::WA_Moved);
    if (hasPlace) {
        return;
    }
    if (const QScreen *screen = screenOfUser()) {
        const QRect area = screen->availableGeometry();
        moveFrame(movedInto(area, QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, area)));
    }
}

/// move() would place the window without its frame, as long as the frame is unknown: the window would climb by a title
/// bar at every start.
void AppPreferencesWindow::moveFrame(QPoint topLeft)
{
    windowHandle()->setFramePosition(topLeft);
}

void AppPreferencesWindow::saveFrame()
{
    // The widget may still know no frame, where the window manager has added it late. A window that was never shown has
    // no place yet.
    if (const QWindow *native = windowHandle()) {
        m_defaults.setValue(windowFrameAutosaveNameIdentifier, textFromFrame(native->frameGeometry()));
    }
}

/// The frame that the window manager adds is unknown until the window is shown.
QSize AppPreferencesWindow::expectedFrameSize() const
{
    const QSize known = frameGeometry().size();
    return known != size() ? known : size() + QSize(0, style()->pixelMetric(QStyle::PM_TitleBarHeight));
}

} // namespace tunedeck
