// SPDX-License-Identifier: MIT
#include "app/Program.h"

#include "app/Application.h"
#include "app/ApplicationInstance.h"
#include "app/DesktopAction.h"
#include "app/activateWithToken.h"
#include "dock/DockMenuServer.h"
#include "platform/SessionBus.h"
#include "player/ViewController.h"
#include "x11/activateOnX11.h"

#include <QApplication>
#include <QTimer>
#include <QWindow>

#include <chrono>
#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

/// The window opens with the track on it, unless the players take longer than anyone should wait for a window.
constexpr auto longestWaitForMusic = 100ms;
} // namespace

Program::Program(const SessionBus &sessionBus, ApplicationInstance &instance, Startup startup)
    : m_sessionBus(sessionBus)
    , m_instance(instance)
    , m_startup(std::move(startup))
    , m_appearance(m_defaults, sessionBus.connection())
    , m_music(sessionBus.connection(), m_defaults, m_launcher)
    , m_updater(sessionBus.connection())
{
    connect(&m_launcher, &ApplicationLauncher::failed, &QApplication::beep);
    connect(&m_windowActivation, &WindowActivation::windowDidBecomeKey, &m_music, &MprisMusicApplication::sampleAnew);
    connect(&m_instance, &ApplicationInstance::activated, this, &Program::activate);
    connect(&m_instance, &ApplicationInstance::startupLeft, this, &endStartupOnX11);
    connect(&m_sessionBus, &SessionBus::changed, this, &Program::takeBus);
    connect(&m_music, &MprisMusicApplication::ready, this, &Program::start);
    connect(&m_music, &MprisMusicApplication::ready, &m_instance, &ApplicationInstance::tellMusicActions);
    QTimer::singleShot(m_music.isReady() ? 0ms : longestWaitForMusic, this, &Program::start);
}

Program::~Program() = default;

void Program::start()
{
    if (m_application) {
        return;
    }
    m_application = std::make_unique<Application>(
        Application::Environment{m_music, m_defaults, m_appearance, m_windowActivation, m_players, m_updater});
    connect(m_application.get(), &Application::startAnewRequested, this, &Program::startAnewRequested);
    AppDelegate &delegate = m_application->delegate();
    connect(&m_instance, &ApplicationInstance::actionRequested, &delegate,
        [&delegate](DesktopAction action) { perform(action, delegate); });
    show();
    m_instance.tellActions();
    if (m_music.isReady()) {
        m_instance.tellMusicActions();
    }
    // Nobody waits for it to see the window.
    QMetaObject::invokeMethod(this, &Program::serveDockMenu, Qt::QueuedConnection);
}

void Program::show()
{
    if (m_instance.isAskedForActionsAlone()) {
        showWithoutActivating(*m_application);
        endStartupOnX11(m_startup);
    } else {
        showByRight(*m_application, m_startup);
    }
}

void Program::activate(const Startup &startup)
{
    if (m_application) {
        reopenByRight(*m_application, startup);
    } else {
        endStartupOnX11(std::exchange(m_startup, startup));
    }
}

void Program::takeBus()
{
    m_instance.setBus(m_sessionBus.connection());
    m_appearance.setBus(m_sessionBus.connection());
    m_music.setBus(m_sessionBus.connection());
    if (m_application) {
        serveDockMenu();
    }
}

void Program::serveDockMenu()
{
    // The one before gives up its place on the bus first.
    m_dockMenu.reset();
    m_dockMenu = std::make_unique<DockMenu>(
        m_sessionBus.connection(), [this] { return m_application->delegate().applicationDockMenu(); });
    const ViewController &viewController = m_application->viewController();
    const MusicConnector &musicConnector = m_application->musicConnector();
    connect(&viewController, &ViewController::currentTrackInfoChanged, m_dockMenu.get(), &DockMenu::update);
    connect(&viewController, &ViewController::playPauseTitleChanged, m_dockMenu.get(), &DockMenu::update);
    connect(&musicConnector, &MusicConnector::isMusicAppRunningChanged, m_dockMenu.get(), &DockMenu::update);
    connect(&musicConnector, &MusicConnector::feedTypeChanged, m_dockMenu.get(), &DockMenu::update);
    connect(&m_defaults, &UserDefaults::valueChanged, m_dockMenu.get(), &DockMenu::update);
}

} // namespace tunedeck
