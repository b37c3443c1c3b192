// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppDelegate.h"
#include "app/CompanionWindows.h"
#include "music/MusicConnector.h"
#include "skin/looks/SkinEnvironment.h"
#include "widgets/ActivationAfterPopups.h"
#include "widgets/PicturesOfHiddenWindows.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>

namespace tunedeck {

class AppPreferencesWindowController;
class Appearance;
class HelpWindow;
class MainMenu;
class MusicApplication;
class PlayerView;
class PlaylistViewController;
class DesktopEntries;
class DesktopSettings;
class FollowablePlayers;
class Updater;
class UserDefaults;
class ShowWhilePlayer;
class ViewController;
class WindowActivation;
class WindowController;

/// Puts the program together from what the desktop and Music provide: the one connector, the application's delegate,
/// the main window with the player in it, the menus, and the windows that these open.
class Application : public QObject {
    Q_OBJECT

public:
    /// All objects must outlive the application.
    struct Environment {
        MusicApplication &musicApp;
        UserDefaults &defaults;
        Appearance &appearance;
        const WindowActivation &windowActivation;
        FollowablePlayers &players;
        DesktopEntries &desktopEntries;
        Updater &updater;
        DesktopSettings &desktopSettings;
    };

    /// Does not show the main window.
    explicit Application(const Environment &environment, QObject *parent = nullptr);
    ~Application() override;

    [[nodiscard]] AppDelegate &delegate() { return m_delegate; }
    [[nodiscard]] MusicConnector &musicConnector() { return m_musicConnector; }
    [[nodiscard]] WindowController &windowController() { return *m_windowController; }
    [[nodiscard]] ViewController &viewController() { return *m_viewController; }
    /// Creates the drawer's controller on the first call.
    PlaylistViewController &playlistViewController();
    /// Creates the menus and the drawer's controller on the first call, at the latest right after the window is shown.
    MainMenu &mainMenu();
    /// The first call creates the window.
    AppPreferencesWindowController &preferencesWindowController();
    HelpWindow &helpWindow();

public Q_SLOTS:
    void showMainWindow();
    /// The session started the program: shows the window unless the user wants it only while there is a player. It does
    /// not take the keyboard focus.
    void showForSession();
    /// The user started the program again, or chose it in the dock.
    void reopen();

Q_SIGNALS:
    /// The user changed a setting that takes effect with a restart, and wants it now.
    void restartRequested();

private:
    void connectPlayer();
    void connectWindowButtons();
    void connectKeepAbove();
    void connectMenus();
    void connectXWayland();
    void changeXWayland(bool isUsed);
    void connectOtherWindows();
    void connectShowWhilePlayer();
    void showDockTile(const QString &imageName);

    UserDefaults &m_defaults;
    FollowablePlayers &m_players;
    DesktopEntries &m_desktopEntries;
    Updater &m_updater;
    DesktopSettings &m_desktopSettings;
    SkinEnvironment m_skinEnvironment;
    MusicConnector m_musicConnector;
    AppDelegate m_delegate;
    ActivationAfterPopups m_activationAfterPopups;
    PicturesOfHiddenWindows m_picturesOfHiddenWindows;
    std::unique_ptr<WindowController> m_windowController;
    std::unique_ptr<CompanionWindows> m_companionWindows;
    ShowWhilePlayer *m_showWhilePlayer = nullptr;
    PlayerView *m_playerView; ///< owned by the window
    QString m_dockTile;
    QTimer m_dockTileTimer{this};
    std::unique_ptr<ViewController> m_viewController;
    std::unique_ptr<PlaylistViewController> m_playlistViewController;
    std::unique_ptr<MainMenu> m_mainMenu;
    std::unique_ptr<AppPreferencesWindowController> m_preferencesWindowController;
    std::unique_ptr<HelpWindow> m_helpWindow;
};

} // namespace tunedeck
