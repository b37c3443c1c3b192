// SPDX-License-Identifier: MIT
#include "window/FrameAutosave.h"

#include "platform/UserDefaults.h"
#include "platform/windowSystem.h"
#include "window/RoomForDrawer.h"
#include "window/Window.h"
#include "window/WindowPlace.h"
#include "x11/knowsItsPlace.h"

#include <QCoreApplication>
#include <QEvent>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <chrono>

namespace tunedeck {

namespace {
/// A window that has stayed for so long is where the user wants it. A drag must not write the settings on its way.
constexpr std::chrono::milliseconds restTime{1000};
} // namespace

FrameAutosave::FrameAutosave(Window &window, const RoomForDrawer &room, UserDefaults &defaults, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_room(room)
    , m_defaults(defaults)
{
    restore();
    m_saveTimer.setObjectName(QStringLiteral("save frame"));
    m_saveTimer.setSingleShot(true);
    m_saveTimer.setInterval(restTime);
    connect(&m_saveTimer, &QTimer::timeout, this, &FrameAutosave::save);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &FrameAutosave::saveIfPending);
    m_window.installEventFilter(this);
}

bool FrameAutosave::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
        // Qt destroys the native window as it closes. Another one that takes its place has not been placed.
        if (m_window.isVisible()) {
            m_saveTimer.start();
        }
        break;
    case QEvent::Close:
        saveIfPending();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void FrameAutosave::restore()
{
    QSize size = m_window.contentRect().size();
    if (const qlonglong width = m_defaults.integerForKey(widthKey)) {
        size.setWidth(
            static_cast<int>(std::clamp<qlonglong>(width, Window::minimumContentWidth, Window::maximumContentWidth)));
        m_window.resizeContent(size);
    }
    const auto place = WindowPlace::fromText(m_defaults.stringForKey(placeKey));
    const QList<ScreenArea> screens = ScreenArea::all();
    if (place && !screens.isEmpty() && !isWayland()) {
        m_window.setContentGeometry({place->topLeftOn(screens, size), size});
        // The native window begins at 0, 0, and Qt sends it no place that it already has: it would count as not placed.
        m_window.windowHandle()->setGeometry(m_window.geometry());
    }
}

void FrameAutosave::save()
{
    const int width = m_window.contentRect().width();
    if (width != m_defaults.integerForKey(widthKey)) {
        m_defaults.setValue(widthKey, width);
    }
    if (!knowsItsPlace(*m_window.windowHandle())) {
        return;
    }
    const ScreenArea screen = ScreenArea::of(*m_window.screen());
    const QString place = WindowPlace{m_room.placeWithoutDrawer(), screen.name, screen.geometry}.text();
    if (place != m_defaults.stringForKey(placeKey)) {
        m_defaults.setValue(placeKey, place);
    }
}

void FrameAutosave::saveIfPending()
{
    if (m_saveTimer.isActive()) {
        m_saveTimer.stop();
        save();
    }
}

} // namespace tunedeck
