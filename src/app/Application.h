// SPDX-License-Identifier: MIT
#pragma once

#include "AppDelegate.h"
#include "MusicConnector.h"
#include "SkinEnvironment.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>

namespace tunedeck {

class Appearance;
class MainMenu;
class MusicApplication;
class PlayerView;
class PlaylistViewController;
class UserDefaults;
class ViewController;
class WindowActivation;
class WindowController;

/// The program put together on top of what the desktop and Music give it: the one connector, the application's
/// delegate, the main window with the player in it, and the menus.
class Application : public QObject {
    Q_OBJECT

public:
    /// All of it must outlive the application.
    struct Environment {
        MusicApplication &musicApp;
        UserDefaults &defaults;
        Appearance &appearance;
        const WindowActivation &windowActivation;
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

public Q_SLOTS:
    void showMainWindow();
    /// The user started the program again, or chose it in the dock.
    void reopen();

private:
    void connectPlayer();
    void connectWindowButtons();
    void connectMenus();
    void showDockTile(const QString &imageName);

    UserDefaults &m_defaults;
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
};

} // namespace tunedeck
