// SPDX-License-Identifier: MIT
#include "app/MainMenu.h"

#include "app/Application.h"
#include "music/MenuItemIdentifier.h"
#include "platform/windowSystem.h"
#include "player/ViewController.h"
#include "support/Desktop.h"
#include "support/TimedStyle.h"
#include "support/registerTest.h"
#include "window/WindowController.h"

#include <QApplication>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace tunedeck;

class MainMenuTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(new TimedStyle); }
    void init()
    {
        failOnWarning();
        qunsetenv("WAYLAND_DISPLAY");
    }
    void cleanup() { QApplication::setPalette(QPalette()); }

    void itHasSixMenus()
    {
        Desktop desktop;
        Application application(desktop.environment());
        QStringList titles;
        for (const QAction *menu : application.mainMenu().contextMenu().actions()) {
            if (menu->isVisible()) {
                titles.append(menu->text());
            }
        }
        QCOMPARE(titles,
            (QStringList{QStringLiteral("Tunedeck"), QStringLiteral("File"), QStringLiteral("Controls"),
                QStringLiteral("Follow"), QStringLiteral("Window"), QStringLiteral("Help")}));
    }

    void whileAPlayerIsAwaitedTheContextMenuBeginsWithTheEndOfTheWait()
    {
        Desktop desktop;
        desktop.defaults.setValue(SettingsKey::followedPlayer, QStringLiteral("strawberry"));
        Application application(desktop.environment());
        QMenu &menu = application.mainMenu().contextMenu();
        QAction *item = menu.actions().constFirst();
        QVERIFY(!item->isVisible());
        desktop.players.awaited = QStringLiteral("Strawberry");
        Q_EMIT menu.aboutToShow();
        QVERIFY(item->isVisible());
        QCOMPARE(item->text(), QStringLiteral("Follow Automatically"));
        item->trigger();
        QCOMPARE(desktop.defaults.stringForKey(SettingsKey::followedPlayer), QString());
        desktop.players.awaited.clear();
        Q_EMIT menu.aboutToShow();
        QVERIFY(!item->isVisible());
    }

    void thePreferencesHaveAKeyOnEveryDesktop()
    {
        Desktop desktop;
        Application application(desktop.environment());
        QCOMPARE(application.mainMenu().item(QStringLiteral("Tunedeck_Preferences"))->shortcut(),
            QKeySequence(QStringLiteral("Ctrl+,")));
    }

    void itemsFollowMusicWithoutAMenuBeingOpened()
    {
        using namespace MenuItemIdentifier;
        Desktop desktop;
        desktop.music.setRunning(false);
        Application application(desktop.environment());
        const auto isEnabled = [&application](const QString &identifier) {
            return application.mainMenu().item(identifier)->isEnabled();
        };
        for (const QString &identifier : {playPause, next, previous, volumeUp, volumeDown}) {
            QVERIFY(!isEnabled(identifier));
        }
        QVERIFY(isEnabled(openMusicApp));
        QVERIFY(isEnabled(closeWindow));
        QVERIFY(isEnabled(keepAboveAllWindows));

        desktop.music.setRunning(true);
        desktop.playTrack();
        for (const QString &identifier : {playPause, next, previous, volumeUp, volumeDown}) {
            QVERIFY(isEnabled(identifier));
        }
        desktop.playLiveStream();
        QVERIFY(isEnabled(playPause));
        QVERIFY(isEnabled(volumeUp));
        QVERIFY(!isEnabled(next));
        QVERIFY(!isEnabled(previous));
    }

    void whereMusicCannotBeLaunchedTheItemSaysWhyAndIsDisabled()
    {
        Desktop desktop;
        desktop.music.setRunning(false);
        desktop.music.isLaunchable = false;
        Application application(desktop.environment());
        const QAction *open = application.mainMenu().item(MenuItemIdentifier::openMusicApp);
        QVERIFY(!open->isEnabled());
        QCOMPARE(open->text(), QStringLiteral("Open \"Music\" (Not Possible in a Sandbox)"));
        QVERIFY(open->toolTip().contains(QLatin1String("Start your player yourself")));
    }

    void itemsFollowMusicsAnswersWithoutAMenuBeingOpened()
    {
        using namespace MenuItemIdentifier;
        Desktop desktop;
        Application application(desktop.environment());
        desktop.playTrack();
        const auto isEnabled = [&application](const QString &identifier) {
            return application.mainMenu().item(identifier)->isEnabled();
        };
        desktop.music.setResponding(false);
        for (const QString &identifier : {playPause, next, previous, volumeUp, volumeDown}) {
            QVERIFY(!isEnabled(identifier));
        }
        QVERIFY(isEnabled(openMusicApp));
        desktop.music.setResponding(true);
        for (const QString &identifier : {playPause, next, previous, volumeUp, volumeDown}) {
            QVERIFY(isEnabled(identifier));
        }
        desktop.music.answerControl(MusicControl::volume, ControlAnswer::ignored);
        QVERIFY(!isEnabled(volumeUp));
        QVERIFY(!isEnabled(volumeDown));
        QVERIFY(isEnabled(playPause));
    }

    void disabledItemsSayWhyInTheirToolTips()
    {
        using namespace MenuItemIdentifier;
        Desktop desktop;
        desktop.music.setPlayer(QStringLiteral("Strawberry"), false);
        Application application(desktop.environment());
        desktop.playTrack();
        const auto toolTip = [&application](const QString &identifier) {
            const QAction &item = *application.mainMenu().item(identifier);
            // Without a tooltip of its own, an item has its title.
            return item.toolTip() == item.text() ? QString() : item.toolTip();
        };
        for (const QAction *menu : application.mainMenu().contextMenu().actions()) {
            if (menu->text() == QStringLiteral("File") || menu->text() == QStringLiteral("Controls")) {
                QVERIFY(menu->menu()->toolTipsVisible());
            }
        }
        for (const QString &identifier : {playPause, next, previous, volumeUp, volumeDown}) {
            QCOMPARE(toolTip(identifier), QString());
        }
        QCOMPARE(toolTip(showPlayer), QStringLiteral("Strawberry cannot show its window"));

        desktop.music.answerControl(MusicControl::volume, ControlAnswer::ignored);
        for (const QString &identifier : {volumeUp, volumeDown}) {
            QCOMPARE(toolTip(identifier), QStringLiteral("Strawberry keeps its own volume"));
        }
        desktop.playLiveStream();
        for (const QString &identifier : {next, previous}) {
            QCOMPARE(toolTip(identifier), QStringLiteral("Live audio has no other tracks"));
        }
        QCOMPARE(toolTip(playPause), QString());
        desktop.music.setResponding(false);
        for (const QString &identifier : {playPause, next, previous, volumeUp, volumeDown, showPlayer}) {
            QCOMPARE(toolTip(identifier), QStringLiteral("Strawberry is not responding"));
        }
        desktop.music.setResponding(true);
        desktop.playTrack();
        desktop.music.answerControl(MusicControl::volume, ControlAnswer::taken);
        desktop.music.setPlayer(QStringLiteral("Strawberry"), true);
        for (const QString &identifier : {playPause, next, previous, volumeUp, volumeDown, showPlayer}) {
            QCOMPARE(toolTip(identifier), QString());
        }
        desktop.music.quit();
        for (const QString &identifier : {playPause, next, previous, volumeUp, volumeDown, showPlayer}) {
            QCOMPARE(toolTip(identifier), QString());
        }
    }

    void theDockMenusItemsAreDisabledWhileMusicIsSilent()
    {
        using namespace MenuItemIdentifier;
        Desktop desktop;
        Application application(desktop.environment());
        desktop.playTrack();
        for (const bool isResponding : {false, true}) {
            desktop.music.setResponding(isResponding);
            const std::unique_ptr<QMenu> menu = application.delegate().applicationDockMenu();
            int found = 0;
            for (const QAction *item : menu->actions()) {
                if (item->objectName() == playPause || item->objectName() == next || item->objectName() == previous) {
                    QCOMPARE(item->isEnabled(), isResponding);
                    ++found;
                }
            }
            QCOMPARE(found, 3);
        }
    }

    void thePlayersOwnWindowIsShownFromTheFileMenu()
    {
        Desktop desktop;
        desktop.music.setRunning(false);
        Application application(desktop.environment());
        QAction *show = application.mainMenu().item(MenuItemIdentifier::showPlayer);
        QCOMPARE(show->text(), QStringLiteral("Show Player"));
        QVERIFY(!show->isEnabled());
        QCOMPARE(show->shortcut(), QKeySequence(QStringLiteral("Ctrl+Shift+O")));

        desktop.music.setRunning(true);
        desktop.music.setPlayer(QStringLiteral("Salt & Pepper"), false);
        QCOMPARE(show->text(), QStringLiteral("Show Salt && Pepper"));
        QVERIFY(!show->isEnabled());
        desktop.music.setPlayer(QStringLiteral("Strawberry"), true);
        QCOMPARE(show->text(), QStringLiteral("Show Strawberry"));
        QVERIFY(show->isEnabled());
        desktop.music.clearRecords();
        show->trigger();
        QCOMPARE(desktop.music.commands(), {QStringLiteral("showPlayer")});
        desktop.music.quit();
        QCOMPARE(show->text(), QStringLiteral("Show Player"));
        QVERIFY(!show->isEnabled());
    }

    void showingThePlayerIsDirectlyBelowOpeningIt()
    {
        Desktop desktop;
        Application application(desktop.environment());
        QStringList identifiers;
        for (const QAction *menu : application.mainMenu().contextMenu().actions()) {
            if (menu->text() != QStringLiteral("File")) {
                continue;
            }
            for (const QAction *item : menu->menu()->actions()) {
                identifiers.append(item->objectName());
            }
        }
        QCOMPARE(identifiers,
            (QStringList{MenuItemIdentifier::openMusicApp, MenuItemIdentifier::showPlayer, QString(),
                MenuItemIdentifier::closeWindow}));
    }

    void onWaylandNoWindowCanAskToStayAbove()
    {
        QVERIFY(canKeepAbove(QStringLiteral("xcb")));
        QVERIFY(!canKeepAbove(QStringLiteral("wayland")));
        QVERIFY(!canKeepAbove(QStringLiteral("wayland-egl")));
    }

    void theCheckMarkOfKeepAboveIsTheSetting()
    {
        Desktop desktop;
        Application application(desktop.environment());
        QAction *item = application.mainMenu().item(MenuItemIdentifier::keepAboveAllWindows);
        QVERIFY(!item->isChecked());
        application.delegate().toggleKeepMainWindowAboveOtherWindows();
        QVERIFY(item->isChecked());
        item->trigger();
        QVERIFY(!desktop.defaults.boolForKey(SettingsKey::keepMainWindowAboveAllOtherWindows));
        QVERIFY(!item->isChecked());
    }

    void whereThereIsNoXWaylandItIsNotOffered()
    {
        Desktop desktop;
        desktop.defaults.setBool(SettingsKey::startThroughXWayland, true);
        Application application(desktop.environment());
        QVERIFY(!application.mainMenu().item(QStringLiteral("Window_RunThroughXWayland")));
    }

    void xWaylandIsKeptInTheSettingsAndTheProgramStartsAnewForIt()
    {
        qputenv("WAYLAND_DISPLAY", "wayland-0");
        qputenv("DISPLAY", ":0");
        qunsetenv("QT_QPA_PLATFORM");
        Desktop desktop;
        desktop.defaults.setBool(SettingsKey::startThroughXWayland, true);
        Application application(desktop.environment());
        const QSignalSpy restarts(&application, &Application::restartRequested);
        QAction *item = application.mainMenu().item(QStringLiteral("Window_RunThroughXWayland"));
        QVERIFY(item);
        // The user wants XWayland, but it did not answer.
        QVERIFY(!item->isChecked());
        item->trigger();
        QVERIFY(desktop.defaults.boolForKey(SettingsKey::startThroughXWayland));
        QCOMPARE(restarts.count(), 1);
        item->trigger();
        QVERIFY(!desktop.defaults.boolForKey(SettingsKey::startThroughXWayland));
        QCOMPARE(restarts.count(), 2);
    }

    void theShortcutsWorkInTheMainWindow()
    {
        Desktop desktop;
        Application application(desktop.environment());
        desktop.playTrack();
        application.showMainWindow();
        Window &window = application.windowController().window();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        desktop.music.answers.soundVolume = 50;
        application.musicConnector().refreshPlaybackSettings();
        desktop.music.clearRecords();
        QTest::keyClick(window.windowHandle(), Qt::Key_Space);
        QTest::keyClick(window.windowHandle(), Qt::Key_Right, Qt::ControlModifier);
        QTest::keyClick(window.windowHandle(), Qt::Key_Left, Qt::ControlModifier);
        QTest::keyClick(window.windowHandle(), Qt::Key_Up, Qt::ControlModifier);
        QTest::keyClick(window.windowHandle(), Qt::Key_Down, Qt::ControlModifier);
        QCOMPARE(desktop.music.commands(),
            (QStringList{QStringLiteral("playpause"), QStringLiteral("nextTrack"), QStringLiteral("backTrack"),
                QStringLiteral("setSoundVolume 54"), QStringLiteral("setSoundVolume 50")}));

        desktop.playLiveStream();
        desktop.music.clearRecords();
        QTest::keyClick(window.windowHandle(), Qt::Key_Right, Qt::ControlModifier);
        QVERIFY(desktop.music.commands().isEmpty());
    }

    void theProgramsShortcutsWorkInEveryWindow()
    {
        Desktop desktop;
        Application application(desktop.environment());
        desktop.playTrack();
        application.showMainWindow();
        QVERIFY(QTest::qWaitForWindowActive(&application.windowController().window()));
        desktop.music.answers.soundVolume = 50;
        application.musicConnector().refreshPlaybackSettings();
        desktop.music.clearRecords();
        QSignalSpy preferences(&application.delegate(), &AppDelegate::preferencesRequested);
        QSignalSpy help(&application.delegate(), &AppDelegate::helpRequested);
        QSignalSpy quit(application.mainMenu().item(QStringLiteral("Tunedeck_Quit")), &QAction::triggered);

        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        const auto press = [&other](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
            QTest::keyClick(other.windowHandle(), key, modifiers);
        };
        press(Qt::Key_Right, Qt::ControlModifier);
        press(Qt::Key_Left, Qt::ControlModifier);
        press(Qt::Key_Up, Qt::ControlModifier);
        press(Qt::Key_Down, Qt::ControlModifier);
        QCOMPARE(desktop.music.commands(),
            (QStringList{QStringLiteral("nextTrack"), QStringLiteral("backTrack"), QStringLiteral("setSoundVolume 54"),
                QStringLiteral("setSoundVolume 50")}));
        press(Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(quit.count(), 1);
        press(Qt::Key_F1);
        QCOMPARE(help.count(), 1);
        press(Qt::Key_Comma, Qt::ControlModifier);
        QCOMPARE(preferences.count(), 1);
    }

    void keysOfTheMainWindowAloneDoNothingInOthers()
    {
        Desktop desktop;
        Application application(desktop.environment());
        desktop.playTrack();
        application.showMainWindow();
        QVERIFY(QTest::qWaitForWindowActive(&application.windowController().window()));
        desktop.music.clearRecords();
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        // The main window may still be on its way to the front.
        QCoreApplication::processEvents();
        QTRY_COMPARE(QApplication::activeWindow(), &other);
        QTest::keyClick(other.windowHandle(), Qt::Key_Space);
        QTest::keyClick(other.windowHandle(), Qt::Key_L, Qt::ControlModifier);
        QTest::keyClick(other.windowHandle(), Qt::Key_M, Qt::ControlModifier);
        QTest::keyClick(other.windowHandle(), Qt::Key_W, Qt::ControlModifier);
        QCOMPARE(desktop.music.commands(), QStringList());
        QVERIFY(!application.windowController().isExpanded());
        QVERIFY(application.windowController().window().isVisible());
        QVERIFY(!application.windowController().window().isMinimized());
    }

    void mediaKeysAreShortcutsToo()
    {
        using namespace MenuItemIdentifier;
        Desktop desktop;
        Application application(desktop.environment());
        const auto hasShortcut = [&application](const QString &identifier, Qt::Key key) {
            return application.mainMenu().item(identifier)->shortcuts().contains(QKeySequence(key));
        };
        QVERIFY(hasShortcut(next, Qt::Key_MediaNext));
        QVERIFY(hasShortcut(previous, Qt::Key_MediaPrevious));
    }

    void theMediaKeysPlayAsTheMenuItemDoes()
    {
        Desktop desktop;
        Application application(desktop.environment());
        desktop.playTrack();
        auto *keys = application.mainMenu().findChild<QAction *>(QStringLiteral("Controls_MediaKeys"));
        QCOMPARE(keys->shortcuts(), (QList<QKeySequence>{Qt::Key_MediaTogglePlayPause, Qt::Key_MediaPlay}));
        QCOMPARE(keys->shortcutContext(), Qt::ApplicationShortcut);
        desktop.music.clearRecords();
        keys->trigger();
        QCOMPARE(desktop.music.commands(), {QStringLiteral("playpause")});
        desktop.music.quit();
        desktop.music.clearRecords();
        keys->trigger();
        QVERIFY(desktop.music.commands().isEmpty());
    }

    void aKeyThatPausesNeverPlays()
    {
        Desktop desktop;
        Application application(desktop.environment());
        desktop.playTrack();
        auto *pause = application.mainMenu().findChild<QAction *>(QStringLiteral("Controls_Pause"));
        QVERIFY(application.windowController().window().actions().contains(pause));
        QCOMPARE(pause->shortcuts(), (QList<QKeySequence>{Qt::Key_MediaPause, Qt::Key_MediaStop}));
        QCOMPARE(pause->shortcutContext(), Qt::ApplicationShortcut);
        desktop.music.clearRecords();
        pause->trigger();
        QCOMPARE(desktop.music.commands(), {QStringLiteral("playpause")});

        desktop.music.answers.playerState = PlayerState::paused;
        application.musicConnector().refreshPlayerState();
        desktop.music.clearRecords();
        pause->trigger();
        QVERIFY(desktop.music.commands().isEmpty());
    }

    void theDrawersItemSaysWhatItWillDo()
    {
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        QAction *item = application.mainMenu().item(QStringLiteral("Window_ToggleDrawer"));
        QCOMPARE(item->text(), QStringLiteral("Show Playlists"));
        item->trigger();
        QVERIFY(application.windowController().isExpanded());
        QCOMPARE(item->text(), QStringLiteral("Hide Playlists"));
        item->trigger();
        QVERIFY(!application.windowController().isExpanded());
    }

    void minimizeAndZoomAreTheWindows()
    {
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        const Window &window = application.windowController().window();
        QAction *zoom = application.mainMenu().item(QStringLiteral("Window_Zoom"));
        QVERIFY(zoom);
        zoom->trigger();
        QCOMPARE(window.width(), 550);
        QAction *minimize = application.mainMenu().item(QStringLiteral("Window_Minimize"));
        QVERIFY(minimize);
        QCOMPARE(minimize->shortcut(), QKeySequence(QStringLiteral("Ctrl+M")));
        minimize->trigger();
        QVERIFY(window.isMinimized());
    }

    void quitEndsTheProgramAndStopsReadingMusic()
    {
        Desktop desktop;
        Application application(desktop.environment());
        desktop.play({{UserInfoKey::persistentId, 1}, {UserInfoKey::totalTime, 200.0},
            {UserInfoKey::storeUrl, QStringLiteral("https://music.example")}});
        const MusicConnector &connector = application.musicConnector();
        QVERIFY(connector.isProgressPollingTimerActive());
        QVERIFY(connector.isRefreshTrackTimerActive());
        QAction *quit = application.mainMenu().item(QStringLiteral("Tunedeck_Quit"));
        QVERIFY(quit);
        QCOMPARE(quit->shortcut(), QKeySequence(QStringLiteral("Ctrl+Q")));
        QTimer::singleShot(0, quit, &QAction::trigger);
        constexpr int didNotQuit = 1;
        QTimer deadline;
        connect(&deadline, &QTimer::timeout, qApp, [] { QCoreApplication::exit(didNotQuit); });
        deadline.start(5'000);
        QCOMPARE(QCoreApplication::exec(), 0);
        QVERIFY(!connector.isProgressPollingTimerActive());
        QVERIFY(!connector.isRefreshTrackTimerActive());
    }

    void closeWindowClosesTheWindow()
    {
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        application.mainMenu().item(MenuItemIdentifier::closeWindow)->trigger();
        QVERIFY(!application.windowController().window().isVisible());
    }

    void theMenuComesOnARightClickAndOnTheKeyboardsRequest()
    {
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        Window &window = application.windowController().window();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QMenu &menu = application.mainMenu().contextMenu();
        Q_EMIT window.customContextMenuRequested(QPoint(126, 32));
        QVERIFY(menu.isVisible());
        menu.close();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(window.windowHandle(), Qt::Key_F10, Qt::ShiftModifier);
        QVERIFY(menu.isVisible());
        menu.close();
    }

    void theMenuBarTakesNoRoomWhereTheDesktopDoesNotTakeItOver()
    {
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        application.mainMenu();
        const auto *menuBar = application.windowController().window().findChild<QMenuBar *>();
        QVERIFY(!menuBar->isNativeMenuBar());
        QVERIFY(!menuBar->isVisible());
    }
};

TUNEDECK_TEST(MainMenuTest, QApplication)
#include "MainMenuTest.moc"
