// SPDX-License-Identifier: MIT
#include "player/TrackDisplay.h"

#include "player/Player.h"
#include "skin/views/ClassicAudioProgressSlider.h"
#include "skin/views/PlayerButton.h"
#include "skin/views/TunedeckPlayerButton.h"
#include "support/StartWatch.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QTest>
#include <QTextDocument>

#include <algorithm>
#include <ranges>

using namespace tunedeck;

namespace {
/// Whether the display's text is light. Its lip and its halo are fainter than the text.
bool isTextLight(PlayerView &view)
{
    view.resize(450, 64);
    view.show();
    ScrollingMarqueeView &label = view.lcd().trackInfoLabel();
    label.setDisplayStrings({QString(4, QChar(0x2588))});
    QImage image(label.size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    label.render(&image, {}, {}, {});
    return std::ranges::any_of(std::views::iota(0, image.width() * image.height()), [&image](int index) {
        const QColor color = image.pixelColor(index % image.width(), index / image.width());
        return color.alpha() > 150 && color.lightness() > 200;
    });
}
} // namespace

class TrackDisplayTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        // Not of menus and tooltips, which the offscreen platform neither raises nor gives the keyboard.
        tunedeck::failOnWarning();
    }

    void musicThatDoesNotRunIsNotOpen()
    {
        Player player(false);
        QCOMPARE(player.displayed(), {QStringLiteral("Music is not open")});
        QVERIFY(!player.view.lcd().trackProgressSlider().isEnabled());
    }

    void musicThatPlaysNothingHasNoSong()
    {
        Player player;
        QCOMPARE(player.displayed(), {QStringLiteral("No Song")});
        QVERIFY(!player.view.lcd().trackProgressSlider().isEnabled());
    }

    void aTrackShowsItsFields()
    {
        Player player;
        player.play(localTrackInfo());
        QCOMPARE(player.displayed(),
            (QStringList{QStringLiteral("Blues"), QStringLiteral("Band"), QStringLiteral("Record")}));
        QVERIFY(player.view.lcd().trackProgressSlider().isEnabled());
        QCOMPARE(player.view.lcd().trackProgressSlider().doubleValue(), 5.0);
        QCOMPARE(player.view.lcd().primaryTimeLabel().text(), QStringLiteral("0:10"));
        QCOMPARE(player.view.lcd().secondaryTimeLabel().text(), QStringLiteral("-3:09"));
    }

    void anUntaggedTrackShowsItsTimesAlone()
    {
        Player player;
        player.music.answers.currentTrack = MusicTrack{.duration = 12.0};
        player.music.answers.playerPosition = 5.0;
        player.music.answers.playerState = PlayerState::playing;
        Q_EMIT player.music.playerInfo({{UserInfoKey::playerState, QStringLiteral("Playing")},
            {UserInfoKey::totalTime, 12.0}, {UserInfoKey::location, QString()}});
        QCOMPARE(player.displayed(), QStringList());
        QVERIFY(player.view.lcd().trackProgressSlider().isEnabled());
        QCOMPARE(player.view.lcd().primaryTimeLabel().text(), QStringLiteral("0:05"));
        QCOMPARE(player.view.lcd().secondaryTimeLabel().text(), QStringLiteral("-0:06"));
    }

    void aFileWithoutALengthHasATotalTimeOfZero()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.answers.currentTrack = MusicTrack{.name = QStringLiteral("Endless")};
        player.music.answers.playerPosition = 5.0;
        Q_EMIT player.music.playerInfo({{UserInfoKey::playerState, QStringLiteral("Playing")},
            {UserInfoKey::totalTime, 0.0}, {UserInfoKey::location, QStringLiteral("/music/endless.mp3")}});
        QCOMPARE(player.displayed(), {QStringLiteral("Endless")});
        QVERIFY(player.view.lcd().isLiveLabel().isHidden());
        QVERIFY(player.view.backwardButton().isEnabled());
        QVERIFY(player.view.forwardButton().isEnabled());
        QCOMPARE(player.view.lcd().trackProgressSlider().doubleValue(), 0.0);
        QCOMPARE(player.view.lcd().primaryTimeLabel().text(), QStringLiteral("0:05"));
        QCOMPARE(player.view.lcd().secondaryTimeLabel().text(), QStringLiteral("-0:-5"));
    }

    void aTrackWithoutArtistAndAlbumShowsItsNameOnly()
    {
        Player player;
        player.play(localTrackInfo());
        player.controller->setCurrentTrack(MusicConnectorTrack(QStringLiteral("Alone"), {}, {}, 10.0, {}));
        QCOMPARE(player.displayed(), {QStringLiteral("Alone")});
    }

    void aFieldThatIsPresentButEmptyIsKept()
    {
        Player player;
        player.play(localTrackInfo());
        player.controller->setCurrentTrack(MusicConnectorTrack(QString(), QStringLiteral("Band"), {}, 10.0, {}));
        QCOMPARE(player.displayed(), (QStringList{QString(), QStringLiteral("Band")}));
    }

    void aSilentMusicIsShownInWordsBesideTheTrackUntilItAnswers()
    {
        Player player;
        player.play(localTrackInfo());
        QVERIFY(player.view.lcd().toolTip().isEmpty());
        player.music.setResponding(false);
        QCOMPARE(player.displayed(),
            (QStringList{QStringLiteral("Music is not responding"), QStringLiteral("Blues – Band – Record")}));
        QCOMPARE(player.view.lcd().toolTip(), QStringLiteral("Music is not responding"));
        player.music.setResponding(true);
        QCOMPARE(player.displayed(),
            (QStringList{QStringLiteral("Blues"), QStringLiteral("Band"), QStringLiteral("Record")}));
        QVERIFY(player.view.lcd().toolTip().isEmpty());
    }

    void aSilenceNamesThePlayer()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.setPlayer(QStringLiteral("Salt & Pepper"), false);
        player.music.setResponding(false);
        QCOMPARE(player.displayed().first(), QStringLiteral("Salt & Pepper is not responding"));
        player.music.setPlayer(QStringLiteral("%1 Strawberry"), false);
        QCOMPARE(player.displayed().first(), QStringLiteral("%1 Strawberry is not responding"));
    }

    void theTextOfATrackInASilenceHasOnlyWhatTheTrackHas()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.setResponding(false);
        player.controller->setCurrentTrack(
            MusicConnectorTrack(QStringLiteral("Alone"), {}, QString(), 10.0, QStringLiteral("Jazz")));
        QCOMPARE(player.displayed(), (QStringList{QStringLiteral("Music is not responding"), QStringLiteral("Alone")}));
    }

    void aSilentMusicWithoutATrackShowsItsSilenceAlone()
    {
        Player player;
        player.music.setResponding(false);
        QCOMPARE(player.displayed(), {QStringLiteral("Music is not responding")});
        player.music.quit();
        QCOMPARE(player.displayed(), {QStringLiteral("Music is not open")});
        QVERIFY(player.view.lcd().toolTip().isEmpty());
    }

    void theTooltipNamesTheOutputsAsPlainText()
    {
        Player player;
        ScriptedMusicApplication::BackgroundAnswers outputs;
        outputs.currentAirPlayDevices = {{.kind = AirPlayDeviceKind::other, .name = QStringLiteral("<b>Kitchen</b>")}};
        player.music.answerInBackground(outputs);
        player.play(localTrackInfo());
        LcdView &lcd = player.view.lcd();
        QTRY_COMPARE(lcd.toolTip(), Qt::convertFromPlainText(QStringLiteral("Playing through <b>Kitchen</b>")));
        QCOMPARE(lcd.trackInfoLabel().accessibleDescription(), QStringLiteral("Playing through <b>Kitchen</b>"));
        player.music.quit();
        QVERIFY(lcd.toolTip().isEmpty());
    }

    void theTooltipSaysForWhichPlayerTheProgramWaits()
    {
        Player player(false);
        LcdView &lcd = player.view.lcd();
        player.players.awaited = QStringLiteral("Strawberry");
        Q_EMIT player.players.followablePlayersChanged();
        QCOMPARE(lcd.toolTip(), QStringLiteral("Waiting for Strawberry"));
        QCOMPARE(
            accessible(lcd.trackInfoLabel()).text(QAccessible::Description), QStringLiteral("Waiting for Strawberry"));
        player.players.awaited.clear();
        Q_EMIT player.players.followablePlayersChanged();
        QVERIFY(lcd.toolTip().isEmpty());
        QVERIFY(lcd.trackInfoLabel().accessibleDescription().isEmpty());
    }

    void theScreenReaderHearsOfASilence()
    {
        Player player;
        player.play(localTrackInfo());
        player.music.setResponding(false);
        QTRY_COMPARE(accessible(player.view.lcd().trackInfoLabel()).text(QAccessible::Name),
            QStringLiteral("Music is not responding, Blues – Band – Record"));
    }

    void aStoppedPlayerThatReportsAPositionShowsNone()
    {
        Player player;
        player.play(localTrackInfo());
        player.stop();
        player.music.answers.playerPosition = 100.0;
        QCOMPARE(player.view.lcd().primaryTimeLabel().text(), QStringLiteral("0:00"));
        QVERIFY(!player.view.lcd().trackProgressSlider().isEnabled());
    }

    void aLiveStreamShowsTheMarkerInPlaceOfTheTimes()
    {
        Player player;
        player.play(liveStreamInfo());
        LcdView &lcd = player.view.lcd();
        QVERIFY(!lcd.isLiveLabel().isHidden());
        QVERIFY(lcd.trackProgressSlider().isHidden());
        QVERIFY(lcd.primaryTimeLabel().isHidden());
        QVERIFY(lcd.secondaryTimeLabel().isHidden());
        QVERIFY(!player.view.backwardButton().isEnabled());
        QVERIFY(!player.view.forwardButton().isEnabled());
        QCOMPARE(player.view.playPauseButton().toolTip(), QStringLiteral("Play or stop playing live audio"));
        QCOMPARE(player.displayed().first(), QStringLiteral("Blues"));

        player.play(localTrackInfo());
        QVERIFY(lcd.isLiveLabel().isHidden());
        QVERIFY(!lcd.trackProgressSlider().isHidden());
        QVERIFY(player.view.backwardButton().isEnabled());
        QCOMPARE(player.view.playPauseButton().toolTip(), QStringLiteral("Play or pause the current track"));
    }

    void theTimesComeBackAfterALiveStream()
    {
        Player player;
        LcdView &lcd = player.view.lcd();
        for (const bool remainingTime : {true, false}) {
            player.defaults.setBool(SettingsKey::remainingTimeEnabled, remainingTime);
            player.play(liveStreamInfo());
            QVERIFY(lcd.primaryTimeLabel().isHidden());
            QVERIFY(lcd.secondaryTimeLabel().isHidden());
            player.play(localTrackInfo());
            QVERIFY(!lcd.primaryTimeLabel().isHidden());
            QVERIFY(!lcd.secondaryTimeLabel().isHidden());
        }
    }

    void theTextIsLightInADarkAppearanceFromTheStartAndOnAChange()
    {
        Player player;
        player.appearance.setApplicationAppearance(AppearanceName::DarkAqua);
        QVERIFY(isTextLight(player.view));
        player.appearance.setApplicationAppearance(AppearanceName::Aqua);
        QVERIFY(!isTextLight(player.view));

        player.controller.reset();
        player.appearance.setApplicationAppearance(AppearanceName::DarkAqua);
        PlayerView view(player.skin());
        const ViewController controller(player.environment(), view);
        QVERIFY(isTextLight(view));
    }

    void theTimeLabelsSayWhatTheyShow()
    {
        Player player;
        player.play(localTrackInfo());
        LcdView &lcd = player.view.lcd();
        QCOMPARE(lcd.primaryTimeLabel().toolTip(), QStringLiteral("Elapsed time"));
        QCOMPARE(lcd.secondaryTimeLabel().toolTip(), QStringLiteral("Remaining time"));
        player.defaults.setBool(SettingsKey::remainingTimeEnabled, false);
        QCOMPARE(lcd.secondaryTimeLabel().toolTip(), QStringLiteral("Duration"));
        QCOMPARE(lcd.secondaryTimeLabel().text(), QStringLiteral("3:20"));
    }

    void theTotalTimeStaysWhileTheRemainingTimeRuns()
    {
        Player player;
        player.play(localTrackInfo());
        player.defaults.setBool(SettingsKey::remainingTimeEnabled, false);
        player.music.answers.playerPosition = 60.0;
        player.connector->updatePlayerProgressInfo();
        QCOMPARE(player.view.lcd().secondaryTimeLabel().text(), QStringLiteral("3:20"));
        player.defaults.setBool(SettingsKey::remainingTimeEnabled, true);
        QCOMPARE(player.view.lcd().secondaryTimeLabel().text(), QStringLiteral("-2:19"));
    }

    void theScreenReaderHearsWhatTheDisplayShows()
    {
        Player player;
        player.play(localTrackInfo());
        LcdView &lcd = player.view.lcd();
        QTRY_COMPARE(accessible(lcd.trackInfoLabel()).text(QAccessible::Name), QStringLiteral("Blues, Band, Record"));
        QCOMPARE(accessible(lcd.trackInfoLabel()).role(), QAccessible::Notification);
        QCOMPARE(accessible(lcd.primaryTimeLabel()).text(QAccessible::Name), QStringLiteral("0:10"));
        QCOMPARE(accessible(lcd.primaryTimeLabel()).text(QAccessible::Description), QStringLiteral("Elapsed time"));
        QCOMPARE(accessible(lcd.secondaryTimeLabel()).text(QAccessible::Description), QStringLiteral("Remaining time"));
        QCOMPARE(accessible(lcd.isLiveLabel()).text(QAccessible::Name), QStringLiteral("Live"));
    }

    void aTrackIsNotShownWhileMusicIsNotRunningOrPlaysNothing()
    {
        const MusicConnectorTrack track(QStringLiteral("Late"), {}, {}, 10.0, {});
        Player closed(false);
        closed.controller->setCurrentTrack(track);
        QCOMPARE(closed.displayed(), {QStringLiteral("Music is not open")});
        closed.music.launch();
        QCOMPARE(closed.displayed(), {QStringLiteral("No Song")});
        Player stopped;
        stopped.controller->setCurrentTrack(track);
        QCOMPARE(stopped.displayed(), {QStringLiteral("No Song")});
    }
};

TUNEDECK_TEST(TrackDisplayTest, QApplication)
#include "TrackDisplayTest.moc"
