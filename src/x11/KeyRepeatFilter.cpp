// SPDX-License-Identifier: MIT
#include "x11/KeyRepeatFilter.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QWidget>

#include <algorithm>
#include <chrono>
#include <utility>

namespace tunedeck {

namespace {
/// The X server sends both events at once, so this is long enough, and too short to be noticed.
constexpr std::chrono::milliseconds patience{20};

std::unique_ptr<QKeyEvent> repetitionOf(const QKeyEvent &event, QEvent::Type type)
{
    auto repetition = std::make_unique<QKeyEvent>(type, event.key(), event.modifiers(), event.nativeScanCode(),
        event.nativeVirtualKey(), event.nativeModifiers(), event.text(), true, static_cast<quint16>(event.count()));
    repetition->setTimestamp(event.timestamp());
    return repetition;
}
/// Shortcuts are found before a window gets the key, so Qt would use them again.
bool isShortcutThatDoesNotRepeat(const QKeyEvent &key)
{
    const QKeySequence sequence(key.keyCombination());
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::ranges::any_of(windows, [&sequence](const QWidget *window) {
        const QList<QAction *> actions = window->actions();
        return std::ranges::any_of(actions, [&sequence](const QAction *action) {
            return !action->autoRepeat() && action->shortcuts().contains(sequence);
        });
    });
}
} // namespace

KeyRepeatFilter::KeyRepeatFilter(bool isNeeded, QObject *parent)
    : QObject(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(patience);
    connect(&m_timer, &QTimer::timeout, this, &KeyRepeatFilter::sendRelease);
    if (isNeeded) {
        qApp->installEventFilter(this);
    }
}

KeyRepeatFilter::~KeyRepeatFilter() = default;

bool KeyRepeatFilter::eventFilter(QObject *watched, QEvent *event)
{
    if (m_isSending || !watched->isWindowType()) {
        return false;
    }
    auto &window = static_cast<QWindow &>(*watched);
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        return overrideRepeatedShortcut(window, static_cast<QKeyEvent &>(*event));
    case QEvent::KeyPress:
        return filterPress(window, static_cast<const QKeyEvent &>(*event));
    case QEvent::KeyRelease:
        return keepRelease(window, static_cast<const QKeyEvent &>(*event));
    default:
        return false;
    }
}

bool KeyRepeatFilter::overrideRepeatedShortcut(const QWindow &window, QKeyEvent &asked) const
{
    if (!isRepetition(window, asked) || !isShortcutThatDoesNotRepeat(asked)) {
        return false;
    }
    asked.accept();
    return true;
}

bool KeyRepeatFilter::filterPress(QWindow &window, const QKeyEvent &press)
{
    if (isRepetition(window, press)) {
        sendRepetition(window, press);
        return true;
    }
    // The order of the keys stays.
    sendRelease();
    return false;
}

bool KeyRepeatFilter::keepRelease(QWindow &window, const QKeyEvent &release)
{
    sendRelease();
    if (release.isAutoRepeat()) {
        return false;
    }
    m_window = &window;
    m_release.reset(release.clone());
    m_timer.start();
    return true;
}

bool KeyRepeatFilter::isRepetition(const QWindow &window, const QKeyEvent &press) const
{
    return m_release && m_window == &window && m_release->nativeScanCode() == press.nativeScanCode()
        && m_release->key() == press.key() && m_release->timestamp() == press.timestamp();
}

void KeyRepeatFilter::sendRepetition(QWindow &window, const QKeyEvent &press)
{
    m_timer.stop();
    m_release.reset();
    const QPointer<QWindow> receiver(&window);
    const auto again = repetitionOf(press, QEvent::KeyPress);
    send(window, *repetitionOf(press, QEvent::KeyRelease));
    if (receiver) {
        send(window, *again);
    }
}

void KeyRepeatFilter::sendRelease()
{
    m_timer.stop();
    const auto release = std::exchange(m_release, nullptr);
    if (release && m_window) {
        send(*m_window, *release);
    }
}

void KeyRepeatFilter::send(QWindow &window, QKeyEvent &event)
{
    m_isSending = true;
    QCoreApplication::sendEvent(&window, &event);
    m_isSending = false;
}

} // namespace tunedeck
