// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1String>
#include <QMainWindow>

namespace tunedeck {

class UserDefaults;

/// The preferences' window, as big as its contents want it. It opens where it was closed last, also in another run, and
/// closes on Escape and Ctrl+W.
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
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    /// To where the saved frame begins; without one that lies on a screen, to the middle of the screen that the user
    /// works on. Wholly onto that screen, as far as it fits.
    void restoreFrame();
    void saveFrame();
    [[nodiscard]] QSize expectedFrameSize() const;

    UserDefaults &m_defaults;
};

} // namespace tunedeck
