// SPDX-License-Identifier: MIT
#pragma once

#include "app/DesktopFont.h"
#include "app/MprisSeenPlayers.h"
#include "app/SoftwareUpdater.h"
#include "music/mpris/MprisMusicApplication.h"
#include "platform/ActivationToken.h"
#include "platform/Appearance.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"

#include <QObject>

#include <memory>

namespace tunedeck {

class Application;
class ApplicationInstance;
class DockMenu;
class SessionBus;

/// The one process of the program that runs in a session: what joins the application to the desktop that it runs on.
/// The window opens once the players have been read, or a moment later.
class Program : public QObject {
    Q_OBJECT

public:
    /// The references must outlive this object. `startup` is the right that this process was started with.
    Program(const SessionBus &sessionBus, ApplicationInstance &instance, Startup startup);
    ~Program() override;

Q_SIGNALS:
    /// The user wants the program to end and to begin again.
    void startAnewRequested();

private:
    void start();
    void show();
    void activate(const Startup &startup);
    void takeBus();
    void serveDockMenu();

    const SessionBus &m_sessionBus;
    ApplicationInstance &m_instance;
    Startup m_startup;
    UserDefaults m_defaults;
    Appearance m_appearance;
    const DesktopFont m_desktopFont{m_appearance};
    const WindowActivation m_windowActivation;
    ApplicationLauncher m_launcher;
    MprisMusicApplication m_music;
    PlayersOnTheBus m_players{m_music};
    SoftwareUpdater m_updater;
    std::unique_ptr<Application> m_application;
    std::unique_ptr<DockMenu> m_dockMenu;
};

} // namespace tunedeck
