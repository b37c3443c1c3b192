// SPDX-License-Identifier: MIT
#include "app/ShowWhilePlayer.h"

#include "app/Application.h"
#include "support/Desktop.h"
#include "support/elapse.h"
#include "support/registerTest.h"
#include "window/WindowController.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <optional>

using namespace tunedeck;

namespace {
/// A user who wants the window only while there is a player, unless the test says otherwise.
struct Wish : Desktop {
    explicit Wish(bool isPlayerThere, bool isWanted = true)
    {
        music.setRunning(isPlayerThere);
        defaults.setBool(SettingsKey::showOnlyWithPlayer, isWanted);
        whilePlayer.emplace(music, defaults);
        shown.emplace(&*whilePlayer, &ShowWhilePlayer::showRequested);
        hidden.emplace(&*whilePlayer, &ShowWhilePlayer::hideRequested);
    }

    /// Whether a farewell was under way; if so, its time is over now.
    [[nodiscard]] bool endFarewell() { return elapse(*whilePlayer->findChild<QTimer *>(QStringLiteral("farewell"))); }

    std::optional<ShowWhilePlayer> whilePlayer;
    std::optional<QSignalSpy> shown;
    std::optional<QSignalSpy> hidden;
};
} // namespace

class ShowWhilePlayerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }
    void cleanup() { QApplication::setPalette(QPalette()); }

    void theWindowGoesAWhileAfterThePlayerAndComesWithTheNext()
    {
        Wish wish(true);
        QVERIFY(wish.whilePlayer->isShown());
        wish.music.quit();
        QCOMPARE(wish.hidden->count(), 0);
        QVERIFY(wish.endFarewell());
        QCOMPARE(wish.hidden->count(), 1);
        QVERIFY(!wish.whilePlayer->isShown());
        QCOMPARE(wish.shown->count(), 0);
        wish.music.launch();
        QCOMPARE(wish.shown->count(), 1);
        QVERIFY(wish.whilePlayer->isShown());
    }

    void aChangeOfThePlayerDoesNotMakeItBlink()
    {
        Wish wish(true);
        wish.music.quit();
        wish.music.launch();
        QVERIFY(!wish.endFarewell());
        QCOMPARE(wish.hidden->count(), 0);
        QCOMPARE(wish.shown->count(), 0);
    }

    void aUserWhoDoesNotWantItHasTheWindowAlways()
    {
        Wish wish(false, false);
        QVERIFY(wish.whilePlayer->isShown());
        wish.music.launch();
        wish.music.quit();
        QVERIFY(!wish.endFarewell());
        QCOMPARE(wish.hidden->count(), 0);
        QCOMPARE(wish.shown->count(), 0);
    }

    void theSettingTakesEffectAtOnce()
    {
        Wish wish(false, false);
        wish.defaults.setBool(SettingsKey::showOnlyWithPlayer, true);
        QVERIFY(wish.endFarewell());
        QCOMPARE(wish.hidden->count(), 1);
        wish.defaults.setBool(SettingsKey::showOnlyWithPlayer, false);
        QCOMPARE(wish.shown->count(), 1);
        wish.music.launch();
        wish.defaults.setBool(SettingsKey::showOnlyWithPlayer, true);
        QVERIFY(!wish.endFarewell());
        QCOMPARE(wish.hidden->count(), 1);
    }

    void aSessionWithoutAPlayerStartsTheProgramHiddenAndItsMenusWorkAllTheSame()
    {
        Desktop desktop;
        desktop.music.setRunning(false);
        desktop.defaults.setBool(SettingsKey::showOnlyWithPlayer, true);
        Application application(desktop.environment());
        application.showForSession();
        const Window &window = application.windowController().window();
        QCoreApplication::processEvents();
        QVERIFY(!window.isVisible());
        QVERIFY(!window.actions().isEmpty());
        desktop.music.launch();
        QVERIFY(window.isVisible());
        QVERIFY(!window.windowHandle()->property("_q_showWithoutActivating").isValid());
        desktop.music.quit();
        QVERIFY(elapse(*application.findChild<QTimer *>(QStringLiteral("farewell"))));
        QVERIFY(!window.isVisible());
        application.reopen();
        QVERIFY(window.isVisible());
    }

    void aPlayerThatComesBeforeTheFirstShowDoesNotShowTheWindow()
    {
        Desktop desktop;
        desktop.music.setRunning(false);
        desktop.defaults.setBool(SettingsKey::showOnlyWithPlayer, true);
        Application application(desktop.environment());
        const Window &window = application.windowController().window();
        desktop.music.launch();
        QVERIFY(!window.isVisible());
        application.showForSession();
        QVERIFY(window.isVisible());
    }

    void aSessionShowsTheWindowOfAUserWhoAlwaysWantsIt()
    {
        Desktop desktop;
        desktop.music.setRunning(false);
        Application application(desktop.environment());
        application.showForSession();
        QVERIFY(application.windowController().window().isVisible());
    }

    void aWindowThatTheUserHasHiddenStaysHiddenUntilAPlayerComes()
    {
        Desktop desktop;
        desktop.music.setRunning(true);
        desktop.defaults.setBool(SettingsKey::showOnlyWithPlayer, true);
        Application application(desktop.environment());
        application.showMainWindow();
        Window &window = application.windowController().window();
        window.hide();
        desktop.music.quit();
        QVERIFY(elapse(*application.findChild<QTimer *>(QStringLiteral("farewell"))));
        QVERIFY(!window.isVisible());
        desktop.music.launch();
        QVERIFY(window.isVisible());
    }
};

TUNEDECK_TEST(ShowWhilePlayerTest, QApplication)
#include "ShowWhilePlayerTest.moc"
