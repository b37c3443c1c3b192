// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicConnectorTrack.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>
#include <optional>

class QAction;
class QMenu;
class QWindow;

namespace tunedeck {

class AboutPinstripeView;
class AboutWindow;
class Appearance;
class MusicConnector;
class UserDefaults;
class WindowActivation;

/// The application's delegate and the target of the commands that belong to no window. It registers the settings,
/// forces the light appearance or lets it go, answers the dock, and hands playback commands on to the connector.
class AppDelegate : public QObject {
    Q_OBJECT
    Q_PROPERTY(
        bool isAppearanceClassic READ isAppearanceClassic WRITE setAppearanceClassic NOTIFY isAppearanceClassicChanged)

public:
    /// All references must outlive the delegate.
    AppDelegate(MusicConnector &musicConnector, UserDefaults &defaults, Appearance &appearance,
        const WindowActivation &windowActivation, QObject *parent = nullptr);
    ~AppDelegate() override;

    /// The main menu's play/pause item, whose title the dock menu shows.
    void setPlayPauseMenuItem(QAction *item);
    [[nodiscard]] const std::optional<MusicConnectorTrack> &currentTrackInfo() const;
    void setCurrentTrackInfo(const std::optional<MusicConnectorTrack> &track);
    [[nodiscard]] bool isAppearanceClassic() const;
    /// True forces the light appearance on the whole application, its menus included.
    void setAppearanceClassic(bool classic);
    /// Null until it is first displayed.
    [[nodiscard]] AboutWindow *aboutWindow() const;
    /// What lies behind the contents of the about window. One for the whole run.
    [[nodiscard]] AboutPinstripeView &pinstripesView();

    /// Registers the settings' defaults, and so comes before anything reads a setting.
    void applicationDidFinishLaunching();
    void applicationWillTerminate();
    /// The program was started again, or its icon in the dock clicked. Whether the platform should go on with its own
    /// handling.
    bool applicationShouldHandleReopen(bool hasVisibleWindows);
    /// Built anew on every call.
    [[nodiscard]] std::unique_ptr<QMenu> applicationDockMenu();

    /// Whether `item` is enabled.
    [[nodiscard]] bool validateMenuItem(const QAction &item) const;
    /// Turns Music's volume up or down as the identifier of `sender` says.
    void volumeButtonPressed(const QAction &sender);
    /// They tell the stripes whether the about window is key.
    void windowDidBecomeKey(const QWindow *window);
    void windowDidResignKey(const QWindow *window);

public Q_SLOTS:
    void playPausePressed();
    /// Does nothing where nothing plays.
    void pausePressed();
    void nextPressed();
    void prevPressed();
    void openMusicApp();
    void toggleKeepMainWindowAboveOtherWindows();
    void preferencesButtonAction();
    /// Makes the about window on the first call, and brings it to the front on every call.
    void displayAboutWindow();
    /// At its first page.
    void openHelp();
    void openTermsAndConditions();

Q_SIGNALS:
    void isAppearanceClassicChanged(bool classic);
    void preferencesRequested();
    void helpRequested(const QString &anchor, const QString &book);

private:
    /// Of two that are absent, too.
    [[nodiscard]] bool isAboutWindow(const QWindow *window) const;
    void openHelpAnchor(const QString &anchor);

    MusicConnector &m_musicConnector;
    UserDefaults &m_defaults;
    Appearance &m_appearance;
    std::unique_ptr<AboutWindow> m_aboutWindow;
    std::unique_ptr<AboutPinstripeView> m_pinstripesView; ///< in the window, so it goes before it
    QPointer<QAction> m_playPauseMenuItem;
    std::optional<MusicConnectorTrack> m_currentTrackInfo;
    bool m_isAppearanceClassic = true;
};

} // namespace tunedeck
