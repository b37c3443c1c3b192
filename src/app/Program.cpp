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
#include <QPointer>
#include <QTimer>
#include <QWindow>

#include <chrono>
#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

/// The window opens with the track on it, unless the players take longer than this.
constexpr auto longestWaitForMusic = 100ms;
} // namespace

Program::Program(SessionBus &sessionBus, ApplicationInstance &instance, ActivationToken token)
    : m_sessionBus(sessionBus)
    , m_instance(instance)
    , m_token(std::move(token))
    , m_appearance(m_defaults, sessionBus.connection())
    , m_music(sessionBus.connection(), m_defaults, m_launcher)
    , m_updater(sessionBus.connection(), m_defaults)
{
    connect(&m_launcher, &ApplicationLauncher::failed, &QApplication::beep);
    connect(
        &m_windowActivation, &WindowActivation::windowDidBecomeKey, &m_music, &MprisMusicApplication::refreshPlayer);
    connect(&m_instance, &ApplicationInstance::activated, this, &Program::activate);
    connect(&m_instance, &ApplicationInstance::tokenUnused, this, &endStartupNotificationOnX11);
    connect(&m_sessionBus, &SessionBus::changed, this, &Program::applyBus);
    checkBusWhenSilent();
    connect(&m_music, &MprisMusicApplication::ready, this, &Program::start);
    connect(&m_music, &MprisMusicApplication::ready, &m_instance, &ApplicationInstance::deliverMusicActions);
    QTimer::singleShot(m_music.isReady() ? 0ms : longestWaitForMusic, this, &Program::start);
}

Program::~Program() = default;

void Program::checkBusWhenSilent()
{
    connect(&m_music, &MusicApplication::respondingDidChange, this, [this] {
        if (!m_music.isResponding()) {
            m_sessionBus.check();
        }
    });
    connect(&m_windowActivation, &WindowActivation::windowDidBecomeKey, &m_sessionBus, &SessionBus::check);
    m_sessionBus.checkAfterCallsTo(&m_instance);
    m_sessionBus.checkAfterCallsTo(&m_appearance);
}

void Program::start()
{
    if (m_application) {
        return;
    }
    m_application = std::make_unique<Application>(Application::Environment{m_music, m_defaults, m_appearance,
        m_windowActivation, m_music.followablePlayers(), m_music.desktopEntries(), m_updater});
    connect(m_application.get(), &Application::restartRequested, this, &Program::restartRequested);
    AppDelegate &delegate = m_application->delegate();
    show();
    m_instance.deliverActions([delegate = QPointer(&delegate)](DesktopAction action, const ActivationToken &token) {
        return delegate ? perform(action, *delegate, token) : QString();
    });
    if (m_music.isReady()) {
        m_instance.deliverMusicActions();
    }
    // The window comes up first.
    QMetaObject::invokeMethod(this, &Program::serveDockMenu, Qt::QueuedConnection);
}

void Program::show()
{
    if (m_instance.isAskedForActionsAlone()) {
        showWithoutActivating(*m_application);
        endStartupNotificationOnX11(m_token);
    } else {
        activateWithToken(*m_application, m_token);
    }
}

void Program::activate(const ActivationToken &token)
{
    if (m_application) {
        reopenWithToken(*m_application, token);
    } else {
        endStartupNotificationOnX11(std::exchange(m_token, token));
    }
}

void Program::applyBus()
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
    // The old server must leave its place on the bus before the new one takes it.
    m_dockMenu.reset();
    m_dockMenu = std::make_unique<DockMenuServer>(
        m_sessionBus.connection(), [this] { return m_application->delegate().applicationDockMenu(); });
    m_sessionBus.checkAfterCallsTo(m_dockMenu.get());
    const ViewController &viewController = m_application->viewController();
    const MusicConnector &musicConnector = m_application->musicConnector();
    connect(&viewController, &ViewController::currentTrackInfoChanged, m_dockMenu.get(), &DockMenuServer::update);
    connect(&viewController, &ViewController::playPauseTitleChanged, m_dockMenu.get(), &DockMenuServer::update);
    connect(&musicConnector, &MusicConnector::isMusicAppRunningChanged, m_dockMenu.get(), &DockMenuServer::update);
    connect(&musicConnector, &MusicConnector::feedTypeChanged, m_dockMenu.get(), &DockMenuServer::update);
    connect(&m_music, &MusicApplication::playerDidChange, m_dockMenu.get(), &DockMenuServer::update);
    connect(&m_music, &MusicApplication::respondingDidChange, m_dockMenu.get(), &DockMenuServer::update);
    connect(&m_music.followablePlayers(), &FollowablePlayers::followablePlayersChanged, m_dockMenu.get(),
        &DockMenuServer::update);
    connect(&m_music.desktopEntries(), &DesktopEntries::factsKnown, m_dockMenu.get(), &DockMenuServer::update);
    connect(&m_defaults, &UserDefaults::valueChanged, m_dockMenu.get(), &DockMenuServer::update);
}

} // namespace tunedeck
