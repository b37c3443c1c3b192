// SPDX-License-Identifier: MIT
#pragma once

#include "above/AboveWay.h"
#include "music/MusicConnectorTrack.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <memory>
#include <optional>

class QAction;
class QMenu;
class QSystemTrayIcon;
class QWindow;

namespace tunedeck {

class AboutPinstripeView;
class AboutWindow;
class Appearance;
class DesktopEntries;
class FollowablePlayers;
class MusicApplication;
class MusicConnector;
class UserDefaults;
class WindowActivation;
struct ActivationToken;

/// Listens to the application's events, and carries out the commands that belong to no window. Registers the settings'
/// defaults, forces the light appearance if the user wants it, answers the dock, and passes playback commands to the
/// connector.
class AppDelegate : public QObject {
    Q_OBJECT
    Q_PROPERTY(
        bool isAppearanceClassic READ isAppearanceClassic WRITE setAppearanceClassic NOTIFY isAppearanceClassicChanged)

public:
    /// All references must outlive the delegate.
    AppDelegate(MusicConnector &musicConnector, UserDefaults &defaults, Appearance &appearance,
        const WindowActivation &windowActivation, FollowablePlayers &players, DesktopEntries &desktopEntries,
        QObject *parent = nullptr);
    ~AppDelegate() override;

    [[nodiscard]] MusicApplication &musicApp() const;

    /// The main menu's play/pause item, whose title the dock menu shows.
    void setPlayPauseMenuItem(QAction *item);
    [[nodiscard]] const std::optional<MusicConnectorTrack> &currentTrackInfo() const { return m_currentTrackInfo; }
    void setCurrentTrackInfo(const std::optional<MusicConnectorTrack> &track) { m_currentTrackInfo = track; }
    [[nodiscard]] bool isAppearanceClassic() const { return m_isAppearanceClassic; }
    /// True forces the light appearance on the whole application, including its menus.
    void setAppearanceClassic(bool classic);
    /// The program's icon in the desktop's status bar. Null: the program shows none yet.
    [[nodiscard]] QSystemTrayIcon *statusItem() const { return m_statusItem.get(); }
    /// Null until it is first displayed.
    [[nodiscard]] AboutWindow *aboutWindow() const { return m_aboutWindow.get(); }
    /// The background of the about window. The same one for the whole run.
    [[nodiscard]] AboutPinstripeView &pinstripesView() { return *m_pinstripesView; }

    /// Registers the settings' defaults. Call it before anything reads a setting.
    void applicationDidFinishLaunching();
    void applicationWillTerminate();
    /// The program was started again, or its icon in the dock was clicked. Returns whether the platform should do its
    /// own handling too.
    bool applicationShouldHandleReopen(bool hasVisibleWindows);
    /// Builds a new menu on every call.
    [[nodiscard]] std::unique_ptr<QMenu> applicationDockMenu();

    /// Returns whether `item` is enabled.
    [[nodiscard]] bool validateMenuItem(const QAction &item) const;
    /// Why Music cannot take the command of `item`, which is then disabled; empty if it can.
    [[nodiscard]] QString obstacleTo(const QAction &item) const;
    /// Why the command with this MenuItemIdentifier cannot be carried out now, for a user who sees no menu; empty if it
    /// can.
    [[nodiscard]] QString obstacleToCommand(const QString &identifier) const;
    /// Why the user cannot seek now, for a user who sees no slider; empty if it is possible.
    [[nodiscard]] QString obstacleToSeeking() const;
    /// The title of the command that shows the player's own window.
    [[nodiscard]] QString showPlayerTitle() const;
    /// Turns Music's volume up or down, depending on the identifier of `sender`.
    void volumeButtonPressed(const QAction &sender);
    /// These two tell the stripes whether the about window is key.
    void windowDidBecomeKey(const QWindow *window);
    void windowDidResignKey(const QWindow *window);
    /// Brings the player's own window to the front. The player takes the keyboard focus with `token`.
    void showPlayerWithToken(const ActivationToken &token);

public Q_SLOTS:
    void playPausePressed();
    /// Does nothing while nothing plays.
    void pausePressed();
    void nextPressed();
    void prevPressed();
    void openMusicApp();
    /// These two go five seconds on or back in the track.
    void seekForward();
    void seekBackward();
    /// These two change Music's volume by the volume slider's step.
    void turnVolumeUp();
    void turnVolumeDown();
    /// The same for a user who asks for it in a menu of this program.
    void showPlayer();
    void toggleKeepMainWindowAboveOtherWindows();
    void preferencesButtonAction();
    /// Creates the about window on the first call, and brings it to the front on every call.
    void displayAboutWindow();
    /// Opens the help's first page.
    void openHelp();
    void openTermsAndConditions();

Q_SIGNALS:
    void isAppearanceClassicChanged(bool classic);
    void preferencesRequested();
    /// The user wants the window away if it can be seen, and else to see it. It takes the keyboard focus with `token`.
    void showOrHideRequested(const tunedeck::ActivationToken &token);
    /// The same for the drawer with the playlists.
    void playlistsRequested(const tunedeck::ActivationToken &token);
    void helpRequested(const QString &anchor, const QString &book);

private:
    /// How the main window is kept above others; as on X11 without a main window.
    [[nodiscard]] static AboveWay aboveWay();
    void seekBy(double seconds);
    /// Also true if both are null.
    [[nodiscard]] bool isAboutWindow(const QWindow *window) const;
    void openHelpAnchor(const QString &anchor);

    MusicConnector &m_musicConnector;
    UserDefaults &m_defaults;
    Appearance &m_appearance;
    FollowablePlayers &m_players;
    DesktopEntries &m_desktopEntries;
    std::unique_ptr<QSystemTrayIcon> m_statusItem;
    std::unique_ptr<AboutWindow> m_aboutWindow;
    std::unique_ptr<AboutPinstripeView> m_pinstripesView; ///< a child of the window, so it is destroyed first
    QPointer<QAction> m_playPauseMenuItem;
    std::optional<MusicConnectorTrack> m_currentTrackInfo;
    bool m_isAppearanceClassic = true;
};

} // namespace tunedeck
