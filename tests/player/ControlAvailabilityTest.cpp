// SPDX-License-Identifier: MIT
#include "player/ControlAvailability.h"

#include "music/MenuItemIdentifier.h"
#include "player/Player.h"
#include "player/SpeakerButton.h"
#include "skin/views/ClassicAudioProgressSlider.h"
#include "skin/views/PlainButton.h"
#include "skin/views/PlayerButton.h"
#include "skin/views/TunedeckPlayerButton.h"
#include "skin/views/WindowControlButton.h"
#include "support/ScriptedPlayerSound.h"
#include "support/elapse.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QImage>
#include <QTest>

using namespace tunedeck;

namespace {
/// The player's controls by the state of Music that they set; the buttons of the transport first.
QList<QWidget *> transportButtons(PlayerView &view)
{
    return {&view.backwardButton(), &view.playPauseButton(), &view.forwardButton()};
}

QList<QWidget *> volumeControls(PlayerView &view)
{
    return {&view.volumeMinButton(), &view.volumeSlider(), &view.volumeMaxButton()};
}

QList<QWidget *> allControls(PlayerView &view)
{
    return transportButtons(view) + volumeControls(view) + QList<QWidget *>{&view.lcd().trackProgressSlider()};
}

QString descriptionOf(QWidget &control)
{
    return accessible(control).text(QAccessible::Description);
}
} // namespace

class ControlAvailabilityTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void aSilentMusicDisablesEveryControlAndEachSaysWhy()
    {
        Player player;
        player.play(localTrackInfo());
        const QList<QWidget *> controls = allControls(player.view);
        QStringList toolTips;
        for (const QWidget *control : controls) {
            QVERIFY(control->isEnabled());
            toolTips.append(control->toolTip());
        }
        player.music.setResponding(false);
        for (QWidget *control : controls) {
            QVERIFY(!control->isEnabled());
            QCOMPARE(control->toolTip(), QStringLiteral("Music is not responding"));
            QCOMPARE(descriptionOf(*control), QStringLiteral("Music is not responding"));
        }
        QVERIFY(player.view.lcd().infoButton().isEnabled());
        player.music.setResponding(true);
        for (qsizetype index = 0; index < controls.size(); ++index) {
            QVERIFY(controls.at(index)->isEnabled());
            QCOMPARE(controls.at(index)->toolTip(), toolTips.at(index));
            QVERIFY(controls.at(index)->accessibleDescription().isEmpty());
        }
    }

    void aSilentMusicDisablesTheMenuItemsOfItsCommands()
    {
        using namespace MenuItemIdentifier;
        Player player;
        player.play(localTrackInfo());
        player.music.setResponding(false);
        for (const QString &identifier : {playPause, next, previous, volumeUp, volumeDown}) {
            QVERIFY(!player.isItemEnabled(identifier));
        }
        QVERIFY(player.isItemEnabled(openMusicApp));
        QVERIFY(player.isItemEnabled(closeWindow));
        player.music.setResponding(true);
        for (const QString &identifier : {playPause, next, previous, volumeUp, volumeDown}) {
            QVERIFY(player.isItemEnabled(identifier));
        }
    }

    void aSilenceEndsWithTheControlsThatTheFeedHas()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.setResponding(false);
        player.play(liveStreamInfo());
        for (const QWidget *control : allControls(player.view)) {
            QVERIFY(!control->isEnabled());
        }
        player.music.setResponding(true);
        QVERIFY(player.view.playPauseButton().isEnabled());
        QVERIFY(!player.view.backwardButton().isEnabled());
        QVERIFY(!player.view.forwardButton().isEnabled());
        player.music.setResponding(false);
        player.stop();
        player.music.setResponding(true);
        QVERIFY(player.view.backwardButton().isEnabled());
        QVERIFY(!player.view.lcd().trackProgressSlider().isEnabled());
    }

    void musicThatQuitsInASilenceLeavesNothingDisabledByIt()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.setResponding(false);
        player.music.quit();
        for (const QWidget *control : transportButtons(player.view) + volumeControls(player.view)) {
            QVERIFY(control->isEnabled());
        }
        QVERIFY(!player.view.lcd().trackProgressSlider().isEnabled());
    }

    void theButtonsThatALiveStreamDisablesSayWhy()
    {
        Player player;
        player.play(liveStreamInfo());
        for (QWidget *button : {&player.view.backwardButton(), &player.view.forwardButton()}) {
            QVERIFY(!button->isEnabled());
            QCOMPARE(button->toolTip(), QStringLiteral("Live audio has no other tracks"));
            QCOMPARE(descriptionOf(*button), QStringLiteral("Live audio has no other tracks"));
        }
        player.play(localTrackInfo());
        QCOMPARE(player.view.backwardButton().toolTip(), QStringLiteral("Previous"));
        QCOMPARE(player.view.forwardButton().toolTip(), QStringLiteral("Next"));
    }

    void theProgressIsDisabledWhereMusicDoesNotSeek_data()
    {
        QTest::addColumn<ControlAnswer>("answer");
        QTest::addColumn<QString>("reason");
        QTest::newRow("missing") << ControlAnswer::missing << QStringLiteral("Music cannot seek in this track");
        QTest::newRow("ignored") << ControlAnswer::ignored << QStringLiteral("Music cannot seek in this track");
    }

    void theProgressIsDisabledWhereMusicDoesNotSeek()
    {
        QFETCH(const ControlAnswer, answer);
        Player player;
        player.play(localTrackInfo());
        QWidget &progress = player.view.lcd().trackProgressSlider();
        player.music.answerControl(MusicControl::position, answer);
        QVERIFY(!progress.isEnabled());
        QTEST(progress.toolTip(), "reason");
        QTEST(descriptionOf(progress), "reason");
        for (const QWidget *control : transportButtons(player.view) + volumeControls(player.view)) {
            QVERIFY(control->isEnabled());
        }
        player.music.answerControl(MusicControl::position, ControlAnswer::taken);
        QVERIFY(progress.isEnabled());
        QVERIFY(progress.toolTip().isEmpty());
    }

    void theVolumeIsDisabledWhereMusicDoesNotTakeIt_data()
    {
        QTest::addColumn<ControlAnswer>("answer");
        QTest::addColumn<QString>("reason");
        QTest::newRow("missing") << ControlAnswer::missing << QStringLiteral("Music has no volume control");
        QTest::newRow("ignored") << ControlAnswer::ignored << QStringLiteral("Music keeps its own volume");
    }

    void theVolumeIsDisabledWhereMusicDoesNotTakeIt()
    {
        QFETCH(const ControlAnswer, answer);
        Player player;
        player.play(localTrackInfo());
        player.music.answerControl(MusicControl::volume, answer);
        for (QWidget *control : volumeControls(player.view)) {
            QVERIFY(!control->isEnabled());
            QTEST(control->toolTip(), "reason");
            QTEST(descriptionOf(*control), "reason");
        }
        QVERIFY(!player.isItemEnabled(MenuItemIdentifier::volumeUp));
        QVERIFY(!player.isItemEnabled(MenuItemIdentifier::volumeDown));
        QVERIFY(player.isItemEnabled(MenuItemIdentifier::playPause));
        player.music.answerControl(MusicControl::volume, ControlAnswer::taken);
        QCOMPARE(player.view.volumeSlider().toolTip(), QStringLiteral("Volume"));
        QVERIFY(player.isItemEnabled(MenuItemIdentifier::volumeUp));
    }

    void whyAControlIsDisabledNamesThePlayer()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.answerControl(MusicControl::position, ControlAnswer::missing);
        player.music.setPlayer(QStringLiteral("Totem"), false);
        QCOMPARE(player.view.lcd().trackProgressSlider().toolTip(), QStringLiteral("Totem cannot seek in this track"));
    }

    void theTooltipThatComesBackAfterScrollingDoesNotHideWhy()
    {
        Player player;
        player.play(localTrackInfo());
        player.turnWheel(1);
        player.music.answerControl(MusicControl::volume, ControlAnswer::ignored);
        elapse(player.timer(u"tooltipsTimer"));
        QCOMPARE(player.view.volumeSlider().toolTip(), QStringLiteral("Music keeps its own volume"));
        player.music.answerControl(MusicControl::volume, ControlAnswer::taken);
        QCOMPARE(player.view.volumeSlider().toolTip(), QStringLiteral("Volume"));
    }

    void theKeyboardIsNowhereInASilenceAndComesBackAfterIt()
    {
        Player player;
        player.play(localTrackInfo());
        player.view.resize(450, 64);
        player.view.show();
        QVERIFY(QTest::qWaitForWindowActive(&player.view));
        for (QWidget *control : allControls(player.view)) {
            control->setFocus();
            QVERIFY(control->hasFocus());
            player.music.setResponding(false);
            // Qt alone would put it on the button that opens the drawer, and then on the one that closes the window.
            QVERIFY(!player.view.focusWidget());
            player.music.setResponding(true);
            QVERIFY(control->hasFocus());
        }
        player.music.setResponding(false);
        player.view.closeButton().setFocus();
        player.music.setResponding(true);
        QVERIFY(player.view.closeButton().hasFocus());
    }

    void theKeyboardLeavesAVolumeThatMusicDoesNotTake()
    {
        Player player;
        player.play(localTrackInfo());
        player.view.resize(450, 64);
        player.view.show();
        QVERIFY(QTest::qWaitForWindowActive(&player.view));
        for (QWidget *control : volumeControls(player.view)) {
            player.music.answerControl(MusicControl::volume, ControlAnswer::taken);
            control->setFocus();
            player.music.answerControl(MusicControl::volume, ControlAnswer::missing);
            QVERIFY(player.view.playPauseButton().hasFocus());
        }
    }

    void aHoldThatASilenceBeginsInEnds()
    {
        Player player;
        player.play(localTrackInfo());
        QTest::mousePress(&player.view.forwardButton(), Qt::LeftButton);
        player.view.forwardButton().fireTimer();
        player.music.clearRecords();
        player.music.setResponding(false);
        QCOMPARE(player.music.commands(), {QStringLiteral("resume")});
        QVERIFY(!player.view.forwardButton().isDown());
    }

    void theVolumesToolTipSaysWhereItIsSet()
    {
        ScriptedPlayerSound sound;
        Player player;
        player.music.playerSound = &sound;
        player.music.setPlayer(QStringLiteral("Strawberry"), true);
        const QWidget &slider = player.view.volumeSlider();
        QCOMPARE(slider.toolTip(), QStringLiteral("Volume, set in Strawberry"));
        player.music.hasVolumeOfStreams = true;
        Q_EMIT player.music.controlsDidChange();
        QCOMPARE(slider.toolTip(), QStringLiteral("Volume, set on the sound server"));
        player.turnWheel(1);
        QCOMPARE(slider.toolTip(), QString());
        QVERIFY(elapse(player.timer(u"tooltipsTimer")));
        QCOMPARE(slider.toolTip(), QStringLiteral("Volume, set on the sound server"));
        player.music.quit();
        QCOMPARE(slider.toolTip(), QStringLiteral("Volume"));
    }

    void theQuietSpeakerShowsAndSaysThatThePlayerIsMuted()
    {
        ScriptedPlayerSound sound;
        Player player;
        player.music.playerSound = &sound;
        SpeakerButton &quiet = player.view.volumeMinButton();
        const QImage loudEnough = quiet.grab().toImage();
        PlayerSoundState state = soundInKitchen(50);
        state.isMuted = true;
        sound.report(state);
        Q_EMIT player.music.soundDidChange();
        QVERIFY(quiet.isEnabled());
        QVERIFY(quiet.grab().toImage() != loudEnough);
        QCOMPARE(quiet.toolTip(), QStringLiteral("Muted – turn the volume up to hear it"));
        QCOMPARE(descriptionOf(quiet), QStringLiteral("Muted – turn the volume up to hear it"));
        sound.report(soundInKitchen(50));
        Q_EMIT player.music.soundDidChange();
        QCOMPARE(quiet.grab().toImage(), loudEnough);
        QCOMPARE(quiet.toolTip(), QStringLiteral("Silence"));
        QCOMPARE(descriptionOf(quiet), QStringLiteral("Silence"));
    }

    void aViewThatComesInASilenceIsDisabledFromTheStart()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.setResponding(false);
        player.controller.reset();
        PlayerView view(player.skin());
        const ViewController controller(player.environment(), view);
        for (const QWidget *control : allControls(view)) {
            QVERIFY(!control->isEnabled());
        }
        player.music.setResponding(true);
        QCOMPARE(view.volumeSlider().toolTip(), QStringLiteral("Volume"));
    }
};

TUNEDECK_TEST(ControlAvailabilityTest, QApplication)
#include "ControlAvailabilityTest.moc"
