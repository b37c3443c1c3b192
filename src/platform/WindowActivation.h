// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>

class QWindow;

namespace tunedeck {

/// Knows which window of the program is key and which is main. The key window is Qt's focus window. The main window is
/// the one that the user works with: a panel (a window of type Qt::Tool or Qt::Dialog) can be key but not main, so the
/// main window stays main while a panel is key. Popups and tooltips are neither, and change nothing.
///
/// A change of the focus emits the signals in this order: resign key, resign main, become key, become main. By then
/// keyWindow() and mainWindow() return the new windows. A window that is destroyed while key or main emits no signal.
class WindowActivation : public QObject {
    Q_OBJECT

public:
    explicit WindowActivation(QObject *parent = nullptr);

    /// Null while another program has the keyboard focus.
    [[nodiscard]] QWindow *keyWindow() const;
    /// Null while another program has the keyboard focus.
    [[nodiscard]] QWindow *mainWindow() const;

Q_SIGNALS:
    void windowDidBecomeKey(QWindow *window);
    /// Comes with windowDidBecomeKey(), for receivers that know no windows.
    void anyWindowDidBecomeKey();
    void windowDidResignKey(QWindow *window);
    void windowDidBecomeMain(QWindow *window);
    void windowDidResignMain(QWindow *window);

private:
    void follow(QWindow *focusWindow);

    QPointer<QWindow> m_keyWindow;
    QPointer<QWindow> m_mainWindow;
    QPointer<QWindow> m_lastMainWindow;
};

} // namespace tunedeck
