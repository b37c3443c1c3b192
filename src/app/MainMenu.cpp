// SPDX-License-Identifier: MIT
#include "app/MainMenu.h"

#include "above/keepAboveTexts.h"
#include "app/AppDelegate.h"
#include "app/sound/PlayThroughMenu.h"
#include "drawer/PlaylistViewController.h"
#include "music/FollowablePlayers.h"
#include "music/MenuItemIdentifier.h"
#include "music/MusicApplication.h"
#include "music/followChoices.h"
#include "music/outputChoices.h"
#include "music/statusTexts.h"
#include "platform/BundleInfo.h"
#include "platform/UserDefaults.h"
#include "player/ViewController.h"
#include "widgets/literalTitle.h"
#include "window/WindowController.h"

#include <QApplication>
#include <QList>
#include <QMenuBar>
#include <QShortcut>

namespace tunedeck {

MainMenu::MainMenu(AppDelegate &delegate, WindowController &windowController, ViewController &viewController,
    PlaylistViewController &playlistViewController, const FollowMenu::Environment &followEnvironment, QObject *parent)
    : QObject(parent)
    , m_delegate(delegate)
    , m_windowController(windowController)
    , m_viewController(viewController)
    , m_playlistViewController(playlistViewController)
    , m_followEnvironment(followEnvironment)
    , m_explains([this](QAction &item) {
        item.setToolTip(m_delegate.obstacleTo(item));
        return true;
    })
    , m_delegateValidates([this](QAction &item) { return m_delegate.validateMenuItem(item); })
    , m_windowControllerValidates([this](QAction &item) { return m_windowController.validateMenuItem(item); })
    , m_viewControllerValidates([this](QAction &item) { return m_viewController.validateMenuItem(item); })
    , m_playlistViewControllerValidates(
          [this](QAction &item) { return m_playlistViewController.validateMenuItem(item); })
{
    buildApplicationMenu(addMenu(bundleInfo(u"CFBundleName").value_or(QString())));
    buildFileMenu(addMenu(tr("File", "Menu title")));
    buildControlsMenu(addMenu(tr("Controls", "Menu title")));
    buildFollowMenu(addMenu(followMenuTitle()));
    m_windowMenu = &addMenu(tr("Window", "Menu title"));
    buildWindowMenu(*m_windowMenu);
    buildHelpMenu(addMenu(tr("Help", "Menu title")));
    m_validation.validate();

    Window &window = m_windowController.window();
    auto *menuBar = new QMenuBar(&window);
    menuBar->addActions(m_contextMenu.actions());
    // A menu bar that the desktop does not show must not cover the player.
    menuBar->setVisible(menuBar->isNativeMenuBar());
    menuBar->resize(0, 0);
    addStopWaitingItem();

    connect(&window, &QWidget::customContextMenuRequested, this, &MainMenu::popUpAt);
    auto *keyboardRequest = new QShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F10), &window);
    connect(
        keyboardRequest, &QShortcut::activated, this, [this] { popUpAt(m_windowController.window().rect().center()); });
}

void MainMenu::popUpAt(QPoint position)
{
    m_contextMenu.popup(m_windowController.window().mapToGlobal(position));
}

QAction &MainMenu::playPauseMenuItem() const
{
    return *item(MenuItemIdentifier::playPause);
}

QAction *MainMenu::item(const QString &identifier) const
{
    const QList<QAction *> actions = m_windowController.window().actions();
    for (QAction *action : actions) {
        if (action->objectName() == identifier) {
            return action;
        }
    }
    return nullptr;
}

void MainMenu::offerXWayland(bool isUsed)
{
    QAction *item = addItem(*m_windowMenu,
        {tr("Run Through XWayland", "Menu command that can be checked"), QStringLiteral("Window_RunThroughXWayland")});
    item->setToolTip(tr("Most desktops can then keep the window above others. It may look less sharp.",
        "Tooltip of the menu command to run Tunedeck through XWayland; less sharp: on a scaled screen"));
    item->setCheckable(true);
    item->setChecked(isUsed);
    m_windowMenu->setToolTipsVisible(true);
    connect(item, &QAction::triggered, this, &MainMenu::xWaylandRequested);
}

void MainMenu::buildApplicationMenu(QMenu &menu)
{
    QAction *about = addItem(menu, {tr("About Tunedeck", "Menu command"), QStringLiteral("Tunedeck_About")});
    connect(about, &QAction::triggered, &m_delegate, &AppDelegate::displayAboutWindow);
    QAction *checkForUpdates =
        addItem(menu, {tr("Check for Updates…", "Menu command"), QStringLiteral("Tunedeck_CheckForUpdates")});
    connect(checkForUpdates, &QAction::triggered, this, &MainMenu::updateCheckRequested);
    menu.addSeparator();

    QAction *preferences = addItem(menu,
        {tr("Preferences…", "Menu command"), QStringLiteral("Tunedeck_Preferences"), {Qt::CTRL | Qt::Key_Comma}, {},
            Qt::ApplicationShortcut});
    connect(preferences, &QAction::triggered, &m_delegate, &AppDelegate::preferencesButtonAction);
    menu.addSeparator();

    QAction *quit = addItem(menu,
        {tr("Quit", "Menu command"), QStringLiteral("Tunedeck_Quit"), {Qt::CTRL | Qt::Key_Q}, {},
            Qt::ApplicationShortcut});
    connect(quit, &QAction::triggered, qApp, &QApplication::quit);
}

void MainMenu::buildFileMenu(QMenu &menu)
{
    const MenuValidation::Validator canLaunch = [this](
                                                    const QAction &) { return m_delegate.musicApp().canBeLaunched(); };
    QAction *open = addItem(menu,
        {openMusicText(m_delegate.musicApp().canBeLaunched()), MenuItemIdentifier::openMusicApp, {},
            {m_explains, m_delegateValidates, m_viewControllerValidates, canLaunch}});
    connect(open, &QAction::triggered, &m_delegate, &AppDelegate::openMusicApp);
    addShowPlayerItem(menu);
    menu.setToolTipsVisible(true);
    menu.addSeparator();

    QAction *close = addItem(menu,
        {tr("Close Window", "Menu command"), MenuItemIdentifier::closeWindow, {Qt::CTRL | Qt::Key_W},
            {m_viewControllerValidates}});
    connect(close, &QAction::triggered, &m_viewController, &ViewController::closeWindow);
}

void MainMenu::addShowPlayerItem(QMenu &menu)
{
    const MenuValidation::Validator setTitle = [this](QAction &item) {
        item.setText(literalTitle(m_delegate.showPlayerTitle()));
        return true;
    };
    QAction *show = addItem(menu,
        {QString(), MenuItemIdentifier::showPlayer, {Qt::CTRL | Qt::SHIFT | Qt::Key_O},
            {setTitle, m_explains, m_delegateValidates}, Qt::ApplicationShortcut});
    connect(show, &QAction::triggered, &m_delegate, &AppDelegate::showPlayer);
}

void MainMenu::buildControlsMenu(QMenu &menu)
{
    menu.setToolTipsVisible(true);
    addTransportItem(menu, {tr("Play", "For UI labels: Play"), MenuItemIdentifier::playPause, {Qt::Key_Space}},
        &AppDelegate::playPausePressed);
    // Space presses buttons in other windows, so only the media keys play and pause there.
    const QAction *mediaKeys =
        addKeys(QStringLiteral("Controls_MediaKeys"), {Qt::Key_MediaTogglePlayPause, Qt::Key_MediaPlay});
    connect(mediaKeys, &QAction::triggered, item(MenuItemIdentifier::playPause), &QAction::trigger);
    addTransportItem(menu,
        {tr("Next", "For UI labels: Next"), MenuItemIdentifier::next, {Qt::CTRL | Qt::Key_Right, Qt::Key_MediaNext}, {},
            Qt::ApplicationShortcut},
        &AppDelegate::nextPressed);
    addTransportItem(menu,
        {tr("Previous", "For UI labels: Previous"), MenuItemIdentifier::previous,
            {Qt::CTRL | Qt::Key_Left, Qt::Key_MediaPrevious}, {}, Qt::ApplicationShortcut},
        &AppDelegate::prevPressed);
    // The Pause and Stop keys must not start a paused track, so they are no shortcuts of Play.
    const QAction *pauseKeys = addKeys(QStringLiteral("Controls_Pause"), {Qt::Key_MediaPause, Qt::Key_MediaStop});
    connect(pauseKeys, &QAction::triggered, &m_delegate, &AppDelegate::pausePressed);
    menu.addSeparator();
    addVolumeItem(menu,
        {tr("Volume Up", "Menu command"), MenuItemIdentifier::volumeUp, {Qt::CTRL | Qt::Key_Up}, {},
            Qt::ApplicationShortcut});
    addVolumeItem(menu,
        {tr("Volume Down", "Menu command"), MenuItemIdentifier::volumeDown, {Qt::CTRL | Qt::Key_Down}, {},
            Qt::ApplicationShortcut});
    addPlayThroughMenu(menu);
}

void MainMenu::buildFollowMenu(QMenu &menu)
{
    menu.menuAction()->setObjectName(QStringLiteral("Follow"));
    new FollowMenu(menu, m_followEnvironment, this);
}

void MainMenu::buildWindowMenu(QMenu &menu)
{
    Window &window = m_windowController.window();
    QAction *minimize =
        addItem(menu, {tr("Minimize", "Menu command"), QStringLiteral("Window_Minimize"), {Qt::CTRL | Qt::Key_M}});
    connect(minimize, &QAction::triggered, &window, &Window::showMinimized);
    QAction *zoom = addItem(menu, {tr("Zoom", "Menu command"), QStringLiteral("Window_Zoom")});
    connect(zoom, &QAction::triggered, &window, &Window::zoom);
    menu.addSeparator();

    const MenuValidation::Validator setTitle = [this](QAction &item) {
        item.setText(m_windowController.isExpanded() ? tr("Hide Playlists", "Menu command: close the drawer")
                                                     : tr("Show Playlists", "Menu command: open the drawer"));
        return true;
    };
    QAction *toggleDrawer =
        addItem(menu, {QString(), QStringLiteral("Window_ToggleDrawer"), {Qt::CTRL | Qt::Key_L}, {setTitle}});
    connect(toggleDrawer, &QAction::triggered, &m_viewController, &ViewController::toggleDrawer);
    menu.addSeparator();

    addKeepAboveItem(menu);
}

void MainMenu::addKeepAboveItem(QMenu &menu)
{
    const MenuValidation::Validator setTexts = [this](QAction &item) {
        const KeptAbove &keptAbove = m_windowController.keptAbove();
        item.setText(keepAboveTitle(keptAbove.way()));
        item.setToolTip(keepAboveToolTip(keptAbove.way()));
        return keptAbove.canToggle();
    };
    QAction *item = addItem(
        menu, {QString(), MenuItemIdentifier::keepAboveAllWindows, {}, {m_windowControllerValidates, setTexts}});
    menu.setToolTipsVisible(true);
    item->setCheckable(true);
    connect(
        item, &QAction::triggered, &m_windowController, &WindowController::toggleKeepMainWindowAboveAllOtherWindows);
}

/// While a player is awaited, the context menu begins with the command that ends the wait. A menu bar has no such
/// place.
void MainMenu::addStopWaitingItem()
{
    auto *item = new QAction(tr("Follow Automatically", "Menu command: stop waiting for the chosen player"), this);
    item->setObjectName(QStringLiteral("Follow_StopWaiting"));
    auto *separator = new QAction(this);
    separator->setSeparator(true);
    m_contextMenu.insertActions(m_contextMenu.actions().constFirst(), {item, separator});
    connect(item, &QAction::triggered, this,
        [this] { m_followEnvironment.defaults.setValue(SettingsKey::followedPlayer, QString()); });
    const auto showWhileAwaited = [this, item, separator] {
        const bool isAwaited = !m_followEnvironment.players.awaitedPlayer().isEmpty();
        item->setVisible(isAwaited);
        separator->setVisible(isAwaited);
    };
    connect(&m_contextMenu, &QMenu::aboutToShow, this, showWhileAwaited);
    showWhileAwaited();
}

void MainMenu::buildHelpMenu(QMenu &menu)
{
    QAction *help = addItem(menu,
        {tr("Tunedeck Help", "Menu command"), QStringLiteral("Help_Contents"), {QKeySequence::HelpContents}, {},
            Qt::ApplicationShortcut});
    connect(help, &QAction::triggered, &m_delegate, &AppDelegate::openHelp);
    menu.addSeparator();

    QAction *terms = addItem(menu, {tr("Terms and Conditions", "Menu command"), QStringLiteral("Help_Terms")});
    connect(terms, &QAction::triggered, &m_delegate, &AppDelegate::openTermsAndConditions);
}

QMenu &MainMenu::addMenu(const QString &title)
{
    QMenu &menu = *m_contextMenu.addMenu(title);
    m_validation.validateBeforeShowing(menu);
    return menu;
}

QAction *MainMenu::addItem(QMenu &menu, const Command &command)
{
    QAction *item = menu.addAction(command.title);
    item->setObjectName(command.identifier);
    item->setShortcuts(command.shortcuts);
    item->setShortcutContext(command.shortcutContext);
    m_windowController.window().addAction(item);
    if (!command.validators.isEmpty()) {
        m_validation.add(item, command.validators);
    }
    return item;
}

void MainMenu::addTransportItem(QMenu &menu, const Command &command, void (AppDelegate::*action)())
{
    QAction *item = addItem(menu, command);
    // A key that is held down must not skip through the whole list.
    item->setAutoRepeat(false);
    // The delegate is the target. The view controllers also disable Next and Previous for a live stream.
    m_validation.add(
        item, {m_explains, m_delegateValidates, m_viewControllerValidates, m_playlistViewControllerValidates});
    connect(item, &QAction::triggered, &m_delegate, action);
}

/// Keys for the whole program that need no menu item.
QAction *MainMenu::addKeys(const QString &identifier, const QList<QKeySequence> &keys)
{
    auto *command = new QAction(this);
    command->setObjectName(identifier);
    command->setShortcuts(keys);
    command->setShortcutContext(Qt::ApplicationShortcut);
    command->setAutoRepeat(false);
    m_windowController.window().addAction(command);
    return command;
}

void MainMenu::addVolumeItem(QMenu &menu, const Command &command)
{
    QAction *item = addItem(menu, command);
    m_validation.add(
        item, {m_explains, m_delegateValidates, m_viewControllerValidates, m_playlistViewControllerValidates});
    connect(item, &QAction::triggered, &m_delegate, [this, item] { m_delegate.volumeButtonPressed(*item); });
}

void MainMenu::addPlayThroughMenu(QMenu &menu)
{
    const MusicApplication &music = m_delegate.musicApp();
    if (music.sound()) {
        menu.addSeparator();
        QMenu *outputs = menu.addMenu(outputMenuTitle());
        outputs->menuAction()->setObjectName(QStringLiteral("PlayThrough"));
        new PlayThroughMenu(*outputs, music, this);
    }
}

} // namespace tunedeck
