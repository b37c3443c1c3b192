// SPDX-License-Identifier: MIT
#include "widgets/ActivationAfterPopups.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace tunedeck {

namespace {
/// The widget that fills `window`, or null if `window` is null.
QWidget *widgetOf(const QWindow *window)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto found = std::ranges::find_if(
        windows, [window](const QWidget *widget) { return window && widget->windowHandle() == window; });
    return found == windows.end() ? nullptr : *found;
}

void correctActiveWindow()
{
    QWidget *active = widgetOf(QGuiApplication::focusWindow());
    // On Wayland, the popup that has just closed can still have the keyboard.
    const bool isPopup = active && active->windowType() == Qt::Popup;
    if (!isPopup && active != QApplication::activeWindow()) {
        QT_WARNING_PUSH
        // QWidget::activateWindow() asks the window manager, for which the window is active already.
        QT_WARNING_DISABLE_DEPRECATED
        QApplication::setActiveWindow(active);
        QT_WARNING_POP
    }
}
} // namespace

ActivationAfterPopups::ActivationAfterPopups(QObject *parent)
    : QObject(parent)
{
    qApp->installEventFilter(this);
}

bool ActivationAfterPopups::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Hide && watched->isWidgetType()
        && static_cast<QWidget *>(watched)->windowType() == Qt::Popup && !QApplication::activePopupWidget()) {
        correctActiveWindow();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tunedeck
