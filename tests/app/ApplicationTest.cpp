// SPDX-License-Identifier: MIT
#include "app/Application.h"

#include "app/AboutWindow.h"
#include "app/MainMenu.h"
#include "app/activateWithToken.h"
#include "dock/dockTileIcon.h"
#include "drawer/PlaylistView.h"
#include "help/HelpWindow.h"
#include "music/MenuItemIdentifier.h"
#include "platform/ActivationToken.h"
#include "platform/BundleInfo.h"
#include "player/LcdView.h"
#include "player/PlayerView.h"
#include "player/ScrollingMarqueeView.h"
#include "player/SpeakerButton.h"
#include "player/ViewController.h"
#include "preferences/AppPreferencesWindowController.h"
#include "skin/views/DrawerBackground.h"
#include "skin/views/MetalButton.h"
#include "skin/views/MetalPopupButton.h"
#include "skin/views/PlainButton.h"
#include "skin/views/PlayerButton.h"
#include "skin/views/TunedeckPlayerButton.h"
#include "skin/views/WindowControlButton.h"
#include "support/Desktop.h"
#include "support/TimedStyle.h"
#include "support/registerTest.h"
#include "window/WindowController.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>

using namespace tunedeck;

class ApplicationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(new TimedStyle); }
    void init() { failOnWarning(); }
    void cleanup()
    {
        QApplication::setPalette(QPalette());
        qunsetenv("XDG_ACTIVATION_TOKEN");
    }

    void aFirstStartHasTheRegisteredSettings()
    {
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        QCOMPARE(application.windowController().window().level(), WindowLevel::Normal);
        QVERIFY(application.viewController().remainingTimeEnabled());
        QVERIFY(application.delegate().isAppearanceClassic());
        auto *view = application.windowController().window().findChild<PlayerView *>();
        QVERIFY(view->volumeMinButton().isVisible());
    }

    void aTrackReachesTheDisplayTheMenuAndTheDock()
    {
        Desktop desktop;
        Application application(desktop.environment());
        desktop.playTrack();
        auto *view = application.windowController().window().findChild<PlayerView *>();
        QCOMPARE(view->lcd().trackInfoLabel().displayStrings().first(), QStringLiteral("Salt & Pepper"));
        QCOMPARE(application.mainMenu().playPauseMenuItem().text(), QStringLiteral("Pause"));
        QCOMPARE(application.delegate().currentTrackInfo()->trackName, QStringLiteral("Salt & Pepper"));
        const auto dockMenu = application.delegate().applicationDockMenu();
        QCOMPARE(dockMenu->actions().at(2)->text(), QStringLiteral("    Track: Salt && Pepper"));
        QCOMPARE(dockMenu->actions().at(6)->text(), QStringLiteral("Pause"));
    }

    void theDockForgetsTheTrackWhenContentOfUnknownKindPlaysOrMusicQuits()
    {
        Desktop desktop;
        Application application(desktop.environment());
        application.mainMenu();
        const auto firstTitle = [&application] {
            return application.delegate().applicationDockMenu()->actions().first()->text();
        };
        desktop.playTrack();
        QCOMPARE(firstTitle(), QStringLiteral("Now Playing"));
        desktop.play({{UserInfoKey::persistentId, 3}, {UserInfoKey::totalTime, 200.0}});
        QCOMPARE(firstTitle(), QStringLiteral("Pause"));
        desktop.playTrack();
        QCOMPARE(firstTitle(), QStringLiteral("Now Playing"));
        desktop.music.quit();
        QCOMPARE(firstTitle(), QStringLiteral("Open \"Music\""));
    }

    void onlyAStartWithATokenTouchesTheOneOfTheEnvironment()
    {
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        qputenv("XDG_ACTIVATION_TOKEN", "another");
        reopenWithToken(application, ActivationToken());
        QCOMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), QByteArray("another"));
        reopenWithToken(application, {{}, QStringLiteral("token")});
        QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    }

    void theLogSaysWhichTokensAStartHasButHoldsNone()
    {
        Desktop desktop;
        Application application(desktop.environment());
        QLoggingCategory::setFilterRules(QStringLiteral("tunedeck.window=true"));
        const auto off = qScopeGuard([] { QLoggingCategory::setFilterRules(QString()); });
        QTest::ignoreMessage(QtDebugMsg, "activate: no startup id, a token");
        activateWithToken(application, {{}, QStringLiteral("token")});
        QTest::ignoreMessage(QtDebugMsg, "activate: a startup id, no token");
        activateWithToken(application, {QStringLiteral("id"), {}});
    }

    void theDrawerShowsThePlayersModes()
    {
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        auto *view = application.windowController().window().findChild<PlayerView *>();
        QTRY_VERIFY(view->drawerContainerView().findChild<PlaylistView *>());
        auto *drawer = view->drawerContainerView().findChild<PlaylistView *>();
        application.viewController().toggleDrawer();
        QTRY_VERIFY(drawer->isVisible());
        desktop.music.answers.shuffleEnabled = true;
        application.musicConnector().refreshPlaybackSettings();
        QCOMPARE(drawer->shuffleButton().image(), QStringLiteral("shuffle_on"));
        QCOMPARE(drawer->width(), view->width());
    }

    void tabGoesFromTheInfoButtonIntoTheDrawerAndOnToTheWindowsButtons()
    {
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        Window &window = application.windowController().window();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        auto *view = window.findChild<PlayerView *>();
        QTRY_VERIFY(window.findChild<PlaylistView *>());
        auto *drawer = window.findChild<PlaylistView *>();
        application.viewController().toggleDrawer();
        QTRY_VERIFY(drawer->isVisible());
        drawer->playlistPicker().setEnabled(true);
        drawer->doneButton().setEnabled(true);
        view->lcd().infoButton().setFocus();
        const QList<QWidget *> order{&drawer->playlistPicker(), &drawer->doneButton(), &drawer->shuffleButton(),
            &drawer->repeatButton(), &view->closeButton()};
        for (QWidget *next : order) {
            QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), next);
        }
    }

    void thePreferencesMoveAsTheDesktopSays()
    {
        auto *style = new TimedStyle;
        style->animationDuration = 100'000;
        QApplication::setStyle(style);
        Desktop desktop;
        const auto setAnimated = [&desktop](bool isAnimated) {
            desktop.changeSetting(
                QStringLiteral("org.gnome.desktop.interface"), QStringLiteral("enable-animations"), isAnimated);
        };
        setAnimated(false);
        Application application(desktop.environment());
        AppPreferencesWindowController &preferences = application.preferencesWindowController();
        preferences.showWindow();
        const auto choose = [&preferences](const char *pane) {
            preferences.toolbarItemClicked(*preferences.toolbarItem(QLatin1String(pane)));
        };
        const auto height = [&preferences] { return preferences.window().centralWidget()->height(); };
        const int ofGeneral = height();
        choose("Interface");
        const int ofInterface = height();
        QVERIFY(ofInterface != ofGeneral);
        setAnimated(true);
        choose("General");
        QCOMPARE(height(), ofInterface);
        QApplication::setStyle(new TimedStyle);
    }

    void theMenuOpensThePreferencesHelpAndTheAboutWindow()
    {
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        application.mainMenu().item(QStringLiteral("Tunedeck_Preferences"))->trigger();
        QVERIFY(application.preferencesWindowController().window().isVisible());
        QCOMPARE(application.preferencesWindowController().window().windowTitle(), QStringLiteral("General"));
        application.mainMenu().item(QStringLiteral("Help_Contents"))->trigger();
        QVERIFY(application.helpWindow().isVisible());
        application.helpWindow().close();
        application.mainMenu().item(QStringLiteral("Help_Terms"))->trigger();
        QVERIFY(application.helpWindow().isVisible());
        application.mainMenu().item(QStringLiteral("Tunedeck_About"))->trigger();
        QVERIFY(application.delegate().aboutWindow()->isVisible());
        application.mainMenu().item(QStringLiteral("Tunedeck_CheckForUpdates"))->trigger();
        QCOMPARE(desktop.updater.checks, 1);
    }

    void thePreferencesHelpButtonOpensTheHelp()
    {
        Desktop desktop;
        Application application(desktop.environment());
        Q_EMIT application.preferencesWindowController().helpRequested(
            QStringLiteral("KeepingUpToDate"), bundleInfo(u"CFBundleHelpBookName").value());
        QVERIFY(application.helpWindow().isVisible());
    }

    void everySettingChangesTheRunningWindowAtOnce_data()
    {
        QTest::addColumn<bool>("byAnotherProcess");
        QTest::newRow("through the store") << false;
        QTest::newRow("by another process that edits the file") << true;
    }

    void everySettingChangesTheRunningWindowAtOnce()
    {
        QFETCH(const bool, byAnotherProcess);
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        Window &window = application.windowController().window();
        auto *view = window.findChild<PlayerView *>();
        UserDefaults other(desktop.folder.filePath(QStringLiteral("settings")));
        UserDefaults &defaults = byAnotherProcess ? other : desktop.defaults;

        defaults.setBool(SettingsKey::volumeButtonsHidden, true);
        QTRY_VERIFY(!view->volumeMinButton().isVisible());
        defaults.setBool(SettingsKey::remainingTimeEnabled, false);
        QTRY_VERIFY(!application.viewController().remainingTimeEnabled());
        defaults.setBool(SettingsKey::appearanceClassic, false);
        QTRY_VERIFY(!application.delegate().isAppearanceClassic());
        defaults.setBool(SettingsKey::keepMainWindowAboveAllOtherWindows, true);
        QTRY_COMPARE(window.level(), WindowLevel::Floating);
        defaults.setBool(SettingsKey::keepMainWindowAboveAllOtherWindows, false);
        QTRY_COMPARE(window.level(), WindowLevel::Normal);
    }

    void theWindowsIconTellsTheState()
    {
        Desktop desktop;
        Application application(desktop.environment());
        const auto isShown = [](const QString &tile) {
            return QApplication::windowIcon().pixmap(32, 32).toImage() == dockTileIcon(tile).pixmap(32, 32).toImage();
        };
        desktop.playTrack();
        QTRY_VERIFY(isShown(QStringLiteral("DockTile_Pause")));
        desktop.playLiveStream();
        QTRY_VERIFY(isShown(QStringLiteral("DockTile_Stop")));
        desktop.music.answers.playerState = PlayerState::paused;
        application.musicConnector().refreshPlayerState();
        QTRY_VERIFY(isShown(QStringLiteral("DockTile_Play")));
    }

    void aHiddenWindowReadsNothingOfMusic()
    {
        Desktop desktop;
        Application application(desktop.environment());
        desktop.playTrack();
        application.showMainWindow();
        Window &window = application.windowController().window();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QVERIFY(application.musicConnector().isProgressPollingTimerActive());
        window.hide();
        QTRY_VERIFY(!application.musicConnector().isProgressPollingTimerActive());
        window.show();
        QTRY_VERIFY(application.musicConnector().isProgressPollingTimerActive());
    }

    void theTransportButtonsReachMusic()
    {
        Desktop desktop;
        Application application(desktop.environment());
        desktop.playTrack();
        desktop.music.clearRecords();
        auto *view = application.windowController().window().findChild<PlayerView *>();
        view->backwardButton().click();
        view->playPauseButton().click();
        view->forwardButton().click();
        QCOMPARE(desktop.music.commands(),
            (QStringList{QStringLiteral("backTrack"), QStringLiteral("playpause"), QStringLiteral("nextTrack")}));
    }

    void theWindowButtonsMinimizeAndZoom()
    {
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        Window &window = application.windowController().window();
        auto *view = window.findChild<PlayerView *>();
        view->maximizeButton().click();
        QCOMPARE(window.width(), 550);
        view->minimizeButton().click();
        QVERIFY(window.isMinimized());
    }

    void theInfoButtonOpensAndClosesTheDrawer()
    {
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        Window &window = application.windowController().window();
        auto *view = window.findChild<PlayerView *>();
        view->lcd().infoButton().click();
        QCOMPARE(window.height(), 124);
        QVERIFY(view->drawerContainerView().isVisible());
        QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
        QCOMPARE(window.height(), 64);
        QVERIFY(!view->drawerContainerView().isVisible());
    }

    void reopeningBringsBackAMinimizedWindowAndRaisesAVisibleOne()
    {
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        Window &window = application.windowController().window();
        window.showMinimized();
        application.reopen();
        QVERIFY(!window.isMinimized());

        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        application.reopen();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }

    void showOrHideHidesAWindowThatCanBeSeenAndShowsOneThatCannot()
    {
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        Window &window = application.windowController().window();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const QPoint place = window.pos();
        const QSignalSpy quit(qApp, &QGuiApplication::lastWindowClosed);
        Q_EMIT application.delegate().showOrHideRequested({});
        QVERIFY(!window.isVisible());
        Q_EMIT application.delegate().showOrHideRequested({});
        QVERIFY(window.isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.pos(), place);
        window.showMinimized();
        Q_EMIT application.delegate().showOrHideRequested({});
        QVERIFY(window.isVisible());
        QVERIFY(!window.isMinimized());
        QCOMPARE(quit.count(), 0);
    }

    void playlistsOpensAndClosesTheDrawerAndShowsAHiddenWindowWithItOpen()
    {
        Desktop desktop;
        Application application(desktop.environment());
        application.showMainWindow();
        Window &window = application.windowController().window();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const WindowController &controller = application.windowController();
        Q_EMIT application.delegate().playlistsRequested({});
        QVERIFY(controller.isExpanded());
        window.hide();
        Q_EMIT application.delegate().playlistsRequested({});
        QVERIFY(window.isVisible());
        QVERIFY(controller.isExpanded());
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        Q_EMIT application.delegate().playlistsRequested({});
        QVERIFY(!controller.isExpanded());
        window.hide();
        Q_EMIT application.delegate().playlistsRequested({});
        QVERIFY(window.isVisible());
        QVERIFY(controller.isExpanded());
    }
};

TUNEDECK_TEST(ApplicationTest, QApplication)
#include "ApplicationTest.moc"
