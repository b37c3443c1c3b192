// SPDX-License-Identifier: MIT
#include "app/AppDelegate.h"

#include "above/keepAboveTexts.h"
#include "app/AboutWindow.h"
#include "app/palettes.h"
#include "dock/DockMenuItems.h"
#include "drawer/PlaylistWindow.h"
#include "music/FollowablePlayers.h"
#include "music/MenuItemIdentifier.h"
#include "music/MusicApplication.h"
#include "music/MusicConnector.h"
#include "music/PlayerSound.h"
#include "music/followChoices.h"
#include "music/obstacles.h"
#include "music/outputChoices.h"
#include "music/statusTexts.h"
#include "platform/ActivationToken.h"
#include "platform/Appearance.h"
#include "platform/BundleInfo.h"
#include "platform/DesktopEntries.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "player/ViewController.h"
#include "skin/looks/SkinEnvironment.h"
#include "skin/views/AboutPinstripeView.h"
#include "skin/views/VolumeSlider.h"
#include "widgets/bringToFront.h"
#include "window/Window.h"
#include "window/WindowController.h"
#include "x11/activateOnX11.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QWindow>

#include <algorithm>

namespace tunedeck {

namespace {
/// The last of the application's windows that is a `WindowType`.
template <typename WindowType> WindowType *lastWindow(const QWidgetList &windows)
{
    WindowType *last = nullptr;
    for (QWidget *window : windows) {
        if (auto *found = qobject_cast<WindowType *>(window)) {
            last = found;
        }
    }
    return last;
}

std::optional<OutputChoices> outputChoicesForDock(const MusicApplication &music)
{
    return music.isRunning() && music.sound() ? std::optional(outputChoices(music)) : std::nullopt;
}

/// Qt calls a minimised window visible.
bool isOnScreen(const QWidget &window)
{
    return window.isVisible() && !window.isMinimized();
}

/// `WindowType` is Window or PlaylistWindow, whose only common base class has no shadow.
template <typename WindowType> void bringToFrontWithShadow(WindowType &window)
{
    bringToFront(window);
    window.invalidateShadow();
}

} // namespace

AppDelegate::AppDelegate(MusicConnector &musicConnector, UserDefaults &defaults, Appearance &appearance,
    const WindowActivation &windowActivation, FollowablePlayers &players, DesktopEntries &desktopEntries,
    QObject *parent)
    : QObject(parent)
    , m_musicConnector(musicConnector)
    , m_defaults(defaults)
    , m_appearance(appearance)
    , m_players(players)
    , m_desktopEntries(desktopEntries)
    , m_pinstripesView(std::make_unique<AboutPinstripeView>(SkinEnvironment{defaults, appearance, windowActivation}))
{
    connect(&windowActivation, &WindowActivation::windowDidBecomeKey, this, &AppDelegate::windowDidBecomeKey);
    connect(&windowActivation, &WindowActivation::windowDidResignKey, this, &AppDelegate::windowDidResignKey);
    connect(&m_appearance, &Appearance::effectiveAppearanceChanged, this,
        [this] { applyPalette(m_appearance, m_isAppearanceClassic); });
}

AppDelegate::~AppDelegate() = default;

void AppDelegate::setPlayPauseMenuItem(QAction *item)
{
    m_playPauseMenuItem = item;
}

void AppDelegate::setAppearanceClassic(bool classic)
{
    m_isAppearanceClassic = classic;
    m_appearance.setApplicationAppearance(classic ? std::optional(AppearanceName::Aqua) : std::nullopt);
    applyPalette(m_appearance, classic);
    Q_EMIT isAppearanceClassicChanged(classic);
}

void AppDelegate::applicationDidFinishLaunching()
{
    m_defaults.registerDefaults({
        {SettingsKey::keepMainWindowAboveAllOtherWindows, false},
        {SettingsKey::remainingTimeEnabled, true},
        {SettingsKey::appearanceClassic, true},
        {SettingsKey::appearanceUpdatesDockIcon, true},
        {SettingsKey::volumeButtonsHidden, false},
    });
    m_defaults.bind(SettingsKey::appearanceClassic, this, [this](bool classic) { setAppearanceClassic(classic); });
}

void AppDelegate::applicationWillTerminate()
{
    m_musicConnector.stopProgressPollingTimer();
    m_musicConnector.stopRefreshTrackTimer();
}

bool AppDelegate::applicationShouldHandleReopen(bool)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    auto *mainWindow = lastWindow<Window>(windows);
    auto *drawerWindow = lastWindow<PlaylistWindow>(windows);
    if (!drawerWindow) {
        if (mainWindow) {
            bringToFrontWithShadow(*mainWindow);
        }
        return true;
    }
    if (!mainWindow || isOnScreen(*mainWindow)) {
        return false;
    }
    if (isOnScreen(*drawerWindow)) {
        bringToFrontWithShadow(*drawerWindow);
    } else {
        bringToFrontWithShadow(*mainWindow);
    }
    return true;
}

MusicApplication &AppDelegate::musicApp() const
{
    return m_musicConnector.musicApp();
}

std::unique_ptr<QMenu> AppDelegate::applicationDockMenu()
{
    const DockMenuItems items{
        .track = m_currentTrackInfo,
        .isMusicAppRunning = m_musicConnector.isMusicAppRunning(),
        .canOpenMusicApp = m_musicConnector.musicApp().canBeLaunched(),
        .isLiveStream = m_musicConnector.feedType() == FeedType::liveStream,
        .playPauseTitle = m_playPauseMenuItem ? m_playPauseMenuItem->text() : QString(),
        .playerName = m_musicConnector.musicApp().playerName(),
        .isKeptAbove = m_defaults.boolForKey(SettingsKey::keepMainWindowAboveAllOtherWindows),
        .aboveWay = aboveWay(),
        .followChoices = followChoices(m_players, m_defaults.stringForKey(SettingsKey::followedPlayer)),
        .followedPlayer = followedPlayer(m_players),
        .outputChoices = outputChoicesForDock(m_musicConnector.musicApp()),
        .iconName =
            [this](const QString &desktopEntry) {
                return m_desktopEntries.facts(desktopEntry).value_or(DesktopEntryFacts()).iconName;
            },
    };
    return items.menu({
        .receiver = this,
        .openMusicApp = [this] { openMusicApp(); },
        .playPause = [this] { playPausePressed(); },
        .next = [this] { nextPressed(); },
        .previous = [this] { prevPressed(); },
        .showPlayer = [this] { showPlayer(); },
        .toggleKeepAbove = [this] { toggleKeepMainWindowAboveOtherWindows(); },
        .follow = [this](const QString &id) { m_defaults.setValue(SettingsKey::followedPlayer, id); },
        .neverFollow = [this](const QString &id) { m_players.neverFollow(id); },
        .playThrough = [this](const QString &id) { m_musicConnector.musicApp().sound()->moveTo(id); },
        .validate = [this](const QAction &item) { return validateMenuItem(item); },
    });
}

bool AppDelegate::validateMenuItem(const QAction &item) const
{
    const QString identifier = item.objectName();
    if (identifier == MenuItemIdentifier::playPause || identifier == MenuItemIdentifier::next
        || identifier == MenuItemIdentifier::previous) {
        return m_musicConnector.isMusicAppRunning() && m_musicConnector.musicApp().isResponding();
    }
    if (identifier == MenuItemIdentifier::showPlayer) {
        return m_musicConnector.musicApp().canShowPlayer();
    }
    return true;
}

QString AppDelegate::obstacleTo(const QAction &item) const
{
    return obstacleToMenuItem(item.objectName(), m_musicConnector);
}

QString AppDelegate::obstacleToCommand(const QString &identifier) const
{
    if (identifier == MenuItemIdentifier::keepAboveAllWindows) {
        return m_defaults.boolForKey(SettingsKey::keepMainWindowAboveAllOtherWindows) ? QString()
                                                                                      : keepAboveObstacle(aboveWay());
    }
    return m_musicConnector.musicApp().isRunning() ? obstacleToMenuItem(identifier, m_musicConnector)
                                                   : musicIsNotOpenText();
}

QString AppDelegate::obstacleToSeeking() const
{
    const MusicApplication &music = m_musicConnector.musicApp();
    return music.isRunning() ? tunedeck::obstacleTo(MusicControl::position, music) : musicIsNotOpenText();
}

QString AppDelegate::showPlayerTitle() const
{
    return showPlayerText(m_musicConnector.musicApp().playerName());
}

void AppDelegate::volumeButtonPressed(const QAction &sender)
{
    if (sender.objectName() == MenuItemIdentifier::volumeUp) {
        turnVolumeUp();
    } else if (sender.objectName() == MenuItemIdentifier::volumeDown) {
        turnVolumeDown();
    }
}

void AppDelegate::turnVolumeUp()
{
    m_musicConnector.adjustVolume(VolumeSlider::step);
}

void AppDelegate::turnVolumeDown()
{
    m_musicConnector.adjustVolume(-VolumeSlider::step);
}

void AppDelegate::seekForward()
{
    seekBy(ViewController::seekStepInSec);
}

void AppDelegate::seekBackward()
{
    seekBy(-ViewController::seekStepInSec);
}

void AppDelegate::seekBy(double seconds)
{
    MusicApplication &music = m_musicConnector.musicApp();
    if (const std::optional<double> position = music.playerPosition()) {
        music.setPlayerPosition(std::max(*position + seconds, 0.0));
        m_musicConnector.updatePlayerProgressInfo();
    }
}

void AppDelegate::playPausePressed()
{
    MusicApplication &music = m_musicConnector.musicApp();
    if (!music.isRunning()) {
        return;
    }
    music.playpause();
    m_musicConnector.stopProgressPollingIfIdle();
}

void AppDelegate::pausePressed()
{
    if (!PlayerState::isIdle(m_musicConnector.currentState())) {
        playPausePressed();
    }
}

void AppDelegate::nextPressed()
{
    m_musicConnector.musicApp().nextTrack();
    m_musicConnector.refreshTrackInfo();
}

void AppDelegate::prevPressed()
{
    m_musicConnector.musicApp().backTrack();
    m_musicConnector.refreshTrackInfo();
}

void AppDelegate::openMusicApp()
{
    MusicApplication &music = m_musicConnector.musicApp();
    if (!music.isRunning() && !music.activate()) {
        QApplication::beep();
    }
}

void AppDelegate::showPlayer()
{
    const auto *mainWindow = lastWindow<Window>(QApplication::topLevelWidgets());
    const bool isUsed = mainWindow && mainWindow->isActiveWindow();
    showPlayerWithToken(isUsed ? tokenOfUserTimeOnX11(*mainWindow->windowHandle()) : ActivationToken());
}

void AppDelegate::showPlayerWithToken(const ActivationToken &token)
{
    if (!m_musicConnector.musicApp().showPlayer(token)) {
        QApplication::beep();
    }
}

void AppDelegate::toggleKeepMainWindowAboveOtherWindows()
{
    if (auto *mainWindow = lastWindow<Window>(QApplication::topLevelWidgets())) {
        mainWindow->windowController().toggleKeepMainWindowAboveAllOtherWindows();
    }
}

void AppDelegate::preferencesButtonAction()
{
    Q_EMIT preferencesRequested();
}

void AppDelegate::displayAboutWindow()
{
    if (!m_aboutWindow) {
        m_aboutWindow = std::make_unique<AboutWindow>();
        m_aboutWindow->setBackground(*m_pinstripesView);
    }
    m_aboutWindow->orderFront();
    // The window gets the keyboard focus, but the window system reports that only later.
    m_pinstripesView->setKeyWindow(true);
}

void AppDelegate::openHelp()
{
    openHelpAnchor(QString());
}

void AppDelegate::openTermsAndConditions()
{
    openHelpAnchor(QStringLiteral("TermsConditions"));
}

void AppDelegate::openHelpAnchor(const QString &anchor)
{
    if (const auto book = bundleInfo(u"CFBundleHelpBookName")) {
        Q_EMIT helpRequested(anchor, *book);
    }
}

void AppDelegate::windowDidBecomeKey(const QWindow *window)
{
    if (isAboutWindow(window)) {
        m_pinstripesView->setKeyWindow(true);
    }
}

void AppDelegate::windowDidResignKey(const QWindow *window)
{
    if (isAboutWindow(window)) {
        m_pinstripesView->setKeyWindow(false);
    }
}

AboveWay AppDelegate::aboveWay()
{
    auto *mainWindow = lastWindow<Window>(QApplication::topLevelWidgets());
    return mainWindow ? mainWindow->windowController().keptAbove().way() : AboveWay::Window;
}

bool AppDelegate::isAboutWindow(const QWindow *window) const
{
    return window == (m_aboutWindow ? m_aboutWindow->windowHandle() : nullptr);
}

} // namespace tunedeck
