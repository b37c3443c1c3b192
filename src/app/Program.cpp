// SPDX-License-Identifier: MIT
#include "app/Program.h"

#include "above/aboveRoadOfSession.h"
#include "above/keepAboveTexts.h"
#include "app/Application.h"
#include "app/ApplicationInstance.h"
#include "app/DesktopAction.h"
#include "app/activateWithToken.h"
#include "dock/DockMenuServer.h"
#include "platform/bus/SessionBus.h"
#include "platform/isInSandbox.h"
#include "platform/windowLog.h"
#include "platform/windowSystem.h"
#include "player/ViewController.h"
#include "window/WindowController.h"
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

QList<GlobalShortcuts::Shortcut> shortcuts()
{
    QList<GlobalShortcuts::Shortcut> shortcuts;
    const QStringList names = desktopActionNames();
    for (const QString &name : names) {
        shortcuts.append({name, desktopActionTitle(desktopActionNamed(name).value())});
    }
    return shortcuts;
}
} // namespace

Program::Program(SessionBus &sessionBus, ApplicationInstance &instance, ActivationToken token, StartedBy startedBy)
    : m_sessionBus(sessionBus)
    , m_instance(instance)
    , m_token(std::move(token))
    , m_startedBy(startedBy)
    , m_appearance(m_defaults, sessionBus.connection())
    , m_music(sessionBus.connection(), m_defaults, m_launcher)
    , m_updater(sessionBus.connection(), m_defaults)
    , m_desktopIntegration(m_defaults, shortcuts())
{
    connect(&m_launcher, &ApplicationLauncher::failed, &QApplication::beep);
    connect(
        &m_windowActivation, &WindowActivation::windowDidBecomeKey, &m_music, &MprisMusicApplication::refreshPlayer);
    connect(&m_instance, &ApplicationInstance::activated, this, &Program::activate);
    connect(&m_instance, &ApplicationInstance::tokenUnused, this, &endStartupNotificationOnX11);
    connect(&m_sessionBus, &SessionBus::changed, this, &Program::applyBus);
    checkBusWhenSilent();
    // The display takes over the track in between.
    connect(&m_music, &MprisMusicApplication::ready, this, &Program::start, Qt::QueuedConnection);
    connect(&m_music, &MprisMusicApplication::ready, &m_instance, &ApplicationInstance::deliverMusicActions);
    QTimer::singleShot(0ms, this, &Program::makeApplication);
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
    m_sessionBus.checkAfterNamesSeenBy(&m_music);
}

void Program::makeApplication()
{
    if (m_application) {
        return;
    }
    m_application = std::make_unique<Application>(Application::Environment{m_musicWithSound, m_defaults, m_appearance,
        m_windowActivation, m_music.followablePlayers(), m_music.desktopEntries(), m_updater, m_desktopIntegration});
    connect(m_application.get(), &Application::restartRequested, this, &Program::restartRequested);
}

void Program::start()
{
    if (std::exchange(m_isStarted, true)) {
        return;
    }
    makeApplication();
    AppDelegate &delegate = m_application->delegate();
    connectKeptAbove();
    show();
    m_instance.deliverActions(
        [delegate = QPointer(&delegate), keptAbove = QPointer(&m_application->windowController().keptAbove())](
            DesktopAction action, const ActivationToken &token, const ApplicationInstance::Answer &answer) {
            const QString obstacle = delegate ? perform(action, *delegate, token) : QString();
            if (action == DesktopAction::KeepAbove && obstacle.isEmpty() && keptAbove) {
                keptAbove->whenAnswered(
                    [answer](bool isRefused) { answer(isRefused ? keepAboveRefusal() : QString()); });
            } else {
                answer(obstacle);
            }
        });
    if (m_music.isReady()) {
        m_instance.deliverMusicActions();
    }
    // The window comes up first.
    QMetaObject::invokeMethod(this, &Program::serveDockMenu, Qt::QueuedConnection);
    QMetaObject::invokeMethod(this, &Program::beginDesktopIntegration, Qt::QueuedConnection);
    QMetaObject::invokeMethod(&m_sound, &FollowedPlayerSound::start, Qt::QueuedConnection);
}

void Program::connectKeptAbove()
{
    KeptAbove &keptAbove = m_application->windowController().keptAbove();
    if (isInSandbox()) {
        keptAbove.setIsInSandbox(true);
    } else if (!canKeepAbove()) {
        keptAbove.setRoad(aboveRoadOfSession(m_sessionBus.connection()));
    }
}

void Program::show()
{
    if (m_startedBy == StartedBy::Session) {
        m_application->showForSession();
    } else if (m_instance.isAskedForActionsAlone()) {
        showWithoutActivating(*m_application);
        endStartupNotificationOnX11(m_token);
    } else {
        activateWithToken(*m_application, m_token);
    }
}

void Program::activate(const ActivationToken &token)
{
    m_startedBy = StartedBy::User;
    if (m_isStarted) {
        reopenWithToken(*m_application, token);
    } else if (token != m_token) {
        endStartupNotificationOnX11(std::exchange(m_token, token));
    }
}

void Program::applyBus()
{
    qCDebug(windowLog) << "the session bus is now" << m_sessionBus.connection().name()
                       << (m_sessionBus.connection().isConnected() ? "connected" : "not connected");
    m_instance.setBus(m_sessionBus.connection());
    m_appearance.setBus(m_sessionBus.connection());
    m_music.setBus(m_sessionBus.connection());
    m_sessionBus.checkAfterNamesSeenBy(&m_music);
    if (m_isStarted) {
        serveDockMenu();
        m_desktopIntegration.askAgain();
    }
}

void Program::beginDesktopIntegration()
{
    // Like a call from the bus: a peer that sends without end must not be felt.
    connect(&m_desktopIntegration, &DesktopIntegration::shortcutPressed, &m_instance,
        [this](const QString &id, const ActivationToken &token) {
            m_instance.requestAction(desktopActionNamed(id).value(), token, [](const QString &refusal) {
                if (!refusal.isEmpty()) {
                    QApplication::beep();
                }
            });
        });
    m_desktopIntegration.begin();
}

void Program::serveDockMenu()
{
    // The old server must leave its place on the bus before the new one takes it.
    m_dockMenu.reset();
    m_dockMenu = std::make_unique<DockMenuServer>(
        m_sessionBus.connection(), [this] { return m_application->delegate().applicationDockMenu(); });
    m_sessionBus.checkAfterNamesSeenBy(m_dockMenu.get());
    const ViewController &viewController = m_application->viewController();
    const MusicConnector &musicConnector = m_application->musicConnector();
    connect(&viewController, &ViewController::currentTrackInfoChanged, m_dockMenu.get(), &DockMenuServer::update);
    connect(&viewController, &ViewController::playPauseTitleChanged, m_dockMenu.get(), &DockMenuServer::update);
    connect(&musicConnector, &MusicConnector::isMusicAppRunningChanged, m_dockMenu.get(), &DockMenuServer::update);
    connect(&musicConnector, &MusicConnector::feedTypeChanged, m_dockMenu.get(), &DockMenuServer::update);
    connect(&m_music, &MusicApplication::playerDidChange, m_dockMenu.get(), &DockMenuServer::update);
    connect(&m_music, &MusicApplication::respondingDidChange, m_dockMenu.get(), &DockMenuServer::update);
    connect(&m_musicWithSound, &MusicApplication::soundDidChange, m_dockMenu.get(), &DockMenuServer::update);
    connect(&m_music.followablePlayers(), &FollowablePlayers::followablePlayersChanged, m_dockMenu.get(),
        &DockMenuServer::update);
    connect(&m_music.desktopEntries(), &DesktopEntries::factsKnown, m_dockMenu.get(), &DockMenuServer::update);
    connect(&m_defaults, &UserDefaults::valueChanged, m_dockMenu.get(), &DockMenuServer::update);
    connect(&m_application->windowController().keptAbove(), &KeptAbove::wayChanged, m_dockMenu.get(),
        &DockMenuServer::update);
}

} // namespace tunedeck
