// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>

class QWindow;

namespace tunedeck {

/// The one source of which window of the program is key (gets the keyboard) and which is main (the one the user works
/// with). A panel, that is a window of type Qt::Tool or Qt::Dialog, can be key but not main: while it is key, the main
/// window stays main. Popups and tooltips are neither: the window they belong to stays what it is.
///
/// One change of the keyboard's focus is told in this order: resign key, resign main, become key, become main. By then
/// keyWindow() and mainWindow() answer the new state. A window that is destroyed while key or main resigns silently.
class WindowActivation : public QObject {
    Q_OBJECT

public:
    explicit WindowActivation(QObject *parent = nullptr);

    /// Null while another program has the keyboard.
    [[nodiscard]] QWindow *keyWindow() const;
    [[nodiscard]] QWindow *mainWindow() const;

Q_SIGNALS:
    void windowDidBecomeKey(QWindow *window);
    /// The same, for those who do not care which one and know no windows.
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
