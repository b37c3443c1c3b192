// SPDX-License-Identifier: MIT
#include "player/ViewController.h"

#include "music/MenuItemIdentifier.h"
#include "player/Player.h"
#include "player/SpeakerButton.h"
#include "skin/views/ClassicAudioProgressSlider.h"
#include "skin/views/DrawerBackground.h"
#include "skin/views/PlainButton.h"
#include "skin/views/PlayerButton.h"
#include "skin/views/TunedeckPlayerButton.h"
#include "skin/views/WindowButtonsView.h"
#include "skin/views/WindowControlButton.h"
#include "support/StartWatch.h"
#include "support/elapse.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <QWindow>

#include <limits>

using namespace tunedeck;

namespace {
constexpr int notch = QWheelEvent::DefaultDeltasPerStep;

/// Moves the knob as the user's hand does.
void drag(PercentSlider &slider, double percent)
{
    slider.setValue(static_cast<int>(slider.maximum() * percent / 100));
}
} // namespace

class ViewControllerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        // Not of menus and tooltips, which the offscreen platform neither raises nor gives the keyboard.
        tunedeck::failOnWarning();
    }

    void theTrackOnShowIsTold()
    {
        Player player;
        QList<std::optional<MusicConnectorTrack>> told;
        connect(&*player.controller, &ViewController::currentTrackInfoChanged, this,
            [&told](const std::optional<MusicConnectorTrack> &track) { told.append(track); });
        player.play(localTrackInfo());
        QVERIFY(told.last());
        QCOMPARE(told.last()->trackName, QStringLiteral("Blues"));
        player.stop();
        QVERIFY(!told.last());
    }

    void noTrackLeavesTheDisplayAsItIs()
    {
        Player player;
        player.play(localTrackInfo());
        player.controller->setCurrentTrack(std::nullopt);
        QCOMPARE(player.displayed().first(), QStringLiteral("Blues"));
    }

    void musicThatQuitsClearsTheTrack()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.quit();
        QCOMPARE(player.displayed(), {QStringLiteral("Music is not open")});
        QVERIFY(!player.view.lcd().primaryTimeLabel().isHidden());
        QCOMPARE(player.view.playPauseButton().controlGlyph(), PlayerButtonTypes::play);
    }

    void aStoppedFeedOfAPausedPlayerKeepsTheTrackInfo()
    {
        Player player;
        player.play(localTrackInfo(), PlayerState::paused);
        QSignalSpy told(&*player.controller, &ViewController::currentTrackInfoChanged);
        player.connector->setFeedType(FeedType::stopped);
        QCOMPARE(player.displayed(), {QStringLiteral("No Song")});
        QCOMPARE(told.count(), 0);
    }

    void whatPlayersGetWrongLeavesTheDisplaySensible_data()
    {
        QTest::addColumn<double>("position");
        QTest::addColumn<double>("duration");
        QTest::addColumn<double>("progress");
        constexpr double infinity = std::numeric_limits<double>::infinity();
        constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
        QTest::newRow("beyond the end") << 250.0 << 200.0 << 100.0;
        QTest::newRow("before the start") << -20.0 << 200.0 << 0.0;
        // The notification's duration counts then.
        QTest::newRow("no duration") << 10.0 << 0.0 << 5.0;
        QTest::newRow("endless") << 10.0 << infinity << 0.0;
        QTest::newRow("no number") << notANumber << 200.0 << 0.0;
    }

    void whatPlayersGetWrongLeavesTheDisplaySensible()
    {
        QFETCH(const double, position);
        QFETCH(const double, duration);
        Player player;
        player.play(localTrackInfo());
        player.music.answers.playerPosition = position;
        player.music.answers.currentTrack->duration = duration;
        player.connector->updatePlayerProgressInfo();
        QTEST(player.view.lcd().trackProgressSlider().doubleValue(), "progress");
    }

    void aLengthThatShrinksMovesTheKnobToTheEnd()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.answers.playerPosition = 100.0;
        player.connector->updatePlayerProgressInfo();
        QCOMPARE(player.view.lcd().trackProgressSlider().doubleValue(), 50.0);
        player.music.answers.currentTrack->duration = 80.0;
        player.connector->updatePlayerProgressInfo();
        QCOMPARE(player.view.lcd().trackProgressSlider().doubleValue(), 100.0);
    }

    void aViewThatComesLateShowsWhatPlaysAlready()
    {
        Player player;
        player.music.answers.soundVolume = 40;
        player.play(localTrackInfo());
        player.connector->refreshPlaybackSettings();
        player.controller.reset();
        PlayerView view(player.skin());
        const ViewController controller(player.environment(), view);
        QCOMPARE(view.playPauseButton().controlGlyph(), PlayerButtonTypes::pause);
        QCOMPARE(view.volumeSlider().doubleValue(), 40.0);
        QCOMPARE(view.lcd().primaryTimeLabel().text(), QStringLiteral("0:10"));
        QCOMPARE(view.lcd().secondaryTimeLabel().text(), QStringLiteral("-3:09"));
        QCOMPARE(view.lcd().trackInfoLabel().displayStrings(),
            (QStringList{QStringLiteral("Blues"), QStringLiteral("Band"), QStringLiteral("Record")}));
        QCOMPARE(controller.currentTrack()->trackName, QStringLiteral("Blues"));
    }

    void theGlyphAndTheTitleFollowTheState_data()
    {
        QTest::addColumn<bool>("isLive");
        QTest::addColumn<FourCharCode>("state");
        QTest::addColumn<PlayerButtonTypes>("glyph");
        QTest::addColumn<QString>("title");
        QTest::newRow("stopped") << false << PlayerState::stopped << PlayerButtonTypes::play << QStringLiteral("Play");
        QTest::newRow("paused") << false << PlayerState::paused << PlayerButtonTypes::play << QStringLiteral("Play");
        QTest::newRow("playing") << false << PlayerState::playing << PlayerButtonTypes::pause
                                 << QStringLiteral("Pause");
        QTest::newRow("seeking") << false << PlayerState::rewinding << PlayerButtonTypes::pause
                                 << QStringLiteral("Pause");
        QTest::newRow("live, paused") << true << PlayerState::paused << PlayerButtonTypes::play
                                      << QStringLiteral("Play");
        QTest::newRow("live, playing") << true << PlayerState::playing << PlayerButtonTypes::stop
                                       << QStringLiteral("Stop");
    }

    void theGlyphAndTheTitleFollowTheState()
    {
        QFETCH(const bool, isLive);
        QFETCH(const FourCharCode, state);
        Player player;
        QSignalSpy title(&*player.controller, &ViewController::playPauseTitleChanged);
        player.play(isLive ? liveStreamInfo() : localTrackInfo(), state);
        QTEST(player.view.playPauseButton().controlGlyph(), "glyph");
        QTEST(title.last().at(0).toString(), "title");
    }

    void theDockTileIsToldOfTheStateGivenAndThenOfTheOneHeld()
    {
        Player player;
        player.play(localTrackInfo(), PlayerState::paused);
        QSignalSpy tile(&*player.controller, &ViewController::dockTileImageChanged);
        player.controller->playerStateDidChange(PlayerState::playing);
        QCOMPARE(tile.count(), 2);
        QCOMPARE(tile.at(0).at(0).toString(), QStringLiteral("DockTile_Pause"));
        QCOMPARE(tile.at(1).at(0).toString(), QStringLiteral("DockTile_Play"));
    }

    void theDockTileIsDarkOnlyWhereTheSettingsLetIt()
    {
        Player player;
        player.appearance.setApplicationAppearance(AppearanceName::DarkAqua);
        const auto tile = [&player] {
            return player.controller->dockTileImage(PlayerState::playing, FeedType::liveStream);
        };
        QCOMPARE(tile(), QStringLiteral("DockTile_Stop"));
        player.defaults.setBool(SettingsKey::appearanceClassic, false);
        QCOMPARE(tile(), QStringLiteral("DockTile_Stop-Dark"));
        QCOMPARE(player.controller->dockTileImage(PlayerState::paused, FeedType::localTrack),
            QStringLiteral("DockTile_Play-Dark"));
        player.appearance.setApplicationAppearance(AppearanceName::VibrantDark);
        QCOMPARE(tile(), QStringLiteral("DockTile_Stop-Dark"));
        player.appearance.setApplicationAppearance(AppearanceName::Aqua);
        QCOMPARE(tile(), QStringLiteral("DockTile_Stop"));
        player.appearance.setApplicationAppearance(AppearanceName::DarkAqua);
        player.defaults.setBool(SettingsKey::appearanceUpdatesDockIcon, false);
        QCOMPARE(tile(), QStringLiteral("DockTile_Stop"));
    }

    void theDockTileFollowsTheAppearanceAndItsSetting()
    {
        Player player;
        player.defaults.setBool(SettingsKey::appearanceClassic, false);
        player.appearance.setApplicationAppearance(AppearanceName::Aqua);
        QSignalSpy tile(&*player.controller, &ViewController::dockTileImageChanged);
        player.appearance.setApplicationAppearance(AppearanceName::DarkAqua);
        QCOMPARE(tile.last().at(0).toString(), QStringLiteral("DockTile_Play-Dark"));
        player.defaults.setAppearanceUpdatesDockIcon(false);
        QCOMPARE(tile.last().at(0).toString(), QStringLiteral("DockTile_Play"));
    }

    void theTimeLabelsMenuWritesTheSetting()
    {
        Player player;
        QMenu &menu = player.controller->timeLabelMenu();
        QCOMPARE(menu.title(), QStringLiteral("Menu"));
        const QList<QAction *> items = menu.actions();
        QCOMPARE(items.size(), 2);
        QCOMPARE(items[0]->text(), QStringLiteral("Remaining Time"));
        QCOMPARE(items[0]->objectName(), QStringLiteral("ContextualMenu_RemainingTime"));
        QCOMPARE(items[1]->text(), QStringLiteral("Duration"));
        QCOMPARE(items[1]->objectName(), QStringLiteral("ContextualMenu_TotalTime"));
        for (int i = 0; i < 2; ++i) {
            items[1]->trigger();
            Q_EMIT menu.aboutToShow();
            QVERIFY(!player.defaults.boolForKey(SettingsKey::remainingTimeEnabled));
            QVERIFY(!player.controller->remainingTimeEnabled());
            QVERIFY(!items[0]->isChecked());
            QVERIFY(items[1]->isChecked());
        }
        items[0]->trigger();
        Q_EMIT menu.aboutToShow();
        QVERIFY(player.defaults.boolForKey(SettingsKey::remainingTimeEnabled));
        QVERIFY(items[0]->isChecked());
        QVERIFY(!items[1]->isChecked());
    }

    void theTimeLabelsMenuOpensWhereItIsAskedFor()
    {
        Player player;
        player.view.resize(450, 64);
        player.view.show();
        QLabel &label = player.view.lcd().secondaryTimeLabel();
        const QPoint position = label.rect().center();
        QContextMenuEvent request(QContextMenuEvent::Mouse, position, label.mapToGlobal(position));
        QCoreApplication::sendEvent(&label, &request);
        QMenu &menu = player.controller->timeLabelMenu();
        QVERIFY(menu.isVisible());
        QCOMPARE(menu.pos(), label.mapToGlobal(position));
        QVERIFY(menu.actions()[0]->isChecked());
        menu.close();
    }

    void aClickOnTheTimeLabelChangesNothing()
    {
        Player player;
        QTest::mouseClick(&player.view.lcd().secondaryTimeLabel(), Qt::LeftButton);
        QVERIFY(player.defaults.boolForKey(SettingsKey::remainingTimeEnabled));
    }

    void menuItemsFollowMusic()
    {
        using namespace MenuItemIdentifier;
        Player player(false);
        for (const QString &item : {playPause, next, previous, volumeUp, volumeDown}) {
            QVERIFY(!player.isItemEnabled(item));
        }
        player.music.launch();
        player.play(localTrackInfo());
        for (const QString &item : {playPause, next, previous, volumeUp, volumeDown}) {
            QVERIFY(player.isItemEnabled(item));
        }
        player.play(liveStreamInfo());
        QVERIFY(player.isItemEnabled(playPause));
        QVERIFY(player.isItemEnabled(volumeUp));
        QVERIFY(!player.isItemEnabled(next));
        QVERIFY(!player.isItemEnabled(previous));
    }

    void menuItemsThatNeedNoMusicAreEnabledAndStrangersAreNot()
    {
        using namespace MenuItemIdentifier;
        Player player(false);
        for (const QString &item : {openMusicApp, closeWindow, totalTime, remainingTime}) {
            QVERIFY(player.isItemEnabled(item));
        }
        QVERIFY(!player.isItemEnabled(keepAboveAllWindows));
        QVERIFY(!player.isItemEnabled(QString()));
    }

    void backPointsBackAndForwardPointsForward()
    {
        Player player;
        QCOMPARE(player.view.backwardButton().controlGlyph(), PlayerButtonTypes::backward);
        QCOMPARE(player.view.forwardButton().controlGlyph(), PlayerButtonTypes::forward);
    }

    void theTransportButtonsOnlyAsk()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.clearRecords();
        QSignalSpy playPause(&*player.controller, &ViewController::playPausePressed);
        QSignalSpy next(&*player.controller, &ViewController::nextPressed);
        QSignalSpy prev(&*player.controller, &ViewController::prevPressed);
        player.view.playPauseButton().click();
        player.view.forwardButton().click();
        player.view.backwardButton().click();
        QCOMPARE(playPause.count(), 1);
        QCOMPARE(next.count(), 1);
        QCOMPARE(prev.count(), 1);
        QVERIFY(player.music.commands().isEmpty());
    }

    void theVolumeSliderFollowsMusicAndSetsIt()
    {
        Player player;
        player.music.answers.soundVolume = 40;
        player.connector->refreshPlaybackSettings();
        QCOMPARE(player.view.volumeSlider().doubleValue(), 40.0);
        player.music.clearRecords();
        Q_EMIT player.view.volumeSlider().adjusted(57.9);
        QCOMPARE(player.music.commands(), {QStringLiteral("setSoundVolume 57")});
        QCOMPARE(player.connector->soundVolume(), 57.9);
        QCOMPARE(player.view.volumeSlider().doubleValue(), 57.9);
    }

    void aVolumeThatIsDraggedIsNotSetInTheNextPlayer()
    {
        Player player;
        player.music.answers.soundVolume = 90;
        player.connector->refreshPlaybackSettings();
        VolumeSlider &slider = player.view.volumeSlider();
        QTest::mousePress(&slider, Qt::LeftButton, {}, {slider.width() - 10, slider.height() / 2});
        player.music.quit();
        player.music.answers.soundVolume = 10;
        player.music.launch();
        player.music.clearRecords();

        QTest::mouseMove(&slider, {slider.width() - 20, slider.height() / 2});
        QTest::mouseRelease(&slider, Qt::LeftButton, {}, {slider.width() - 20, slider.height() / 2});
        QCOMPARE(player.music.commands(), QStringList());
        QCOMPARE(slider.doubleValue(), 10.0);
    }

    void theSpeakersSetSilenceAndFullVolumeEachTime()
    {
        Player player;
        player.music.clearRecords();
        player.view.volumeMaxButton().click();
        player.view.volumeMaxButton().click();
        player.view.volumeMinButton().click();
        QCOMPARE(player.music.commands(),
            (QStringList{QStringLiteral("setSoundVolume 100"), QStringLiteral("setSoundVolume 100"),
                QStringLiteral("setSoundVolume 0")}));
    }

    void theVolumeDropsWhereMusicDoesNotRun()
    {
        Player player(false);
        drag(player.view.volumeSlider(), 50);
        QCOMPARE(player.connector->soundVolume(), 0.0);
        QCOMPARE(player.view.volumeSlider().doubleValue(), 0.0);
    }

    void theSpeakersHideAsTheSettingSays()
    {
        Player player;
        QVERIFY(!player.view.volumeMinButton().isHidden());
        player.defaults.setBool(SettingsKey::volumeButtonsHidden, true);
        QVERIFY(player.view.volumeMinButton().isHidden());
        QVERIFY(player.view.volumeMaxButton().isHidden());
        player.defaults.setBool(SettingsKey::volumeButtonsHidden, false);
        QVERIFY(!player.view.volumeMaxButton().isHidden());
    }

    void scrubbingSendsEachNewPositionOnce()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.clearRecords();
        PercentSlider &slider = player.view.lcd().trackProgressSlider();
        drag(slider, 25);
        Q_EMIT slider.adjusted(25);
        drag(slider, 50);
        QCOMPARE(player.music.commands(),
            (QStringList{QStringLiteral("setPlayerPosition 50"), QStringLiteral("setPlayerPosition 100")}));
    }

    void aNewTrackLetsTheSamePlaceBeSentAgain()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.clearRecords();
        PercentSlider &slider = player.view.lcd().trackProgressSlider();
        drag(slider, 25);
        player.controller->setCurrentTrack(player.connector->currentTrack());
        Q_EMIT slider.adjusted(25);
        QCOMPARE(player.music.commands(),
            (QStringList{QStringLiteral("setPlayerPosition 50"), QStringLiteral("setPlayerPosition 50")}));
    }

    void theTimeLabelsFollowTheScrubbingHand()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.answers.playerPosition = 100.0;
        drag(player.view.lcd().trackProgressSlider(), 50);
        QCOMPARE(player.view.lcd().primaryTimeLabel().text(), QStringLiteral("1:40"));
    }

    void theKnobIsNotPulledBackUntilTheUserHasLetGoForAThirdOfASecond()
    {
        Player player;
        player.play(localTrackInfo());
        PercentSlider &slider = player.view.lcd().trackProgressSlider();
        QTimer &letGo = player.timer(u"dragLetGoTimer");
        QCOMPARE(letGo.interval(), 333);
        QVERIFY(letGo.isSingleShot());
        drag(slider, 50);
        player.connector->updatePlayerProgressInfo();
        QCOMPARE(slider.doubleValue(), 50.0);
        QVERIFY(elapse(letGo));
        QCOMPARE(slider.doubleValue(), 5.0);
        player.music.answers.playerPosition = 20.0;
        player.connector->updatePlayerProgressInfo();
        QCOMPARE(slider.doubleValue(), 10.0);
    }

    void aKnobThatAPausedPlayerDoesNotFollowGoesBack()
    {
        Player player;
        player.play(localTrackInfo(), PlayerState::paused);
        PercentSlider &slider = player.view.lcd().trackProgressSlider();
        QCOMPARE(slider.doubleValue(), 5.0);
        drag(slider, 50);
        QCOMPARE(slider.doubleValue(), 50.0);
        QVERIFY(elapse(player.timer(u"dragLetGoTimer")));
        QCOMPARE(slider.doubleValue(), 5.0);
    }

    void theKnobGoesToTheStartWhenThePlayerQuitsWhileItIsDragged()
    {
        Player player;
        player.play(localTrackInfo());
        PercentSlider &slider = player.view.lcd().trackProgressSlider();
        drag(slider, 50);
        player.music.quit();
        QVERIFY(elapse(player.timer(u"dragLetGoTimer")));
        QCOMPARE(slider.doubleValue(), 0.0);
    }

    void aKnobThatIsHeldStillFollowsTheTrackAgain()
    {
        Player player;
        player.view.resize(450, 64);
        player.view.show();
        player.play(localTrackInfo());
        PercentSlider &slider = player.view.lcd().trackProgressSlider();
        QTest::mousePress(&slider, Qt::LeftButton, {}, slider.rect().center());
        QVERIFY(slider.isSliderDown());
        const double held = slider.doubleValue();
        QVERIFY(held > 40);
        player.connector->updatePlayerProgressInfo();
        QCOMPARE(slider.doubleValue(), held);
        QVERIFY(elapse(player.timer(u"dragLetGoTimer")));
        player.connector->updatePlayerProgressInfo();
        QCOMPARE(slider.doubleValue(), 5.0);
        QTest::mouseRelease(&slider, Qt::LeftButton, {}, slider.rect().center());
    }

    void eachMoveOfTheKnobBeginsTheThirdOfASecondAnew()
    {
        Player player;
        player.play(localTrackInfo());
        PercentSlider &slider = player.view.lcd().trackProgressSlider();
        drag(slider, 50);
        const StartWatch watch(player.timer(u"dragLetGoTimer"));
        QVERIFY(!watch.wasStarted());
        // The same place again: nothing is sent, but the user has not let go.
        Q_EMIT slider.adjusted(50);
        QVERIFY(watch.wasStarted());
    }

    void aTrackWithoutADurationIsScrubbedToItsStart()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.answers.currentTrack->duration = {};
        QVariantMap info = localTrackInfo();
        info.remove(UserInfoKey::totalTime);
        Q_EMIT player.music.playerInfo(info);
        player.music.clearRecords();
        drag(player.view.lcd().trackProgressSlider(), 50);
        QVERIFY(player.music.commands().isEmpty());
    }

    void theArrowKeysSeekByFiveSeconds()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.clearRecords();
        PercentSlider &slider = player.view.lcd().trackProgressSlider();
        QTest::keyClick(&slider, Qt::Key_Right);
        QTest::keyClick(&slider, Qt::Key_Right);
        QTest::keyClick(&slider, Qt::Key_Left);
        QCOMPARE(player.music.commands(),
            (QStringList{QStringLiteral("setPlayerPosition 15"), QStringLiteral("setPlayerPosition 20"),
                QStringLiteral("setPlayerPosition 15")}));
    }

    void theArrowKeysSeekByFiveSecondsAlsoWhereTheLengthArrivesLate()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.answers.currentTrack->duration = 100.0;
        player.connector->updatePlayerProgressInfo();
        player.music.clearRecords();
        QTest::keyClick(&player.view.lcd().trackProgressSlider(), Qt::Key_Right);
        QCOMPARE(player.music.commands(), {QStringLiteral("setPlayerPosition 15")});
    }

    void aHeldButtonSeeksUntilItIsReleased_data()
    {
        QTest::addColumn<bool>("forward");
        QTest::addColumn<QString>("command");
        QTest::newRow("back") << false << QStringLiteral("rewind");
        QTest::newRow("forward") << true << QStringLiteral("fastForward");
    }

    void aHeldButtonSeeksUntilItIsReleased()
    {
        QFETCH(const bool, forward);
        QFETCH(const QString, command);
        Player player;
        player.play(localTrackInfo());
        player.music.clearRecords();
        QSignalSpy next(&*player.controller, &ViewController::nextPressed);
        QSignalSpy prev(&*player.controller, &ViewController::prevPressed);
        TunedeckPlayerButton &button = forward ? player.view.forwardButton() : player.view.backwardButton();
        QVERIFY(button.isHoldButton());
        QTest::mousePress(&button, Qt::LeftButton);
        QVERIFY(player.music.commands().isEmpty());
        QVERIFY(elapse(*button.findChild<QTimer *>()));
        QCOMPARE(player.music.commands(), {command});
        QTest::mouseRelease(&button, Qt::LeftButton);
        QCOMPARE(player.music.commands(), (QStringList{command, QStringLiteral("resume")}));
        QCOMPARE(next.count() + prev.count(), 0);
    }

    void aButtonThatTheKeyboardHoldsSeeksUntilTheKeyIsReleased_data() { aHeldButtonSeeksUntilItIsReleased_data(); }

    void aButtonThatTheKeyboardHoldsSeeksUntilTheKeyIsReleased()
    {
        QFETCH(const bool, forward);
        QFETCH(const QString, command);
        Player player;
        player.play(localTrackInfo());
        player.view.show();
        QVERIFY(QTest::qWaitForWindowActive(&player.view));
        player.music.clearRecords();
        QSignalSpy next(&*player.controller, &ViewController::nextPressed);
        QSignalSpy prev(&*player.controller, &ViewController::prevPressed);
        TunedeckPlayerButton &button = forward ? player.view.forwardButton() : player.view.backwardButton();
        button.setFocus(Qt::TabFocusReason);
        QTest::keyPress(player.view.windowHandle(), Qt::Key_Space);
        QVERIFY(elapse(*button.findChild<QTimer *>()));
        QCOMPARE(player.music.commands(), {command});
        QTest::keyRelease(player.view.windowHandle(), Qt::Key_Space);
        QCOMPARE(player.music.commands(), (QStringList{command, QStringLiteral("resume")}));
        QCOMPARE(next.count() + prev.count(), 0);
        QTest::keyClick(player.view.windowHandle(), Qt::Key_Space);
        QCOMPARE(next.count() + prev.count(), 1);
    }

    void aClickOnBackOrForwardResumesTooAndNeverSeeks()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.clearRecords();
        QSignalSpy next(&*player.controller, &ViewController::nextPressed);
        QTest::mouseClick(&player.view.forwardButton(), Qt::LeftButton);
        QCOMPARE(next.count(), 1);
        QCOMPARE(player.music.commands(), {QStringLiteral("resume")});
        QTest::mouseClick(&player.view.backwardButton(), Qt::LeftButton);
        QCOMPARE(player.music.commands(), (QStringList{QStringLiteral("resume"), QStringLiteral("resume")}));
    }

    void aLiveStreamEndsTheSeekOfAHeldButton()
    {
        Player player;
        player.play(localTrackInfo());
        TunedeckPlayerButton &button = player.view.forwardButton();
        QTest::mousePress(&button, Qt::LeftButton);
        QVERIFY(elapse(*button.findChild<QTimer *>()));
        player.play(liveStreamInfo());
        QCOMPARE(player.music.commands().last(), QStringLiteral("resume"));
        QVERIFY(!button.isHeld());
    }

    void nothingIsSoughtWhereMusicDoesNotRun()
    {
        Player player(false);
        TunedeckPlayerButton &button = player.view.forwardButton();
        QTest::mousePress(&button, Qt::LeftButton);
        QVERIFY(elapse(*button.findChild<QTimer *>()));
        QTest::mouseRelease(&button, Qt::LeftButton);
        QVERIFY(player.music.commands().isEmpty());
    }

    void aWheelOverTheVolumeSliderStepsTheVolumeWithinItsEnds()
    {
        Player player;
        player.music.answers.soundVolume = 98;
        player.connector->refreshPlaybackSettings();
        player.music.clearRecords();
        player.turnWheel(1);
        QCOMPARE(player.connector->soundVolume(), 100.0);
        QCOMPARE(player.view.volumeSlider().doubleValue(), 100.0);
        QCOMPARE(player.music.commands(), {QStringLiteral("setSoundVolume 100")});
        player.turnWheel(-1);
        QCOMPARE(player.connector->soundVolume(), 96.0);
    }

    void aWheelOverASpeakerIsAWheelOverTheSlider()
    {
        Player player;
        player.music.answers.soundVolume = 50;
        player.connector->refreshPlaybackSettings();
        player.music.clearRecords();
        for (SpeakerButton *speaker : {&player.view.volumeMinButton(), &player.view.volumeMaxButton()}) {
            Player::turnWheelOver(*speaker, notch);
            Player::turnWheelOver(*speaker, -2 * notch);
        }
        QCOMPARE(player.music.commands(),
            (QStringList{QStringLiteral("setSoundVolume 54"), QStringLiteral("setSoundVolume 46"),
                QStringLiteral("setSoundVolume 50"), QStringLiteral("setSoundVolume 42")}));
        QVERIFY(player.view.volumeSlider().toolTip().isEmpty());
    }

    void theSpeakersAndTheSliderShareTheRestOfANotch()
    {
        Player player;
        player.music.answers.soundVolume = 50;
        player.connector->refreshPlaybackSettings();
        player.music.clearRecords();
        Player::turnWheelOver(player.view.volumeMinButton(), notch / 2);
        Player::turnWheelOver(player.view.volumeSlider(), notch / 4);
        QVERIFY(player.music.commands().isEmpty());
        Player::turnWheelOver(player.view.volumeMaxButton(), notch / 4);
        QCOMPARE(player.music.commands(), {QStringLiteral("setSoundVolume 54")});
    }

    void aWheelOverADisabledSpeakerDoesNothing()
    {
        Player player;
        player.music.answers.soundVolume = 50;
        player.connector->refreshPlaybackSettings();
        player.view.volumeMinButton().setEnabled(false);
        player.music.clearRecords();
        Player::turnWheelOver(player.view.volumeMinButton(), notch);
        QVERIFY(player.music.commands().isEmpty());
    }

    void aWheelOverASpeakerTurnsAsTheSettingSays()
    {
        Player player;
        player.music.answers.soundVolume = 50;
        player.connector->refreshPlaybackSettings();
        player.defaults.setBool(SettingsKey::wheelDirectionTurned, true);
        player.music.clearRecords();
        Player::turnWheelOver(player.view.volumeMaxButton(), notch);
        QCOMPARE(player.music.commands(), {QStringLiteral("setSoundVolume 46")});
    }

    void theTooltipStaysAwayUntilASecondAfterTheLastNotch()
    {
        Player player;
        VolumeSlider &slider = player.view.volumeSlider();
        const QString tooltip = slider.toolTip();
        QVERIFY(!tooltip.isEmpty());
        QTimer &holdOff = player.timer(u"tooltipsTimer");
        QCOMPARE(holdOff.interval(), 1000);
        QVERIFY(holdOff.isSingleShot());
        for (int notch = 0; notch < 9; ++notch) {
            player.turnWheel(1);
            QVERIFY(slider.toolTip().isEmpty());
        }
        const StartWatch watch(holdOff);
        QVERIFY(!watch.wasStarted());
        player.turnWheel(1);
        QVERIFY(watch.wasStarted());
        QVERIFY(slider.toolTip().isEmpty());
        QVERIFY(elapse(holdOff));
        QCOMPARE(slider.toolTip(), tooltip);
    }

    void theTooltipOnTheScreenGoesWhenTheVolumeIsScrolled()
    {
        Player player;
        player.view.resize(450, 64);
        player.view.show();
        player.view.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&player.view));
        VolumeSlider &slider = player.view.volumeSlider();
        QToolTip::showText(slider.mapToGlobal(slider.rect().center()), slider.toolTip(), &slider);
        QVERIFY(QToolTip::isVisible());
        player.controller->volumeSliderDidScroll();
        // Qt lets it go after 0.3 s. It would go by itself after 10 s.
        QTRY_VERIFY_WITH_TIMEOUT(!QToolTip::isVisible(), 5'000);
    }

    void aSenderThatIsNoSpeakerSetsNoVolume()
    {
        Player player;
        player.music.clearRecords();
        player.controller->volMinMaxSet(player.view.playPauseButton());
        QVERIFY(player.music.commands().isEmpty());
    }

    void hoveringIsNeverToldAsTrue()
    {
        Player player;
        QSignalSpy hovering(&*player.controller, &ViewController::mouseIsHoveringChanged);
        QEnterEvent enter({1, 1}, {1, 1}, {1, 1});
        QCoreApplication::sendEvent(&player.view, &enter);
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&player.view, &leave);
        QCOMPARE(hovering.count(), 2);
        QCOMPARE(hovering.at(0).first().toBool(), false);
        QCOMPARE(hovering.at(1).first().toBool(), false);
        QVERIFY(!player.controller->mouseIsHovering());
    }

    void theDrawerShowsBeforeTheWindowGrowsAndHidesAfterItShrank()
    {
        Player player(false);
        player.music.setRunning(true);
        QWidget &drawer = player.view.drawerContainerView();
        QVERIFY(drawer.isHidden());
        player.view.lcd().infoButton().click();
        QVERIFY(!drawer.isHidden());
        QVERIFY(player.drawerHost.isExpanded());
        QTRY_VERIFY(player.music.backgroundReads().contains(QStringLiteral("playlistIds")));
        player.drawerHost.finishResize();
        QVERIFY(!drawer.isHidden());

        player.controller->toggleDrawer();
        QVERIFY(!player.drawerHost.isExpanded());
        QVERIFY(!drawer.isHidden());
        player.drawerHost.finishResize();
        QVERIFY(drawer.isHidden());
    }

    void theKeyboardLeavesTheDrawerForTheButtonThatOpensIt()
    {
        Player player;
        QWidget control(&player.view.drawerContainerView());
        control.setFocusPolicy(Qt::TabFocus);
        player.view.show();
        QVERIFY(QTest::qWaitForWindowActive(&player.view));
        player.controller->toggleDrawer();
        player.drawerHost.finishResize();
        control.setFocus(Qt::TabFocusReason);
        QVERIFY(control.hasFocus());
        player.controller->toggleDrawer();
        player.drawerHost.finishResize();
        QVERIFY(player.view.lcd().infoButton().hasFocus());
    }

    void aDrawerThatClosesLeavesTheKeyboardWhereItIs()
    {
        Player player;
        player.view.show();
        QVERIFY(QTest::qWaitForWindowActive(&player.view));
        player.controller->toggleDrawer();
        player.drawerHost.finishResize();
        player.view.playPauseButton().setFocus(Qt::TabFocusReason);
        player.controller->toggleDrawer();
        player.drawerHost.finishResize();
        QVERIFY(player.view.playPauseButton().hasFocus());
    }

    void theCloseButtonClosesTheWindow()
    {
        Player player;
        player.view.show();
        player.view.closeButton().click();
        QVERIFY(!player.view.isVisible());
    }

    void aWindowThatBecomesMainRefreshesTheDisplay()
    {
        Player player;
        player.view.lcd().trackInfoLabel().setDisplayStrings({QStringLiteral("stale")});
        Q_EMIT player.windowActivation.windowDidBecomeMain(nullptr);
        QCOMPARE(player.displayed(), {QStringLiteral("No Song")});
    }

    void thePointerOverTheWindowsButtonsShowsTheirSymbols()
    {
        Player player;
        const QList<WindowControlButton *> buttons{
            &player.view.closeButton(), &player.view.minimizeButton(), &player.view.maximizeButton()};
        QEnterEvent enter({1, 1}, {1, 1}, {1, 1});
        QCoreApplication::sendEvent(&player.view.windowButtonsView(), &enter);
        for (const WindowControlButton *button : buttons) {
            QVERIFY(button->mouseHovering());
        }
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&player.view.windowButtonsView(), &leave);
        for (const WindowControlButton *button : buttons) {
            QVERIFY(!button->mouseHovering());
        }
        QCOMPARE(buttons[0]->controlStyle(), WindowControlButtonStyle::close);
        QCOMPARE(buttons[1]->controlStyle(), WindowControlButtonStyle::minimize);
        QCOMPARE(buttons[2]->controlStyle(), WindowControlButtonStyle::maximize);
    }

    void thePointerOverAnotherControlShowsNoSymbols()
    {
        Player player;
        player.play(localTrackInfo());
        player.view.resize(450, 64);
        player.view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&player.view));
        const auto pointAt = [&player](const QWidget &control, QPoint position) {
            QTest::mouseMove(player.view.windowHandle(), control.mapTo(&player.view, position));
        };
        const WindowControlButton &close = player.view.closeButton();
        for (const QWidget *control : std::initializer_list<const QWidget *>{&player.view.backwardButton(),
                 &player.view.playPauseButton(), &player.view.volumeMinButton(), &player.view.volumeSlider()}) {
            pointAt(close, close.rect().center());
            QVERIFY(close.mouseHovering());
            pointAt(*control, {1, control->height() / 2});
            QVERIFY(!close.mouseHovering());
        }
    }

    void theControlsHaveRolesAndValues()
    {
        Player player;
        player.play(localTrackInfo());
        for (QAbstractButton *button : std::initializer_list<QAbstractButton *>{&player.view.backwardButton(),
                 &player.view.playPauseButton(), &player.view.forwardButton(), &player.view.volumeMinButton(),
                 &player.view.volumeMaxButton(), &player.view.lcd().infoButton(), &player.view.closeButton(),
                 &player.view.minimizeButton(), &player.view.maximizeButton()}) {
            QCOMPARE(accessible(*button).role(), QAccessible::Button);
        }
        QAccessibleInterface &progress = accessible(player.view.lcd().trackProgressSlider());
        QCOMPARE(progress.role(), QAccessible::Slider);
        QCOMPARE(progress.valueInterface()->currentValue().toDouble(), 5.0);
        QCOMPARE(progress.valueInterface()->maximumValue().toDouble(), 100.0);
        player.music.clearRecords();
        progress.valueInterface()->setCurrentValue(50);
        QCOMPARE(player.music.commands(), {QStringLiteral("setPlayerPosition 100")});
        QAccessibleInterface &volume = accessible(player.view.volumeSlider());
        QCOMPARE(volume.role(), QAccessible::Slider);
        QCOMPARE(volume.text(QAccessible::Name), QStringLiteral("Volume"));
        QCOMPARE(volume.valueInterface()->minimumStepSize().toDouble(), 4.0);
    }

    void tabGoesThroughTheControlsAsTheyStand()
    {
        Player player;
        player.play(localTrackInfo());
        player.view.resize(450, 128);
        player.view.show();
        player.view.backwardButton().setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&player.view));
        LcdView &lcd = player.view.lcd();
        const QList<QWidget *> order{&player.view.playPauseButton(), &player.view.forwardButton(),
            &player.view.volumeMinButton(), &player.view.volumeSlider(), &player.view.volumeMaxButton(),
            &lcd.trackProgressSlider(), &lcd.infoButton(), &player.view.closeButton(), &player.view.minimizeButton(),
            &player.view.maximizeButton(), &player.view.backwardButton()};
        for (QWidget *next : order) {
            QTest::keyClick(player.view.windowHandle(), Qt::Key_Tab);
            QCOMPARE(QApplication::focusWidget(), next);
        }
    }

    void theKeyboardNeverLandsOnAControlThatDoesHarm()
    {
        Player player;
        player.play(localTrackInfo());
        player.view.resize(450, 64);
        player.view.show();
        QVERIFY(QTest::qWaitForWindowActive(&player.view));
        const QList<QWidget *> disabledByALiveStream{
            &player.view.backwardButton(), &player.view.forwardButton(), &player.view.lcd().trackProgressSlider()};
        for (QWidget *control : disabledByALiveStream) {
            player.play(localTrackInfo());
            control->setFocus();
            QVERIFY(control->hasFocus());
            player.play(liveStreamInfo());
            QVERIFY(player.view.playPauseButton().hasFocus());
        }
        player.play(localTrackInfo());
        player.view.lcd().trackProgressSlider().setFocus();
        player.stop();
        QVERIFY(player.view.playPauseButton().hasFocus());
    }

    void everyControlHasAName()
    {
        Player player;
        const auto controls = player.view.findChildren<QWidget *>();
        for (const QWidget *control : controls) {
            if (control->focusPolicy() != Qt::NoFocus) {
                QVERIFY(!control->accessibleName().isEmpty());
            }
        }
    }
};

TUNEDECK_TEST(ViewControllerTest, QApplication)
#include "ViewControllerTest.moc"
