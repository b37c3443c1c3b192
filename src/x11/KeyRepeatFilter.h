// SPDX-License-Identifier: MIT
#pragma once

#include <QGuiApplication>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWindow>

#include <memory>

class QKeyEvent;

namespace tunedeck {

/// Tells a key that repeats from one that is released and pressed again. On X11 a held key sends a release and a press
/// with the same time, and Qt takes them for real ones unless it has received both at once. A button would then be
/// clicked many times a second.
///
/// The filter keeps each release for a few milliseconds. If the press of the same time follows, windows get both as the
/// repetition that they are, and shortcuts that do not repeat are not used again.
class KeyRepeatFilter : public QObject {
    Q_OBJECT

public:
    /// Qt's application must exist before the filter and outlive it. The filter does nothing unless `isNeeded`.
    explicit KeyRepeatFilter(
        bool isNeeded = QGuiApplication::platformName() == QLatin1String("xcb"), QObject *parent = nullptr);
    ~KeyRepeatFilter() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    [[nodiscard]] bool overrideRepeatedShortcut(const QWindow &window, QKeyEvent &asked) const;
    [[nodiscard]] bool filterPress(QWindow &window, const QKeyEvent &press);
    [[nodiscard]] bool keepRelease(QWindow &window, const QKeyEvent &release);
    [[nodiscard]] bool isRepetition(const QWindow &window, const QKeyEvent &press) const;
    void sendRepetition(QWindow &window, const QKeyEvent &press);
    void sendRelease();
    void send(QWindow &window, QKeyEvent &event);

    QPointer<QWindow> m_window;
    std::unique_ptr<QKeyEvent> m_release;
    QTimer m_timer{this};
    bool m_isSending = false;
};

} // namespace tunedeck
