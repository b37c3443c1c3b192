// SPDX-License-Identifier: MIT
#pragma once

#include "app/AppDelegate.h"
#include "music/MusicConnector.h"
#include "skin/looks/SkinEnvironment.h"

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
class SeenPlayers;
class Updater;
class UserDefaults;
class ViewController;
class WindowActivation;
class WindowController;

/// The program put together on top of what the desktop and Music give it: the one connector, the application's
/// delegate, the main window with the player in it, the menus, and the windows that these open.
class Application : public QObject {
    Q_OBJECT

public:
    /// All of it must outlive the application.
    struct Environment {
        MusicApplication &musicApp;
        UserDefaults &defaults;
        Appearance &appearance;
        const WindowActivation &windowActivation;
        SeenPlayers &players;
        Updater &updater;
    };

    /// Shows nothing yet.
    explicit Application(const Environment &environment, QObject *parent = nullptr);
    ~Application() override;

    [[nodiscard]] AppDelegate &delegate();
    [[nodiscard]] MusicConnector &musicConnector();
    [[nodiscard]] WindowController &windowController();
    [[nodiscard]] ViewController &viewController();
    /// This and the menus are made when they are first asked for, at the latest after the window is shown.
    PlaylistViewController &playlistViewController();
    MainMenu &mainMenu();
    /// These two windows are made when the user first asks for them.
    AppPreferencesWindowController &preferencesWindowController();
    HelpWindow &helpWindow();

public Q_SLOTS:
    void showMainWindow();
    /// The user started the program again, or chose it in the dock.
    void reopen();

Q_SIGNALS:
    /// The user changed a setting that takes effect with a restart, and wants it now.
    void restartRequested();

private:
    void connectPlayer();
    void connectWindowButtons();
    void connectMenus();
    void connectXWayland();
    void connectOtherWindows();
    void showDockTile(const QString &imageName);

    UserDefaults &m_defaults;
    SeenPlayers &m_players;
    Updater &m_updater;
    SkinEnvironment m_skinEnvironment;
    MusicConnector m_musicConnector;
    AppDelegate m_delegate;
    std::unique_ptr<WindowController> m_windowController;
    PlayerView *m_playerView; ///< the window's
    QString m_dockTile;
    QTimer m_dockTileTimer{this};
    std::unique_ptr<ViewController> m_viewController;
    std::unique_ptr<PlaylistViewController> m_playlistViewController;
    std::unique_ptr<MainMenu> m_mainMenu;
    std::unique_ptr<AppPreferencesWindowController> m_preferencesWindowController;
    std::unique_ptr<HelpWindow> m_helpWindow;
};

} // namespace tunedeck
