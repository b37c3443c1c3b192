// SPDX-License-Identifier: MIT
#include "app/AppDelegate.h"

#include "app/AboutWindow.h"
#include "drawer/PlaylistWindow.h"
#include "music/MenuItemIdentifier.h"
#include "music/MusicConnector.h"
#include "skin/views/AboutPinstripeView.h"
#include "support/Desktop.h"
#include "support/TimedStyle.h"
#include "support/registerTest.h"
#include "window/WindowController.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPalette>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace tunedeck;

namespace {
bool hasHelpBook = true;
}

// The linker puts the second in the place of bundleInfo() and gives the first its name. What it knows of the build
// cannot be taken away otherwise.
std::optional<QString> builtInBundleInfo(QStringView key) asm("__real__ZN8tunedeck10bundleInfoE11QStringView");
std::optional<QString> bundleInfoOfTheTest(QStringView key) asm("__wrap__ZN8tunedeck10bundleInfoE11QStringView");

std::optional<QString> bundleInfoOfTheTest(QStringView key)
{
    return key == u"CFBundleHelpBookName" && !hasHelpBook ? std::nullopt : builtInBundleInfo(key);
}

namespace {
/// The delegate with everything that it needs. A test launches it if it has to.
struct Program : Desktop {
    explicit Program(bool isMusicRunning = true)
    {
        music.setRunning(isMusicRunning);
        connector.emplace(music, windowActivation);
        delegate.emplace(*connector, defaults, appearance, windowActivation, players, desktopEntries);
    }
    ~Program() { QApplication::setPalette(QPalette()); }

    std::optional<MusicConnector> connector;
    std::optional<AppDelegate> delegate;
};

/// The lines of a menu: each item's title with its identifier, "-" for a separator, "(...)" around a disabled item.
QStringList contents(const QMenu &menu)
{
    QStringList lines;
    for (const QAction *item : menu.actions()) {
        if (item->isSeparator()) {
            lines.append(QStringLiteral("-"));
            continue;
        }
        const QString line = item->text() + (item->objectName().isEmpty() ? QString() : u'|' + item->objectName());
        lines.append(item->isEnabled() ? line : u'(' + line + u')');
    }
    return lines;
}

QAction *itemOf(const QMenu &menu, const QString &identifier)
{
    for (QAction *item : menu.actions()) {
        if (item->objectName() == identifier) {
            return item;
        }
    }
    return nullptr;
}

bool isOnScreen(const QWidget &window)
{
    return window.isVisible() && !window.isMinimized();
}

class PaintCounter : public QObject {
public:
    int count = 0;

    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

bool isPaintedOnReopening(Program &program, QWidget &window)
{
    if (!QTest::qWaitForWindowActive(&window)) {
        return false;
    }
    QCoreApplication::processEvents();
    PaintCounter paints;
    window.installEventFilter(&paints);
    static_cast<void>(program.delegate->applicationShouldHandleReopen(true));
    QCoreApplication::processEvents();
    return paints.count > 0;
}
} // namespace

class AppDelegateTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(new TimedStyle); }
    void init() { failOnWarning(); }

    void itShowsNoStatusItem()
    {
        const Program program;
        QCOMPARE(program.delegate->statusItem(), nullptr);
    }

    void beforeTheLaunchNothingIsRegisteredOrApplied()
    {
        Program program;
        QVERIFY(program.delegate->isAppearanceClassic());
        QVERIFY(!program.appearance.applicationAppearance());
        QVERIFY(!program.defaults.boolForKey(SettingsKey::appearanceClassic));
    }

    void theLaunchRegistersTheDefaultsAndForcesTheLightAppearance()
    {
        Program program;
        program.delegate->applicationDidFinishLaunching();
        QVERIFY(!program.defaults.boolForKey(SettingsKey::keepMainWindowAboveAllOtherWindows));
        QVERIFY(program.defaults.boolForKey(SettingsKey::remainingTimeEnabled));
        QVERIFY(program.defaults.boolForKey(SettingsKey::appearanceClassic));
        QVERIFY(program.defaults.boolForKey(SettingsKey::appearanceUpdatesDockIcon));
        QVERIFY(!program.defaults.boolForKey(SettingsKey::volumeButtonsHidden));
        QCOMPARE(program.appearance.applicationAppearance(), AppearanceName::Aqua);
    }

    void aSavedSettingWinsOverItsDefaultAtTheLaunch()
    {
        Program program;
        program.defaults.setBool(SettingsKey::appearanceClassic, false);
        program.delegate->applicationDidFinishLaunching();
        QVERIFY(!program.delegate->isAppearanceClassic());
        QVERIFY(!program.appearance.applicationAppearance());
    }

    void theAppearanceFollowsItsSettingAtOnce()
    {
        Program program;
        program.delegate->applicationDidFinishLaunching();
        program.defaults.setBool(SettingsKey::appearanceClassic, false);
        QVERIFY(!program.delegate->isAppearanceClassic());
        QVERIFY(!program.appearance.applicationAppearance());
        program.defaults.setBool(SettingsKey::appearanceClassic, true);
        QVERIFY(program.delegate->isAppearanceClassic());
        QCOMPARE(program.appearance.applicationAppearance(), AppearanceName::Aqua);
    }

    void menusAreLightWhileTheLightAppearanceIsForced()
    {
        Program program;
        const QPalette before = QApplication::palette();
        program.delegate->setAppearanceClassic(true);
        const QPalette classic = QApplication::palette();
        QVERIFY(classic.color(QPalette::Window).lightness() > 200);
        QVERIFY(classic.color(QPalette::WindowText).lightness() < 50);
        program.delegate->setAppearanceClassic(false);
        QCOMPARE(QApplication::palette(), before);
    }

    void menusAreDarkOnADarkDesktopWhosePaletteIsLight()
    {
        Program program;
        const QPalette desktops = QApplication::palette();
        program.delegate->setAppearanceClassic(false);
        program.appearance.setApplicationAppearance(AppearanceName::DarkAqua);
        QVERIFY(QApplication::palette().color(QPalette::Window).lightness() < 80);
        QVERIFY(QApplication::palette().color(QPalette::WindowText).lightness() > 200);
        program.appearance.setApplicationAppearance(std::nullopt);
        QCOMPARE(QApplication::palette(), desktops);
    }

    void theTerminationStopsBothTimers()
    {
        Program program;
        program.play({{UserInfoKey::persistentId, 1}, {UserInfoKey::totalTime, 200.0},
            {UserInfoKey::storeUrl, QStringLiteral("https://music.example")}});
        QVERIFY(program.connector->isProgressPollingTimerActive());
        QVERIFY(program.connector->isRefreshTrackTimerActive());
        program.delegate->applicationWillTerminate();
        QVERIFY(!program.connector->isProgressPollingTimerActive());
        QVERIFY(!program.connector->isRefreshTrackTimerActive());
    }

    void playPauseIsSentAndAnIdleMusicIsNoLongerPolled()
    {
        Program program;
        program.playTrack();
        program.music.clearRecords();
        program.delegate->playPausePressed();
        QCOMPARE(program.music.commands(), {QStringLiteral("playpause")});
        QVERIFY(program.connector->isProgressPollingTimerActive());
        program.music.answers.playerState = PlayerState::paused;
        program.delegate->playPausePressed();
        QVERIFY(!program.connector->isProgressPollingTimerActive());
    }

    void nextAndPreviousRefreshTheTrack()
    {
        Program program;
        program.playTrack();
        program.music.clearRecords();
        program.music.answers.currentTrack->name = QStringLiteral("The next one");
        program.delegate->nextPressed();
        QCOMPARE(program.connector->currentTrack()->trackName, QStringLiteral("The next one"));
        program.music.answers.currentTrack->name = QStringLiteral("The one before");
        program.delegate->prevPressed();
        QCOMPARE(program.connector->currentTrack()->trackName, QStringLiteral("The one before"));
        QCOMPARE(program.music.commands(), (QStringList{QStringLiteral("nextTrack"), QStringLiteral("backTrack")}));
    }

    void nextAndPreviousRefreshTheTrackAlsoWhereMusicDoesNotAnswerThem()
    {
        Program program;
        program.playTrack();
        program.music.unansweredCommands = {QStringLiteral("nextTrack"), QStringLiteral("backTrack")};
        program.music.clearRecords();
        program.music.answers.currentTrack->name = QStringLiteral("The next one");
        program.delegate->nextPressed();
        QCOMPARE(program.connector->currentTrack()->trackName, QStringLiteral("The next one"));
        program.music.answers.currentTrack->name = QStringLiteral("The one before");
        program.delegate->prevPressed();
        QCOMPARE(program.connector->currentTrack()->trackName, QStringLiteral("The one before"));
        QVERIFY(program.music.commands().isEmpty());
    }

    void musicThatDoesNotRunIsSentNothingButCanBeOpened()
    {
        Program program(false);
        program.delegate->playPausePressed();
        program.delegate->nextPressed();
        program.delegate->prevPressed();
        QVERIFY(program.music.commands().isEmpty());
        program.delegate->openMusicApp();
        QCOMPARE(program.music.commands(), {QStringLiteral("activate")});
    }

    void musicThatRunsIsNotOpenedAgain()
    {
        Program program;
        program.delegate->openMusicApp();
        QVERIFY(!program.music.commands().contains(QStringLiteral("activate")));
    }

    void theVolumeChangesByFourAsTheSenderSays()
    {
        Program program;
        program.music.answers.soundVolume = 98;
        program.connector->refreshPlaybackSettings();
        program.music.clearRecords();
        QAction sender;
        program.delegate->volumeButtonPressed(sender);
        QVERIFY(program.music.commands().isEmpty());
        sender.setObjectName(MenuItemIdentifier::volumeUp);
        program.delegate->volumeButtonPressed(sender);
        sender.setObjectName(MenuItemIdentifier::volumeDown);
        program.delegate->volumeButtonPressed(sender);
        QCOMPARE(program.music.commands(),
            (QStringList{QStringLiteral("setSoundVolume 100"), QStringLiteral("setSoundVolume 96")}));
    }

    void transportItemsAreEnabledWhileMusicRunsAndAllOthersAlways()
    {
        using namespace MenuItemIdentifier;
        Program program(false);
        QAction item;
        QVERIFY(program.delegate->validateMenuItem(item));
        for (const QString &identifier : {volumeUp, volumeDown, openMusicApp, closeWindow, keepAboveAllWindows}) {
            item.setObjectName(identifier);
            QVERIFY(program.delegate->validateMenuItem(item));
        }
        for (const QString &identifier : {playPause, next, previous}) {
            item.setObjectName(identifier);
            QVERIFY(!program.delegate->validateMenuItem(item));
        }
        program.music.launch();
        program.playLiveStream();
        for (const QString &identifier : {playPause, next, previous}) {
            item.setObjectName(identifier);
            QVERIFY(program.delegate->validateMenuItem(item));
        }
    }

    void keepAboveIsToggledInTheMainWindowOnly()
    {
        Program program;
        program.delegate->toggleKeepMainWindowAboveOtherWindows();
        QVERIFY(!program.defaults.boolForKey(SettingsKey::keepMainWindowAboveAllOtherWindows));
        WindowController controller(program.defaults);
        program.delegate->toggleKeepMainWindowAboveOtherWindows();
        QVERIFY(program.defaults.boolForKey(SettingsKey::keepMainWindowAboveAllOtherWindows));
        QCOMPARE(controller.window().level(), WindowLevel::Floating);
    }

    void theCommandsOfOtherWindowsAskForThem()
    {
        Program program;
        QSignalSpy preferences(&*program.delegate, &AppDelegate::preferencesRequested);
        QSignalSpy help(&*program.delegate, &AppDelegate::helpRequested);
        program.delegate->preferencesButtonAction();
        program.delegate->openTermsAndConditions();
        QCOMPARE(preferences.count(), 1);
        QCOMPARE(help.count(), 1);
        QCOMPARE(help.at(0).at(0).toString(), QStringLiteral("TermsConditions"));
        QVERIFY(!help.at(0).at(1).toString().isEmpty());
    }

    void withoutAHelpBookThereIsNoHelpToAskFor()
    {
        Program program;
        const QSignalSpy help(&*program.delegate, &AppDelegate::helpRequested);
        hasHelpBook = false;
        program.delegate->openHelp();
        program.delegate->openTermsAndConditions();
        hasHelpBook = true;
        QCOMPARE(help.count(), 0);
        program.delegate->openHelp();
        program.delegate->openTermsAndConditions();
        QCOMPARE(help.count(), 2);
    }

    void thereAreStripesButNothingIsShownBeforeTheAboutWindowIsAskedFor()
    {
        Program program;
        const AboutPinstripeView &stripes = program.delegate->pinstripesView();
        QVERIFY(!program.delegate->aboutWindow());
        QVERIFY(!stripes.isKeyWindow());
        QVERIFY(!stripes.isVisible());
        QVERIFY(!stripes.testAttribute(Qt::WA_WState_Polished));
        QVERIFY(!stripes.testAttribute(Qt::WA_WState_Created));
        QVERIFY(QGuiApplication::topLevelWindows().isEmpty());
    }

    void theAboutWindowComesUpKeyOverItsStripes()
    {
        Program program;
        program.delegate->displayAboutWindow();
        AboutWindow *about = program.delegate->aboutWindow();
        QVERIFY(about->isVisible());
        QVERIFY(program.delegate->pinstripesView().isKeyWindow());
        QCOMPARE(program.delegate->pinstripesView().parentWidget(), about);
        QVERIFY(QTest::qWaitForWindowActive(about));
        QCOMPARE(program.delegate->pinstripesView().geometry(), about->rect());
        QCOMPARE(program.windowActivation.keyWindow(), about->windowHandle());
        QVERIFY(!program.windowActivation.mainWindow());
    }

    void askedForAgainTheAboutWindowIsTheSameWithItsStripesInItOnce()
    {
        Program program;
        program.delegate->displayAboutWindow();
        AboutWindow *about = program.delegate->aboutWindow();
        about->close();
        QVERIFY(!about->isVisible());
        program.delegate->displayAboutWindow();
        program.delegate->displayAboutWindow();
        QCOMPARE(program.delegate->aboutWindow(), about);
        QVERIFY(about->isVisible());
        QCOMPARE(about->findChildren<AboutPinstripeView *>().size(), 1);
        about->showMinimized();
        program.delegate->displayAboutWindow();
        QVERIFY(isOnScreen(*about));
    }

    void theStripesFollowTheKeyboardIntoAndOutOfTheAboutWindow()
    {
        Program program;
        const AboutPinstripeView &stripes = program.delegate->pinstripesView();
        QWidget other;
        other.show();
        program.delegate->displayAboutWindow();
        AboutWindow *about = program.delegate->aboutWindow();
        QVERIFY(QTest::qWaitForWindowActive(about));
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QVERIFY(!stripes.isKeyWindow());
        about->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(about));
        QVERIFY(stripes.isKeyWindow());
    }

    void otherWindowsDoNotTouchTheStripes()
    {
        Program program;
        QWidget other;
        other.show();
        program.delegate->displayAboutWindow();
        QSignalSpy changed(&program.delegate->pinstripesView(), &AboutPinstripeView::isKeyWindowChanged);
        program.delegate->windowDidResignKey(other.windowHandle());
        program.delegate->windowDidResignKey(nullptr);
        QCOMPARE(changed.count(), 0);
        program.delegate->windowDidResignKey(program.delegate->aboutWindow()->windowHandle());
        QCOMPARE(changed.count(), 1);
        program.delegate->windowDidBecomeKey(other.windowHandle());
        QCOMPARE(changed.count(), 1);
    }

    void noWindowIsTheAboutWindowThatThereIsNot()
    {
        Program program;
        program.delegate->windowDidBecomeKey(nullptr);
        QVERIFY(program.delegate->pinstripesView().isKeyWindow());
        program.delegate->windowDidResignKey(nullptr);
        QVERIFY(!program.delegate->pinstripesView().isKeyWindow());
    }

    void theDelegateMayEndWhileTheAboutWindowIsShown()
    {
        Program program;
        program.delegate->displayAboutWindow();
        program.delegate.reset();
        QVERIFY(QApplication::topLevelWidgets().isEmpty());
    }

    void theDockMenuOfAMusicThatDoesNotRunOpensIt()
    {
        Program program(false);
        const auto menu = program.delegate->applicationDockMenu();
        QCOMPARE(menu->title(), QStringLiteral("Dock Menu Items"));
        QCOMPARE(contents(*menu),
            (QStringList{QStringLiteral("Open \"Music\"|File_OpenMusicApp"), QStringLiteral("-"),
                QStringLiteral("Keep Above All Other Windows|Window_KeepAboveAllWindows")}));
        itemOf(*menu, MenuItemIdentifier::openMusicApp)->trigger();
        QCOMPARE(program.music.commands(), {QStringLiteral("activate")});
    }

    void theDockMenuTellsTheTrackItemByItem()
    {
        Program program;
        program.playTrack();
        QAction playPause(QStringLiteral("Pause"));
        program.delegate->setPlayPauseMenuItem(&playPause);
        program.delegate->setCurrentTrackInfo(program.connector->currentTrack());
        const auto menu = program.delegate->applicationDockMenu();
        QCOMPARE(contents(*menu),
            (QStringList{QStringLiteral("(Now Playing)"), QStringLiteral("-"),
                QStringLiteral("(    Track: Salt && Pepper)"), QStringLiteral("(    Artist: Band)"),
                QStringLiteral("(    Album: Record)"), QStringLiteral("-"), QStringLiteral("Pause|Controls_PlayPause"),
                QStringLiteral("Next|Controls_Next"), QStringLiteral("Previous|Controls_Prev"), QStringLiteral("-"),
                QStringLiteral("(Show Player|File_ShowPlayer)"),
                QStringLiteral("Keep Above All Other Windows|Window_KeepAboveAllWindows")}));
        for (const QAction *item : menu->actions()) {
            QVERIFY(item->shortcut().isEmpty());
        }
    }

    void theDockMenuChoosesThePlayerToFollow()
    {
        Program program;
        program.players.players = {playerNamed(QStringLiteral("vlc"), QStringLiteral("VLC")),
            playerNamed(QStringLiteral("mpv"), QStringLiteral("mpv"))};
        program.players.players.last().isFollowed = true;
        const auto menu = program.delegate->applicationDockMenu();
        const QList<QAction *> items = menu->actions().constLast()->menu()->actions();
        QCOMPARE(items.size(), 5);
        QCOMPARE(items.at(0)->text(), QStringLiteral("Automatic (mpv)"));
        items.at(1)->trigger();
        QCOMPARE(program.defaults.stringForKey(SettingsKey::followedPlayer), QStringLiteral("vlc"));
        items.at(0)->trigger();
        QCOMPARE(program.defaults.stringForKey(SettingsKey::followedPlayer), QString());
        QCOMPARE(items.at(4)->text(), QStringLiteral("Never Follow mpv"));
        items.at(4)->trigger();
        QCOMPARE(program.players.left, {QStringLiteral("mpv")});
    }

    void theDockMenuOfALiveStreamCannotSkip()
    {
        Program program;
        program.playLiveStream();
        QAction playPause(QStringLiteral("Stop"));
        program.delegate->setPlayPauseMenuItem(&playPause);
        QCOMPARE(contents(*program.delegate->applicationDockMenu()),
            (QStringList{QStringLiteral("Stop|Controls_PlayPause"), QStringLiteral("-"),
                QStringLiteral("(Show Player|File_ShowPlayer)"),
                QStringLiteral("Keep Above All Other Windows|Window_KeepAboveAllWindows")}));
    }

    void theDockMenusItemsDoWhatTheySay()
    {
        Program program;
        program.playTrack();
        program.music.clearRecords();
        const auto menu = program.delegate->applicationDockMenu();
        itemOf(*menu, MenuItemIdentifier::playPause)->trigger();
        itemOf(*menu, MenuItemIdentifier::next)->trigger();
        itemOf(*menu, MenuItemIdentifier::previous)->trigger();
        QCOMPARE(program.music.commands(),
            (QStringList{QStringLiteral("playpause"), QStringLiteral("nextTrack"), QStringLiteral("backTrack")}));
    }

    void theDockMenuShowsThePlayersOwnWindow()
    {
        Program program;
        program.music.setPlayer(QStringLiteral("Salt & Pepper"), true);
        const auto menu = program.delegate->applicationDockMenu();
        QAction *show = itemOf(*menu, MenuItemIdentifier::showPlayer);
        QCOMPARE(show->text(), QStringLiteral("Show Salt && Pepper"));
        QVERIFY(show->isEnabled());
        program.music.clearRecords();
        show->trigger();
        QCOMPARE(program.music.commands(), {QStringLiteral("showPlayer")});
    }

    void theDockMenusCheckMarkIsTheSetting()
    {
        Program program;
        WindowController controller(program.defaults);
        const auto menu = program.delegate->applicationDockMenu();
        QVERIFY(!itemOf(*menu, MenuItemIdentifier::keepAboveAllWindows)->isChecked());
        itemOf(*menu, MenuItemIdentifier::keepAboveAllWindows)->trigger();
        QVERIFY(program.defaults.boolForKey(SettingsKey::keepMainWindowAboveAllOtherWindows));
        QVERIFY(itemOf(*program.delegate->applicationDockMenu(), MenuItemIdentifier::keepAboveAllWindows)->isChecked());
    }

    void reopeningWithoutWindowsGoesOn()
    {
        Program program;
        QVERIFY(QGuiApplication::topLevelWindows().isEmpty());
        QVERIFY(program.delegate->applicationShouldHandleReopen(false));
    }

    void reopeningWithoutAMainOrDrawerWindowGoesOn()
    {
        Program program;
        const QWidget other;
        QVERIFY(program.delegate->applicationShouldHandleReopen(false));
        QVERIFY(!other.isVisible());
    }

    void reopeningBringsTheOnlyMainWindowToTheFront()
    {
        Program program;
        WindowController controller(program.defaults);
        QVERIFY(program.delegate->applicationShouldHandleReopen(false));
        QVERIFY(isOnScreen(controller.window()));
        controller.window().showMinimized();
        QVERIFY(program.delegate->applicationShouldHandleReopen(false));
        QVERIFY(isOnScreen(controller.window()));
        QVERIFY(program.delegate->applicationShouldHandleReopen(true));
    }

    void reopeningRefreshesTheShadowOfAWindowThatIsInFrontAlready()
    {
        Program program;
        WindowController controller(program.defaults);
        QVERIFY(program.delegate->applicationShouldHandleReopen(false));
        QVERIFY(isPaintedOnReopening(program, controller.window()));
        PlaylistWindow drawer;
        controller.window().hide();
        drawer.show();
        drawer.activateWindow();
        QVERIFY(isPaintedOnReopening(program, drawer));
    }

    void reopeningWithADrawerWindowAloneDoesNothing()
    {
        Program program;
        PlaylistWindow drawer;
        QVERIFY(!program.delegate->applicationShouldHandleReopen(false));
        QVERIFY(!drawer.isVisible());
    }

    void reopeningWithBothWindowsHiddenBringsTheMainWindowBack()
    {
        Program program;
        WindowController controller(program.defaults);
        PlaylistWindow drawer;
        QVERIFY(program.delegate->applicationShouldHandleReopen(false));
        QVERIFY(isOnScreen(controller.window()));
        QVERIFY(!drawer.isVisible());
    }

    void reopeningWithTheDrawerWindowVisibleBringsItToTheFront()
    {
        Program program;
        WindowController controller(program.defaults);
        PlaylistWindow drawer;
        drawer.show();
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QVERIFY(program.delegate->applicationShouldHandleReopen(true));
        QVERIFY(QTest::qWaitForWindowActive(&drawer));
        QVERIFY(!controller.window().isVisible());
    }

    void reopeningWithTheMainWindowVisibleDoesNothing()
    {
        Program program;
        WindowController controller(program.defaults);
        PlaylistWindow drawer;
        controller.window().show();
        QVERIFY(!program.delegate->applicationShouldHandleReopen(true));
        drawer.show();
        QVERIFY(!program.delegate->applicationShouldHandleReopen(true));
    }
};

TUNEDECK_TEST(AppDelegateTest, QApplication)
#include "AppDelegateTest.moc"
