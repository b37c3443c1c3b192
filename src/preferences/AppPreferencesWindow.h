// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1String>
#include <QMainWindow>

namespace tunedeck {

class UserDefaults;

/// The preferences window, as large as its contents need. It opens where it was last closed, even in an earlier run.
/// Escape closes it.
class AppPreferencesWindow : public QMainWindow {
    Q_OBJECT

public:
    /// The setting with the window's frame: "x y width height", in points of the desktop.
    static constexpr QLatin1String windowFrameAutosaveNameIdentifier{"PreferencesWindow"};

    /// `defaults` must outlive the window.
    explicit AppPreferencesWindow(UserDefaults &defaults);

public Q_SLOTS:
    void cancelOperation();

protected:
    /// Watches the native window.
    bool eventFilter(QObject *watched, QEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    /// Moves the window to the top left corner of the saved frame. If that is on no screen, the window keeps the place
    /// that it was given, or if it has none, goes to the middle of the screen that the user works on. Keeps the window
    /// on its screen as far as it fits.
    void restoreFrame();
    void moveFrame(QPoint topLeft);
    void saveFrame();
    [[nodiscard]] QSize expectedFrameSize() const;

    UserDefaults &m_defaults;
};

} // namespace tunedeck
