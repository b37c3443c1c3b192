// SPDX-License-Identifier: MIT
#include "app/Application.h"

#include "above/keepAboveTexts.h"
#include "app/MainMenu.h"
#include "app/SessionDisplays.h"
#include "app/ShowWhilePlayer.h"
#include "app/activateWithToken.h"
#include "dock/dockTileIcon.h"
#include "drawer/PlaylistView.h"
#include "drawer/PlaylistViewController.h"
#include "help/HelpWindow.h"
#include "music/MusicApplication.h"
#include "platform/Appearance.h"
#include "platform/BundleInfo.h"
#include "platform/UserDefaults.h"
#include "player/LcdView.h"
#include "player/PlayerView.h"
#include "player/ScrollingMarqueeView.h"
#include "player/ViewController.h"
#include "preferences/AppPreferencesWindowController.h"
#include "preferences/Updater.h"
#include "skin/looks/SkinEnvironment.h"
#include "skin/views/DrawerBackground.h"
#include "skin/views/MetalButton.h"
#include "skin/views/MetalPopupButton.h"
#include "skin/views/PlainButton.h"
#include "skin/views/WindowControlButton.h"
#include "widgets/speakNotice.h"
#include "window/WindowController.h"
#include "x11/X11PictureMover.h"

#include <QApplication>
#include <QVBoxLayout>

#include <chrono>
#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

constexpr auto dockTileDelay = 100ms;

/// Tab reaches the drawer's controls after the button that opens the drawer.
void putAfter(QWidget &control, PlaylistView &drawer)
{
    QWidget *last = &control;
    for (QWidget *next : std::initializer_list<QWidget *>{
             &drawer.playlistPicker(), &drawer.doneButton(), &drawer.shuffleButton(), &drawer.repeatButton()}) {
        QWidget::setTabOrder(last, next);
        last = next;
    }
}
} // namespace

Application::Application(const Environment &environment, QObject *parent)
    : QObject(parent)
    , m_defaults(environment.defaults)
    , m_players(environment.players)
    , m_desktopEntries(environment.desktopEntries)
    , m_updater(environment.updater)
    , m_desktopSettings(environment.desktopSettings)
    , m_skinEnvironment{environment.defaults, environment.appearance, environment.windowActivation}
    , m_musicConnector(environment.musicApp, environment.windowActivation)
    , m_delegate(m_musicConnector, environment.defaults, environment.appearance, environment.windowActivation,
          environment.players, environment.desktopEntries)
{
    // This registers the settings' defaults, so it comes before anything reads a setting.
    m_delegate.applicationDidFinishLaunching();

    m_windowController = std::make_unique<WindowController>(m_defaults);
    m_windowController->setMotionReduced(environment.appearance.isMotionReduced());
    connect(&environment.appearance, &Appearance::motionReducedChanged, m_windowController.get(),
        &WindowController::setMotionReduced);
    Window &window = m_windowController->window();
    window.setWindowTitle(bundleInfo(u"CFBundleName").value_or(QString()));
    m_companionWindows = std::make_unique<CompanionWindows>(window);
    m_playerView = new PlayerView(m_skinEnvironment);
    window.setContentView(m_playerView);
    m_playerView->lcd().trackInfoLabel().setPictureMover(std::make_unique<X11PictureMover>());
    const ViewController::Environment playerEnvironment{m_musicConnector, m_defaults, environment.appearance,
        environment.windowActivation, environment.players, *m_windowController};
    m_viewController = std::make_unique<ViewController>(playerEnvironment, *m_playerView);

    m_dockTileTimer.setSingleShot(true);
    m_dockTileTimer.setInterval(dockTileDelay);
    connect(
        &m_dockTileTimer, &QTimer::timeout, this, [this] { QApplication::setWindowIcon(dockTileIcon(m_dockTile)); });

    connectPlayer();
    connectWindowButtons();
    connectKeepAbove();
    connectOtherWindows();
    connect(&window, &Window::canBeSeenChanged, &m_musicConnector, &MusicConnector::setWatched);
    connect(qApp, &QCoreApplication::aboutToQuit, &m_delegate, &AppDelegate::applicationWillTerminate);
}

Application::~Application() = default;

PlaylistViewController &Application::playlistViewController()
{
    if (!m_playlistViewController) {
        QWidget &drawer = m_playerView->drawerContainerView();
        auto *view = new PlaylistView(m_skinEnvironment);
        auto *layout = new QVBoxLayout(&drawer);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(view);
        putAfter(m_playerView->lcd().infoButton(), *view);
        m_playlistViewController = std::make_unique<PlaylistViewController>(m_musicConnector, *view);
    }
    return *m_playlistViewController;
}

MainMenu &Application::mainMenu()
{
    if (!m_mainMenu) {
        m_mainMenu = std::make_unique<MainMenu>(m_delegate, *m_windowController, *m_viewController,
            playlistViewController(), FollowMenu::Environment{m_players, m_defaults, m_desktopEntries});
        connect(m_mainMenu.get(), &MainMenu::updateCheckRequested, &m_updater, &Updater::checkForUpdates);
        connectMenus();
        connectXWayland();
    }
    return *m_mainMenu;
}

AppPreferencesWindowController &Application::preferencesWindowController()
{
    if (!m_preferencesWindowController) {
        m_preferencesWindowController = std::make_unique<AppPreferencesWindowController>(
            AppPreferencesWindowController::Environment{m_defaults, m_players, m_updater, m_desktopSettings});
        connect(m_preferencesWindowController.get(), &AppPreferencesWindowController::helpRequested, &m_delegate,
            &AppDelegate::helpRequested);
        const Appearance &appearance = m_skinEnvironment.appearance;
        m_preferencesWindowController->setMotionReduced(appearance.isMotionReduced());
        connect(&appearance, &Appearance::motionReducedChanged, m_preferencesWindowController.get(),
            &AppPreferencesWindowController::setMotionReduced);
    }
    return *m_preferencesWindowController;
}

HelpWindow &Application::helpWindow()
{
    if (!m_helpWindow) {
        m_helpWindow = std::make_unique<HelpWindow>();
    }
    return *m_helpWindow;
}

void Application::showMainWindow()
{
    connectShowWhilePlayer();
    m_windowController->window().show();
    // The window comes up first. The menus with their shortcuts and the drawer's controls follow at once.
    QMetaObject::invokeMethod(this, [this] { mainMenu(); }, Qt::QueuedConnection);
}

void Application::showForSession()
{
    connectShowWhilePlayer();
    if (m_showWhilePlayer->isShown()) {
        showWithoutActivating(*this);
    } else {
        // The user may ask for the window before a player comes.
        QMetaObject::invokeMethod(this, [this] { mainMenu(); }, Qt::QueuedConnection);
    }
}

void Application::reopen()
{
    const Window &window = m_windowController->window();
    const bool hasVisibleWindows = window.isVisible() && !window.isMinimized();
    if (hasVisibleWindows) {
        // Starting a running program again brings its window to the front, whatever the delegate does afterwards.
        m_windowController->window().makeKeyAndOrderFront();
    }
    m_delegate.applicationShouldHandleReopen(hasVisibleWindows);
}

void Application::connectPlayer()
{
    connect(m_viewController.get(), &ViewController::playPausePressed, &m_delegate, &AppDelegate::playPausePressed);
    connect(m_viewController.get(), &ViewController::nextPressed, &m_delegate, &AppDelegate::nextPressed);
    connect(m_viewController.get(), &ViewController::prevPressed, &m_delegate, &AppDelegate::prevPressed);
    connect(m_viewController.get(), &ViewController::currentTrackInfoChanged, &m_delegate,
        &AppDelegate::setCurrentTrackInfo);
    connect(m_viewController.get(), &ViewController::dockTileImageChanged, this, &Application::showDockTile);
}

void Application::connectWindowButtons()
{
    Window &window = m_windowController->window();
    connect(&m_playerView->minimizeButton(), &WindowControlButton::clicked, &window, &Window::showMinimized);
    connect(&m_playerView->maximizeButton(), &WindowControlButton::clicked, &window, &Window::zoom);
}

void Application::connectKeepAbove()
{
    // The setting already wants XWayland where it does not answer, so another restart would not lead there.
    const bool isXWaylandWanted = m_defaults.boolForKey(SettingsKey::startThroughXWayland);
    m_windowController->keptAbove().setCanRestart(
        !isXWaylandWanted && SessionDisplays::fromEnvironment().canChooseXWayland());
    connect(m_windowController.get(), &WindowController::restartRequested, this, [this] { changeXWayland(true); });
}

void Application::connectOtherWindows()
{
    connect(
        &m_delegate, &AppDelegate::preferencesRequested, this, [this] { preferencesWindowController().showWindow(); });
    connect(&m_delegate, &AppDelegate::helpRequested, this,
        [this](const QString &anchor, const QString &book) { helpWindow().openHelpAnchor(anchor, book); });
    connect(&m_delegate, &AppDelegate::showOrHideRequested, this,
        [this](const ActivationToken &token) { showOrHideWithToken(*this, token); });
    connect(&m_delegate, &AppDelegate::playlistsRequested, this,
        [this](const ActivationToken &token) { showOrHidePlaylistsWithToken(*this, token); });
}

/// Before the window is shown for the first time, a player that comes does not show it.
void Application::connectShowWhilePlayer()
{
    if (m_showWhilePlayer) {
        return;
    }
    m_showWhilePlayer = new ShowWhilePlayer(m_musicConnector.musicApp(), m_defaults, this);
    connect(m_showWhilePlayer, &ShowWhilePlayer::showRequested, this, [this] {
        if (!m_windowController->window().isVisible()) {
            showWithoutActivating(*this);
        }
    });
    connect(m_showWhilePlayer, &ShowWhilePlayer::hideRequested, &m_windowController->window(), &QWidget::hide);
}

void Application::connectMenus()
{
    QAction &playPauseMenuItem = m_mainMenu->playPauseMenuItem();
    playPauseMenuItem.setText(m_viewController->playPauseTitle(m_musicConnector.currentState()));
    connect(m_viewController.get(), &ViewController::playPauseTitleChanged, &playPauseMenuItem, &QAction::setText);
    m_delegate.setPlayPauseMenuItem(&playPauseMenuItem);

    MenuValidation &validation = m_mainMenu->validation();
    connect(&m_musicConnector, &MusicConnector::isMusicAppRunningChanged, &validation, &MenuValidation::validate);
    connect(&m_musicConnector, &MusicConnector::feedTypeChanged, &validation, &MenuValidation::validate);
    connect(&m_musicConnector.musicApp(), &MusicApplication::playerDidChange, &validation, &MenuValidation::validate);
    const MusicApplication &music = m_musicConnector.musicApp();
    connect(&music, &MusicApplication::respondingDidChange, &validation, &MenuValidation::validate);
    connect(&music, &MusicApplication::controlsDidChange, &validation, &MenuValidation::validate);
    connect(&m_defaults, &UserDefaults::valueChanged, &validation, &MenuValidation::validate);
    connect(m_windowController.get(), &DrawerHost::isExpandedChanged, &validation, &MenuValidation::validate);
    connect(&m_windowController->keptAbove(), &KeptAbove::wayChanged, &validation, &MenuValidation::validate);
    // Otherwise a user would have to open the menu to learn it.
    connect(&m_windowController->keptAbove(), &KeptAbove::refused, this,
        [this] { speakNotice(m_windowController->window(), keepAboveRefusal()); });
}

void Application::connectXWayland()
{
    const QString platformName = QGuiApplication::platformName();
    if (SessionDisplays::fromEnvironment().offersXWayland(
            platformName, m_defaults.boolForKey(SettingsKey::startThroughXWayland))) {
        m_mainMenu->offerXWayland(platformName == QLatin1String("xcb"));
        connect(m_mainMenu.get(), &MainMenu::xWaylandRequested, this, &Application::changeXWayland);
    }
}

void Application::changeXWayland(bool isUsed)
{
    m_defaults.setBool(SettingsKey::startThroughXWayland, isUsed);
    Q_EMIT restartRequested();
}

void Application::showDockTile(const QString &imageName)
{
    // This is called more often than the image changes, and drawing it must not delay the window.
    if (imageName != std::exchange(m_dockTile, imageName)) {
        m_dockTileTimer.start();
    }
}

} // namespace tunedeck
