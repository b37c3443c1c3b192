// SPDX-License-Identifier: MIT
#pragma once

#include "app/DesktopFont.h"
#include "app/SoftwareUpdater.h"
#include "app/sound/FollowedPlayerSound.h"
#include "music/MusicWithSound.h"
#include "music/mpris/MprisMusicApplication.h"
#include "platform/ActivationToken.h"
#include "platform/Appearance.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "portal/DesktopIntegration.h"
#include "x11/KeyRepeatFilter.h"
#include "x11/KeyboardGrabFilter.h"

#include <QObject>

#include <memory>

namespace tunedeck {

class Application;
class ApplicationInstance;
class DockMenuServer;
class SessionBus;

/// Connects the application to the desktop: the session bus, the settings, the players and the dock. One process per
/// session has a Program. It makes the window while the players are read, and opens it as soon as they have been, at
/// the latest after 100 ms.
class Program : public QObject {
    Q_OBJECT

public:
    enum class StartedBy { User, Session };

    /// The references must outlive this object. `token` is the one that this process was started with.
    Program(SessionBus &sessionBus, ApplicationInstance &instance, ActivationToken token, StartedBy startedBy);
    ~Program() override;

Q_SIGNALS:
    /// The user wants the program to restart.
    void restartRequested();

private:
    void makeApplication();
    void start();
    void connectKeptAbove();
    void show();
    void activate(const ActivationToken &token);
    void applyBus();
    /// Finds out soon whether the connection to the bus is at fault when nothing is heard.
    void checkBusWhenSilent();
    void serveDockMenu();
    void beginDesktopIntegration();

    SessionBus &m_sessionBus;
    ApplicationInstance &m_instance;
    ActivationToken m_token;
    StartedBy m_startedBy;
    UserDefaults m_defaults;
    Appearance m_appearance;
    const DesktopFont m_desktopFont{m_appearance};
    const KeyboardGrabFilter m_keyboardGrabFilter;
    const KeyRepeatFilter m_keyRepeatFilter;
    const WindowActivation m_windowActivation;
    ApplicationLauncher m_launcher;
    MprisMusicApplication m_music;
    FollowedPlayerSound m_sound{m_music};
    MusicWithSound m_musicWithSound{m_music, m_sound};
    SoftwareUpdater m_updater;
    DesktopIntegration m_desktopIntegration;
    std::unique_ptr<Application> m_application;
    bool m_isStarted = false; ///< the application may be used
    std::unique_ptr<DockMenuServer> m_dockMenu;
};

} // namespace tunedeck
