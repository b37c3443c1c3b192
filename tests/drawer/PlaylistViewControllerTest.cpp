// SPDX-License-Identifier: MIT
#include "drawer/PlaylistViewController.h"

#include "drawer/PlaylistView.h"
#include "music/MenuItemIdentifier.h"
#include "music/MusicConnector.h"
#include "platform/WindowActivation.h"
#include "skin/views/MetalButton.h"
#include "skin/views/MetalPopupButton.h"
#include "support/ScriptedMusicApplication.h"
#include "support/SkinDesk.h"
#include "support/registerTest.h"

#include <QAction>
#include <QApplication>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;

namespace {
/// A drawer and everything that it needs.
struct Drawer {
    explicit Drawer(bool isMusicRunning = true)
    {
        music.setRunning(isMusicRunning);
        connector.emplace(music, desk.windowActivation);
        controller.emplace(*connector, view);
    }

    /// False if they do not come.
    bool load(const QStringList &names, std::optional<qint64> current = {},
        PlaylistSource source = PlaylistSource::music, bool hasMore = false)
    {
        ScriptedMusicApplication::BackgroundAnswers answers;
        QVariantList ids;
        QVariantList columns;
        for (qsizetype index = 0; index < names.size(); ++index) {
            ids.append(static_cast<qint64>(index + 1));
            columns.append(names.at(index));
        }
        answers.playlistIds = ids;
        answers.playlistNames = columns;
        answers.playlistSource = source;
        answers.hasMorePlaylists = hasMore;
        if (current) {
            answers.currentPlaylist = MusicPlaylist{.id = *current};
        }
        music.answerInBackground(answers);
        return QTest::qWaitFor([&] {
            // This does nothing while the first load runs.
            connector->loadPlaylists();
            return connector->playlistOptions().size() == names.size() && connector->hasMorePlaylists() == hasMore;
        });
    }

    void say(bool isShuffled, FourCharCode repeat)
    {
        music.answers.shuffleEnabled = isShuffled;
        music.answers.songRepeat = repeat;
        connector->refreshPlaybackSettings();
    }

    [[nodiscard]] QList<QWidget *> controls()
    {
        return {&view.playlistPicker(), &view.doneButton(), &view.shuffleButton(), &view.repeatButton()};
    }

    [[nodiscard]] bool isItemEnabled(const QString &identifier) const
    {
        QAction item;
        item.setObjectName(identifier);
        return controller->validateMenuItem(item);
    }

    SkinDesk desk;
    ScriptedMusicApplication music;
    std::optional<MusicConnector> connector;
    PlaylistView view{desk.environment};
    std::optional<PlaylistViewController> controller;
};
} // namespace

class PlaylistViewControllerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void musicThatSwitchesShuffleOnByItselfIsShown()
    {
        Drawer drawer;
        QCOMPARE(drawer.view.shuffleButton().image(), QStringLiteral("shuffle_off"));
        drawer.say(true, SongRepeat::off);
        QCOMPARE(drawer.view.shuffleButton().image(), QStringLiteral("shuffle_on"));
        QCOMPARE(drawer.view.shuffleButton().accessibleName(), QStringLiteral("Shuffle: on"));
        drawer.say(false, SongRepeat::off);
        QCOMPARE(drawer.view.shuffleButton().image(), QStringLiteral("shuffle_off"));
    }

    void whereThereAreMorePlaylistsTheListAndThePickerSaySo()
    {
        Drawer drawer;
        const QStringList names{QStringLiteral("Blues"), QStringLiteral("Jazz")};
        const QString more = QStringLiteral("There are more playlists than these");
        MetalPopupButton &picker = drawer.view.playlistPicker();
        QVERIFY(drawer.load(names, 2));
        QCOMPARE(picker.count(), 2);
        QCOMPARE(picker.accessibleDescription(), QString());
        QVERIFY(drawer.load(names, 2, PlaylistSource::files, true));
        QCOMPARE(picker.count(), 3);
        QCOMPARE(picker.itemText(2), more);
        QCOMPARE(picker.toolTip(), more);
        QCOMPARE(picker.accessibleDescription(), more);
        QVERIFY(picker.isEnabled());
        QCOMPARE(picker.currentText(), QStringLiteral("Jazz"));
        QTest::keyClick(&picker, Qt::Key_End);
        QCOMPARE(picker.currentText(), QStringLiteral("Jazz"));
        QVERIFY(drawer.load(names, 2));
        QCOMPARE(picker.count(), 2);
        QCOMPARE(picker.toolTip(), QStringLiteral("Choose a playlist"));
    }

    void aSilentMusicDisablesTheDrawersControlsAndEachSaysWhy()
    {
        Drawer drawer;
        QVERIFY(drawer.load({QStringLiteral("Blues"), QStringLiteral("Jazz")}, 2));
        const QList<QWidget *> controls = drawer.controls();
        drawer.music.setPlayer(QStringLiteral("Strawberry"), false);
        drawer.music.setResponding(false);
        for (const QWidget *control : controls) {
            QVERIFY(!control->isEnabled());
            QCOMPARE(control->toolTip(), QStringLiteral("Strawberry is not responding"));
            QCOMPARE(control->accessibleDescription(), QStringLiteral("Strawberry is not responding"));
        }
        drawer.say(true, SongRepeat::one);
        drawer.connector->setSelectedPlaylist(drawer.connector->playlistOptions().first());
        for (const QWidget *control : controls) {
            QVERIFY(!control->isEnabled());
        }
        drawer.music.setResponding(true);
        const QStringList toolTips{QStringLiteral("Choose a playlist"), QStringLiteral("Play the chosen playlist"),
            QStringLiteral("Shuffle: on"), QStringLiteral("Repeat: one")};
        for (qsizetype index = 0; index < controls.size(); ++index) {
            QVERIFY(controls.at(index)->isEnabled());
            QCOMPARE(controls.at(index)->toolTip(), toolTips.at(index));
            QVERIFY(controls.at(index)->accessibleDescription().isEmpty());
        }
    }

    void aSilenceEndsWithoutAPlaylistToPlay()
    {
        Drawer drawer;
        drawer.music.setResponding(false);
        drawer.music.setResponding(true);
        QVERIFY(!drawer.view.playlistPicker().isEnabled());
        QVERIFY(!drawer.view.doneButton().isEnabled());
        QVERIFY(drawer.view.shuffleButton().isEnabled());
    }

    void aModeThatMusicDoesNotTakeIsDisabledAndSaysWhy_data()
    {
        QTest::addColumn<MusicControl>("control");
        QTest::addColumn<ControlAnswer>("answer");
        QTest::addColumn<QString>("reason");
        QTest::newRow("no shuffle") << MusicControl::shuffle << ControlAnswer::missing
                                    << QStringLiteral("Dragon has no shuffle mode");
        QTest::newRow("shuffle ignored") << MusicControl::shuffle << ControlAnswer::ignored
                                         << QStringLiteral("Dragon keeps its own shuffle mode");
        QTest::newRow("no repeat") << MusicControl::repeat << ControlAnswer::missing
                                   << QStringLiteral("Dragon has no repeat mode");
        QTest::newRow("repeat ignored") << MusicControl::repeat << ControlAnswer::ignored
                                        << QStringLiteral("Dragon keeps its own repeat mode");
    }

    void aModeThatMusicDoesNotTakeIsDisabledAndSaysWhy()
    {
        QFETCH(const MusicControl, control);
        QFETCH(const ControlAnswer, answer);
        Drawer drawer;
        drawer.music.setPlayer(QStringLiteral("Dragon"), false);
        const bool isShuffle = control == MusicControl::shuffle;
        MetalButton &button = isShuffle ? drawer.view.shuffleButton() : drawer.view.repeatButton();
        const MetalButton &other = isShuffle ? drawer.view.repeatButton() : drawer.view.shuffleButton();
        drawer.music.answerControl(control, answer);
        drawer.say(false, SongRepeat::off);
        QVERIFY(!button.isEnabled());
        QTEST(button.toolTip(), "reason");
        QTEST(button.accessibleDescription(), "reason");
        QVERIFY(other.isEnabled());
        drawer.music.answerControl(control, ControlAnswer::taken);
        QVERIFY(button.isEnabled());
        QVERIFY(button.accessibleDescription().isEmpty());
    }

    void theKeyboardComesBackToTheDrawerAfterASilence()
    {
        Drawer drawer;
        QVERIFY(drawer.load({QStringLiteral("Blues"), QStringLiteral("Jazz")}, 2));
        drawer.view.resize(450, 64);
        drawer.view.show();
        QVERIFY(QTest::qWaitForWindowActive(&drawer.view));
        for (QWidget *control : drawer.controls()) {
            control->setFocus();
            drawer.music.setResponding(false);
            QVERIFY(!drawer.view.focusWidget());
            drawer.music.setResponding(true);
            QVERIFY(control->hasFocus());
        }
    }

    void eachRepeatModeHasItsImage()
    {
        Drawer drawer;
        drawer.say(false, SongRepeat::one);
        QCOMPARE(drawer.view.repeatButton().image(), QStringLiteral("repeat_one"));
        drawer.say(false, SongRepeat::all);
        QCOMPARE(drawer.view.repeatButton().image(), QStringLiteral("repeat_all"));
        drawer.say(false, SongRepeat::off);
        QCOMPARE(drawer.view.repeatButton().image(), QStringLiteral("repeat_off"));
    }

    void shuffleAsksForTheOpposite()
    {
        Drawer drawer;
        drawer.say(true, SongRepeat::off);
        drawer.music.clearRecords();
        drawer.view.shuffleButton().click();
        QCOMPARE(drawer.music.commands(), {QStringLiteral("setShuffleEnabled false")});
        drawer.say(false, SongRepeat::off);
        drawer.music.clearRecords();
        drawer.view.shuffleButton().click();
        QCOMPARE(drawer.music.commands(), {QStringLiteral("setShuffleEnabled true")});
    }

    void aPlayerThatDoesNotSayWhetherItShufflesIsAskedTo()
    {
        Drawer drawer;
        drawer.music.clearRecords();
        drawer.view.shuffleButton().click();
        QCOMPARE(drawer.music.commands(), {QStringLiteral("setShuffleEnabled true")});
    }

    void threeClicksOnRepeatAskForAllOneAndOff()
    {
        Drawer drawer;
        drawer.say(false, SongRepeat::off);
        const QList<std::pair<FourCharCode, QString>> asked{{SongRepeat::all, QStringLiteral("repeat_all")},
            {SongRepeat::one, QStringLiteral("repeat_one")}, {SongRepeat::off, QStringLiteral("repeat_off")}};
        for (const auto &[mode, image] : asked) {
            drawer.music.answers.songRepeat = mode;
            drawer.view.repeatButton().click();
            drawer.connector->refreshPlaybackSettings();
            QCOMPARE(drawer.view.repeatButton().image(), image);
        }
        QCOMPARE(drawer.music.commands().filter(QStringLiteral("setSongRepeat")),
            (QStringList{QStringLiteral("setSongRepeat kAll"), QStringLiteral("setSongRepeat kRp1"),
                QStringLiteral("setSongRepeat kRpO")}));
    }

    void thePickerShowsThePlaylistsAndTheOneThatPlays()
    {
        Drawer drawer;
        QVERIFY(!drawer.view.playlistPicker().isEnabled());
        QVERIFY(!drawer.view.playlistPicker().toolTip().isEmpty());
        QVERIFY(drawer.load({QStringLiteral("Blues"), QStringLiteral("Jazz"), QStringLiteral("Jazz")}, 2));
        MetalPopupButton &picker = drawer.view.playlistPicker();
        QCOMPARE(picker.count(), 3);
        QCOMPARE(picker.itemText(0), QStringLiteral("Blues"));
        QTRY_COMPARE(picker.currentIndex(), 1);
        QVERIFY(picker.isEnabled());
    }

    void anEmptyPickerSaysWhy_data()
    {
        QTest::addColumn<PlaylistSource>("source");
        QTest::addColumn<QString>("why");
        QTest::newRow("the player has none") << PlaylistSource::music << QStringLiteral("The player has no playlists");
        QTest::newRow("the folder has none")
            << PlaylistSource::files
            << QStringLiteral("There are no playlist files (.m3u, .m3u8, .pls, .xspf) in your music folder");
        QTest::newRow("the player can do neither")
            << PlaylistSource::none << QStringLiteral("This player neither offers playlists nor opens playlist files");
    }

    void anEmptyPickerSaysWhy()
    {
        QFETCH(const PlaylistSource, source);
        Drawer drawer;
        QVERIFY(drawer.load({QStringLiteral("Blues")}));
        QVERIFY(drawer.load({}, {}, source));
        QVERIFY(!drawer.view.playlistPicker().isEnabled());
        QTEST(drawer.view.playlistPicker().toolTip(), "why");
    }

    void anEmptyPickerSaysThatMusicIsNotOpenOrSilent()
    {
        Drawer closed(false);
        QCOMPARE(closed.view.playlistPicker().toolTip(), QStringLiteral("Music is not open"));
        closed.music.launch();
        QCOMPARE(closed.view.playlistPicker().toolTip(), QStringLiteral("Waiting for the player's playlists"));
    }

    void withoutACurrentOneNothingIsChosen()
    {
        Drawer drawer;
        QVERIFY(drawer.load({QStringLiteral("Blues"), QStringLiteral("Jazz")}));
        QCOMPARE(drawer.view.playlistPicker().currentIndex(), -1);
        QVERIFY(!drawer.view.doneButton().isEnabled());
    }

    void whatIsChosenIsPlayedByDone()
    {
        Drawer drawer;
        QVERIFY(drawer.load({QStringLiteral("Blues"), QStringLiteral("Jazz")}));
        Q_EMIT drawer.view.playlistPicker().activated(1);
        QCOMPARE(drawer.connector->selectedPlaylist()->name, QStringLiteral("Jazz"));
        QCOMPARE(drawer.view.playlistPicker().currentIndex(), 1);
        drawer.view.doneButton().click();
        QTRY_VERIFY(drawer.music.backgroundReads().contains(QStringLiteral("playPlaylist 2")));
    }

    void thousandsOfPlaylistsAreShown()
    {
        Drawer drawer;
        QStringList names;
        for (int index = 0; index < 10'000; ++index) {
            names.append(QStringLiteral("Playlist %1").arg(index));
        }
        QVERIFY(drawer.load(names, 9'000));
        QTRY_COMPARE(drawer.view.playlistPicker().currentIndex(), 8'999);
    }

    void musicThatQuitsEmptiesThePicker()
    {
        Drawer drawer;
        QVERIFY(drawer.load({QStringLiteral("Blues")}, 1));
        drawer.say(true, SongRepeat::all);
        drawer.music.quit();
        QCOMPARE(drawer.view.playlistPicker().count(), 0);
        QVERIFY(!drawer.view.playlistPicker().isEnabled());
        QVERIFY(!drawer.view.doneButton().isEnabled());
        QCOMPARE(drawer.view.shuffleButton().image(), QStringLiteral("shuffle_off"));
        QCOMPARE(drawer.view.repeatButton().image(), QStringLiteral("repeat_off"));
    }

    void menuItemsFollowMusic()
    {
        using namespace MenuItemIdentifier;
        Drawer drawer;
        for (const QString &item : {playPause, next, previous, volumeUp, volumeDown, openMusicApp, closeWindow}) {
            QVERIFY(drawer.isItemEnabled(item));
        }
        drawer.connector->setFeedType(FeedType::liveStream);
        QVERIFY(!drawer.isItemEnabled(next));
        QVERIFY(!drawer.isItemEnabled(previous));
        QVERIFY(drawer.isItemEnabled(playPause));
        QVERIFY(!drawer.isItemEnabled(keepAboveAllWindows));
        QVERIFY(!drawer.isItemEnabled(QString()));
        const Drawer closed(false);
        QVERIFY(!closed.isItemEnabled(playPause));
        QVERIFY(!closed.isItemEnabled(next));
        QVERIFY(closed.isItemEnabled(openMusicApp));
    }

    void theVolumesItemsAreDisabledWhileMusicDoesNotRun()
    {
        using namespace MenuItemIdentifier;
        Drawer drawer(false);
        QVERIFY(!drawer.isItemEnabled(volumeUp));
        QVERIFY(!drawer.isItemEnabled(volumeDown));
        drawer.music.launch();
        QVERIFY(drawer.isItemEnabled(volumeUp));
        QVERIFY(drawer.isItemEnabled(volumeDown));
        drawer.music.quit();
        QVERIFY(!drawer.isItemEnabled(volumeUp));
        QVERIFY(!drawer.isItemEnabled(volumeDown));
    }
};

TUNEDECK_TEST(PlaylistViewControllerTest, QApplication)
#include "PlaylistViewControllerTest.moc"
