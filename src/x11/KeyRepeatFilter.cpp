// SPDX-License-Identifier: MIT
#include "x11/KeyRepeatFilter.h"

#include <QKeyEvent>

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
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (!isKey || m_isSending || !watched->isWindowType()) {
        return false;
    }
    auto &window = static_cast<QWindow &>(*watched);
    const auto &key = static_cast<const QKeyEvent &>(*event);
    if (event->type() == QEvent::KeyPress && isRepetition(window, key)) {
        sendRepetition(window, key);
        return true;
    }
    // The order of the keys stays.
    sendRelease();
    return event->type() == QEvent::KeyRelease && keepRelease(window, key);
}

bool KeyRepeatFilter::keepRelease(QWindow &window, const QKeyEvent &release)
{
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
