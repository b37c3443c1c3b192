// SPDX-License-Identifier: MIT
#include "preferences/PreferencesViewController.h"

#include "PreferencesDesk.h"
#include "preferences/FollowedPlayerPicker.h"
#include "preferences/NeverFollowedView.h"
#include "support/registerTest.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>

#include <algorithm>
#include <map>

using namespace tunedeck;

namespace {
const QString followedPlayer = QStringLiteral("FollowedPlayer");
const QString vlc = QStringLiteral("vlc");
const QString mpv = QStringLiteral("org.example.player");

QStringList entries(const QComboBox &picker)
{
    QStringList texts;
    for (int row = 0; row < picker.count(); ++row) {
        texts.append(picker.itemText(row));
    }
    return texts;
}

void choose(QComboBox &picker, const QString &text)
{
    picker.setCurrentText(text);
    Q_EMIT picker.activated(picker.currentIndex());
}

const QLabel *labelWith(const QString &text, const QWidget &pane)
{
    const QList<QLabel *> labels = pane.findChildren<QLabel *>();
    const auto found = std::ranges::find(labels, text, &QLabel::text);
    return found == labels.end() ? nullptr : *found;
}

int middleOn(const QWidget &pane, const QWidget &part)
{
    return part.mapTo(&pane, part.rect().center()).y();
}
} // namespace

class PreferencesViewControllerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void itOpensWithTheTimeThatIsShown_data()
    {
        QTest::addColumn<bool>("remaining");
        QTest::newRow("remaining") << true;
        QTest::newRow("total") << false;
    }

    void itOpensWithTheTimeThatIsShown()
    {
        QFETCH(const bool, remaining);
        PreferencesDesk desk;
        desk.defaults.setBool(SettingsKey::remainingTimeEnabled, remaining);
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        QCOMPARE(controller.radioButtonRemainingTime().isChecked(), remaining);
        QCOMPARE(controller.radioButtonTotalTime().isChecked(), !remaining);
        QCOMPARE(controller.elapsedTimeEnabled(), remaining);
    }

    void choosingATimeWritesTheSetting()
    {
        PreferencesDesk desk;
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        const QSignalSpy writes(&desk.defaults, &UserDefaults::valueChanged);
        controller.radioButtonTotalTime().click();
        QCOMPARE(desk.defaults.boolForKey(SettingsKey::remainingTimeEnabled), false);
        QVERIFY(controller.radioButtonTotalTime().isChecked());
        QVERIFY(!controller.radioButtonRemainingTime().isChecked());
        controller.radioButtonRemainingTime().click();
        QCOMPARE(desk.defaults.boolForKey(SettingsKey::remainingTimeEnabled), true);
        QCOMPARE(writes.count(), 2);
        QCOMPARE(writes.at(0).at(0).toString(), QStringLiteral("RemainingTimeEnabled"));
    }

    void theDesktopsBoxesAreOffUntilTheUserWantsThemAndWriteTheirSettings()
    {
        PreferencesDesk desk;
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        const std::map<QString, QCheckBox *> boxes{
            {QStringLiteral("StartWithSession"), &controller.startWithSessionBox()},
            {QStringLiteral("ShowOnlyWithPlayer"), &controller.showOnlyWithPlayerBox()},
            {QStringLiteral("GlobalShortcuts"), &controller.globalShortcutsBox()}};
        for (const auto &[key, box] : boxes) {
            QVERIFY(!box->isChecked());
            box->click();
            QVERIFY(desk.defaults.boolForKey(key));
            desk.defaults.setBool(key, false);
            QVERIFY(!box->isChecked());
        }
    }

    void whatTheDesktopSaysStandsBelowItsBoxAndIsReadAloud()
    {
        PreferencesDesk desk;
        desk.desktopSettings.say(QStringLiteral("StartWithSession"), QStringLiteral("The desktop refuses."));
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        const QCheckBox &start = controller.startWithSessionBox();
        const QCheckBox &shortcuts = controller.globalShortcutsBox();
        QCOMPARE(start.accessibleDescription(), QStringLiteral("The desktop refuses."));
        QVERIFY(labelWith(QStringLiteral("The desktop refuses."), controller.view()));
        QCOMPARE(shortcuts.accessibleDescription(), QStringLiteral("The desktop lets you choose the keys."));
        desk.desktopSettings.say(QStringLiteral("GlobalShortcuts"), QStringLiteral("Waiting for the desktop…"));
        QCOMPARE(shortcuts.accessibleDescription(), QStringLiteral("Waiting for the desktop…"));
        desk.desktopSettings.say(QStringLiteral("StartWithSession"), QString());
        QCOMPARE(start.accessibleDescription(), QStringLiteral("Tunedeck is there when you log in."));
    }

    /// Screen readers read a new description of the control that has the focus by themselves.
    void whatTheDesktopSaysLaterIsSpokenUnlessTheBoxHasTheFocus()
    {
        PreferencesDesk desk;
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        controller.view().show();
        QVERIFY(QTest::qWaitForWindowActive(&controller.view()));
        controller.globalShortcutsBox().setFocus();
        desk.desktopSettings.say(QStringLiteral("GlobalShortcuts"), QStringLiteral("Waiting for the desktop…"));
        QVERIFY(!controller.view().findChild<QWidget *>(QStringLiteral("notice")));
        controller.startWithSessionBox().setFocus();
        desk.desktopSettings.say(QStringLiteral("GlobalShortcuts"), QStringLiteral("The desktop refuses."));
        const auto *notice = controller.view().findChild<QWidget *>(QStringLiteral("notice"));
        QVERIFY(notice);
        QCOMPARE(notice->accessibleName(), QStringLiteral("The desktop refuses."));
    }

    void onlyWhatIsNewOfTheDesktopIsSpoken()
    {
        PreferencesDesk desk;
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        controller.view().show();
        QVERIFY(QTest::qWaitForWindowActive(&controller.view()));
        controller.startWithSessionBox().setFocus();
        const QString waiting = QStringLiteral("Waiting for the desktop…");
        desk.desktopSettings.say(QStringLiteral("GlobalShortcuts"), waiting);
        auto *notice = controller.view().findChild<QWidget *>(QStringLiteral("notice"));
        QVERIFY(notice);
        QCOMPARE(notice->accessibleName(), waiting);
        notice->setAccessibleName(QString());
        desk.desktopSettings.say(QStringLiteral("GlobalShortcuts"), waiting);
        QCOMPARE(notice->accessibleName(), QString());
        desk.desktopSettings.say(QStringLiteral("GlobalShortcuts"), QString());
        QCOMPARE(notice->accessibleName(), QString());
        desk.desktopSettings.say(QStringLiteral("GlobalShortcuts"), waiting);
        QCOMPARE(notice->accessibleName(), waiting);
    }

    void theArrowKeysChooseATimeToo()
    {
        PreferencesDesk desk;
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        controller.view().show();
        QVERIFY(QTest::qWaitForWindowActive(&controller.view()));
        controller.radioButtonRemainingTime().setFocus();
        QTest::keyClick(&controller.radioButtonRemainingTime(), Qt::Key_Down);
        QVERIFY(controller.radioButtonTotalTime().isChecked());
        QCOMPARE(desk.defaults.boolForKey(SettingsKey::remainingTimeEnabled), false);
    }

    void theTotalTimeWinsWhereBothAreOnAndNothingIsWrittenWhereNoneIs()
    {
        PreferencesDesk desk;
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        for (QRadioButton *button : {&controller.radioButtonRemainingTime(), &controller.radioButtonTotalTime()}) {
            button->setAutoExclusive(false);
            button->setChecked(true);
        }
        controller.timeRadioButtonDidChange();
        QCOMPARE(desk.defaults.boolForKey(SettingsKey::remainingTimeEnabled), false);

        controller.radioButtonRemainingTime().setChecked(false);
        controller.radioButtonTotalTime().setChecked(false);
        const QSignalSpy writes(&desk.defaults, &UserDefaults::valueChanged);
        controller.timeRadioButtonDidChange();
        QCOMPARE(writes.count(), 0);
    }

    void aChangeElsewhereMovesTheSelectionAtOnce()
    {
        PreferencesDesk desk;
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        const QSignalSpy told(&controller, &PreferencesViewController::elapsedTimeEnabledChanged);
        desk.defaults.setBool(SettingsKey::remainingTimeEnabled, false);
        QVERIFY(controller.radioButtonTotalTime().isChecked());
        QCOMPARE(controller.elapsedTimeEnabled(), false);
        desk.defaults.setBool(SettingsKey::remainingTimeEnabled, true);
        QVERIFY(controller.radioButtonRemainingTime().isChecked());
        QCOMPARE(told.count(), 2);
    }

    void aChangeInAnotherProcessMovesTheSelections()
    {
        PreferencesDesk desk;
        desk.players.set({playerNamed(vlc, QStringLiteral("VLC"))});
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        const auto other = desk.otherDefaults();
        other->setBool(SettingsKey::remainingTimeEnabled, false);
        other->setValue(followedPlayer, vlc);
        QTRY_VERIFY(controller.radioButtonTotalTime().isChecked());
        QTRY_COMPARE(controller.followedPlayerPicker().currentText(), QStringLiteral("VLC"));
    }

    void thePropertyIsSetWithoutWritingTheSettingWhichTheButtonsShow()
    {
        PreferencesDesk desk;
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        const QSignalSpy told(&controller, &PreferencesViewController::elapsedTimeEnabledChanged);
        QVERIFY(controller.setProperty("elapsedTimeEnabled", false));
        QVERIFY(controller.setProperty("elapsedTimeEnabled", false));
        QCOMPARE(told.count(), 2);
        QCOMPARE(controller.property("elapsedTimeEnabled"), QVariant(false));
        QCOMPARE(desk.defaults.boolForKey(SettingsKey::remainingTimeEnabled), true);
        QVERIFY(controller.radioButtonRemainingTime().isChecked());
    }

    void itHasNoStoreOfItsOwn()
    {
        PreferencesDesk desk;
        const PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        QVERIFY(!controller.userDefaultsController());
    }

    void itEnablesOnlyTheCloseCommand()
    {
        PreferencesDesk desk;
        const PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        QAction item;
        QVERIFY(!controller.validateMenuItem(item));
        for (const char *other : {"Controls_PlayPause", "File_OpenMusicApp", "File_CloseWindow2"}) {
            item.setObjectName(QLatin1String(other));
            QVERIFY(!controller.validateMenuItem(item));
        }
        item.setObjectName(QStringLiteral("File_CloseWindow"));
        QVERIFY(controller.validateMenuItem(item));
    }

    void theCloseCommandClosesTheWindowThatHoldsThePane()
    {
        PreferencesDesk desk;
        QWidget window;
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        controller.view().setParent(&window);
        window.show();
        controller.closeWindow();
        QVERIFY(!window.isVisible());
    }

    void theWheelsDirectionIsTurnedByABox()
    {
        PreferencesDesk desk;
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        QCheckBox &box = controller.wheelDirectionBox();
        QVERIFY(!box.isChecked());
        box.click();
        QVERIFY(desk.defaults.boolForKey(QStringLiteral("WheelDirectionTurned")));
        box.click();
        QVERIFY(!desk.defaults.boolForKey(QStringLiteral("WheelDirectionTurned")));
        const auto other = desk.otherDefaults();
        other->setBool(SettingsKey::wheelDirectionTurned, true);
        QTRY_VERIFY(box.isChecked());
        QCOMPARE(spokenName(box), QStringLiteral("Turn the wheel's direction"));
        QCOMPARE(QAccessible::queryAccessibleInterface(&box)->text(QAccessible::Description),
            QStringLiteral("If turning it upwards makes the music quieter."));
        QCOMPARE(tabOrder(controller.view()).at(2), &box);
    }

    void theWheelsCaptionIsOnTheLineOfItsBox()
    {
        PreferencesDesk desk;
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        controller.view().show();
        const QCheckBox &box = controller.wheelDirectionBox();
        const QLabel *caption = labelWith(QStringLiteral("Volume:"), controller.view());
        QVERIFY(caption);
        const int below = middleOn(controller.view(), *caption) - middleOn(controller.view(), box);
        QVERIFY2(qAbs(below) <= 1, qPrintable(QStringLiteral("%1 points below the box").arg(below)));
    }

    void theWheelsExplanationIsAsHighAsItsLines()
    {
        PreferencesDesk desk;
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        QWidget &view = controller.view();
        constexpr int wide = 600;
        view.resize(wide, view.heightForWidth(wide));
        view.show();
        const QLabel *explanation = labelWith(QStringLiteral("If turning it upwards makes the music quieter."), view);
        QVERIFY(explanation);
        QCOMPARE(explanation->height(), explanation->heightForWidth(explanation->width()));
    }

    void screenReadersReadTheWheelsCaptionWithItsBox()
    {
        PreferencesDesk desk;
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        const QLabel *caption = labelWith(QStringLiteral("Volume:"), controller.view());
        QVERIFY(caption);
        QCOMPARE(caption->buddy(), &controller.wheelDirectionBox());
    }

    void itOffersAutomaticAndThenThePlayersThatRun()
    {
        PreferencesDesk desk;
        desk.players.set(
            {playerNamed(vlc, QStringLiteral("VLC media player")), playerNamed(mpv, QStringLiteral("mpv"))});
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        QCOMPARE(entries(controller.followedPlayerPicker()),
            QStringList({QStringLiteral("Automatic"), QStringLiteral("VLC media player"), QStringLiteral("mpv")}));
        QCOMPARE(controller.followedPlayerPicker().currentIndex(), 0);
    }

    void itShowsWhatThePlayersPlayAndWhichIsFollowed()
    {
        PreferencesDesk desk;
        desk.players.set({playerNamed(vlc, QStringLiteral("VLC")), playerNamed(mpv, QStringLiteral("mpv"))});
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        FollowablePlayer playing = playerNamed(mpv, QStringLiteral("mpv"));
        playing.title = QStringLiteral("Salt & Pepper");
        playing.isFollowed = true;
        desk.players.set({playerNamed(vlc, QStringLiteral("VLC")), playing});
        QCOMPARE(entries(controller.followedPlayerPicker()),
            QStringList(
                {QStringLiteral("Automatic (mpv)"), QStringLiteral("VLC"), QStringLiteral("mpv: Salt & Pepper")}));
        QCOMPARE(controller.followedPlayerPicker().currentIndex(), 0);
    }

    void playersThatAreNeverFollowedAreListedAndTakenBack()
    {
        PreferencesDesk desk;
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        controller.view().show();
        QVERIFY(!controller.neverFollowed().isVisible());
        const int height = controller.view().sizeHint().height();
        desk.players.neverFollowed = {
            {vlc, QStringLiteral("VLC")}, {mpv, QStringLiteral("mpv")}, {QStringLiteral("third"), QString(80, u'x')}};
        Q_EMIT desk.players.followablePlayersChanged();
        QVERIFY(controller.neverFollowed().isVisible());
        QVERIFY(controller.view().sizeHint().height() > height);
        QListWidget &list = controller.neverFollowed().list();
        QCOMPARE(list.count(), 3);
        QCOMPARE(list.item(0)->text(), QStringLiteral("VLC"));
        QCOMPARE(list.item(2)->text().size(), 60);

        list.setCurrentRow(1);
        QListWidgetItem *const item = list.item(0);
        desk.players.set({playerNamed(vlc, QStringLiteral("VLC"))});
        // Screen readers stay where they are.
        QCOMPARE(list.item(0), item);
        controller.neverFollowed().followAgainButton().click();
        QCOMPARE(desk.players.allowed, {mpv});
        desk.players.neverFollowed.removeAt(1);
        Q_EMIT desk.players.followablePlayersChanged();
        QCOMPARE(list.currentRow(), 1);
        QVERIFY(controller.neverFollowed().followAgainButton().isEnabled());
        desk.players.neverFollowed.clear();
        Q_EMIT desk.players.followablePlayersChanged();
        QVERIFY(!controller.neverFollowed().isVisible());
        QCOMPARE(controller.view().sizeHint().height(), height);
    }

    void theListOfPlayersThatAreNeverFollowedIsAccessible()
    {
        PreferencesDesk desk;
        desk.players.neverFollowed = {{vlc, QStringLiteral("VLC")}};
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        verifyControlsAreAccessible(controller.view());
        NeverFollowedView &view = controller.neverFollowed();
        QCOMPARE(tabOrder(controller.view()).mid(4, 2), QList<QWidget *>({&view.list(), &view.followAgainButton()}));
        QCOMPARE(spokenName(view.list()), QStringLiteral("Players that are never followed"));
    }

    void choosingAPlayerWritesItsIdentifierAndAutomaticNothing()
    {
        PreferencesDesk desk;
        desk.players.set({playerNamed(vlc, QStringLiteral("VLC"))});
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        choose(controller.followedPlayerPicker(), QStringLiteral("VLC"));
        QCOMPARE(desk.defaults.stringForKey(followedPlayer), vlc);
        choose(controller.followedPlayerPicker(), QStringLiteral("Automatic"));
        QCOMPARE(desk.defaults.stringForKey(followedPlayer), QString());
        QCOMPARE(entries(controller.followedPlayerPicker()),
            QStringList({QStringLiteral("Automatic"), QStringLiteral("VLC")}));
    }

    void theListFollowsThePlayersWithoutLosingTheSelection()
    {
        PreferencesDesk desk;
        desk.players.set({playerNamed(vlc, QStringLiteral("VLC")), playerNamed(mpv, QStringLiteral("mpv"))});
        desk.defaults.setValue(followedPlayer, mpv);
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        const QComboBox &picker = controller.followedPlayerPicker();
        QCOMPARE(picker.currentText(), QStringLiteral("mpv"));
        const QSignalSpy writes(&desk.defaults, &UserDefaults::valueChanged);

        const FollowablePlayer strawberry = playerNamed(QStringLiteral("strawberry"), QStringLiteral("Strawberry"));
        desk.players.set(
            {strawberry, playerNamed(mpv, QStringLiteral("mpv")), playerNamed(vlc, QStringLiteral("VLC"))});
        QCOMPARE(entries(picker),
            QStringList({QStringLiteral("Automatic"), QStringLiteral("Strawberry"), QStringLiteral("mpv"),
                QStringLiteral("VLC")}));
        QCOMPARE(picker.currentText(), QStringLiteral("mpv"));

        desk.players.set({playerNamed(mpv, QStringLiteral("mpv Media Player"))});
        QCOMPARE(entries(picker), QStringList({QStringLiteral("Automatic"), QStringLiteral("mpv Media Player")}));
        QCOMPARE(picker.currentText(), QStringLiteral("mpv Media Player"));
        QCOMPARE(writes.count(), 0);
    }

    void aListThatIsOpenStaysOpenAndKeepsWhatIsHighlighted()
    {
        PreferencesDesk desk;
        desk.players.set({playerNamed(vlc, QStringLiteral("VLC")), playerNamed(mpv, QStringLiteral("mpv"))});
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        controller.view().show();
        QComboBox &picker = controller.followedPlayerPicker();
        picker.showPopup();
        picker.view()->setCurrentIndex(picker.model()->index(2, 0));
        desk.players.set({playerNamed(mpv, QStringLiteral("mpv"))});
        QVERIFY(picker.view()->isVisible());
        QCOMPARE(picker.view()->currentIndex().data().toString(), QStringLiteral("mpv"));
        QCOMPARE(desk.defaults.stringForKey(followedPlayer), QString());
        picker.hidePopup();
    }

    void theFollowedPlayerStaysInTheListWhenItQuits()
    {
        PreferencesDesk desk;
        desk.players.set({playerNamed(vlc, QStringLiteral("VLC"))});
        desk.defaults.setValue(followedPlayer, vlc);
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        desk.players.awaited = QStringLiteral("VLC");
        desk.players.set({});
        QCOMPARE(entries(controller.followedPlayerPicker()),
            QStringList({QStringLiteral("Automatic"), QStringLiteral("VLC (not open)")}));
        QCOMPARE(controller.followedPlayerPicker().currentText(), QStringLiteral("VLC (not open)"));
    }

    void aFollowedPlayerThatWasNeverSeenIsCalledByItsIdentifier_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("name");
        QTest::newRow("player") << vlc << QStringLiteral("vlc (not open)");
        QTest::newRow("with points in it") << mpv << QStringLiteral("org.example.player (not open)");
        QTest::newRow("longest") << QString(1000, u'x') << QString(59, u'x') + u'…';
    }

    void aFollowedPlayerThatWasNeverSeenIsCalledByItsIdentifier()
    {
        QFETCH(const QString, id);
        PreferencesDesk desk;
        desk.defaults.setValue(followedPlayer, id);
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        QTEST(controller.followedPlayerPicker().currentText(), "name");
        QCOMPARE(controller.followedPlayerPicker().currentData().toString(), id);
    }

    void namesOfPlayersArePlainAndBounded_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("shown");
        QTest::newRow("ampersand") << QStringLiteral("Salt & Pepper") << QStringLiteral("Salt & Pepper");
        QTest::newRow("markup") << QStringLiteral("<b>VLC</b>") << QStringLiteral("<b>VLC</b>");
        QTest::newRow("lines") << QStringLiteral(" VLC\n\tmedia player\n") << QStringLiteral("VLC media player");
        QTest::newRow("long") << QString(100'000, u'x') << QString(59, u'x') + u'…';
        QTest::newRow("none") << QString() << QStringLiteral("vlc");
        QTest::newRow("empty line") << QStringLiteral(" \n ") << QStringLiteral("vlc");
    }

    void namesOfPlayersArePlainAndBounded()
    {
        QFETCH(const QString, name);
        PreferencesDesk desk;
        desk.players.set({playerNamed(vlc, name)});
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        QTEST(controller.followedPlayerPicker().itemText(1), "shown");
    }

    void thousandsOfPlayersDoNotFillTheList()
    {
        PreferencesDesk desk;
        QList<FollowablePlayer> crowd;
        for (int i = 0; i < 5000; ++i) {
            crowd.append(playerNamed(QStringLiteral("p%1").arg(i), QString()));
        }
        desk.defaults.setValue(followedPlayer, QStringLiteral("p4999"));
        desk.players.set(crowd);
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        QCOMPARE(controller.followedPlayerPicker().count(), 66);
        QCOMPARE(controller.followedPlayerPicker().currentText(), QStringLiteral("p4999 (not open)"));
    }

    void itsControlsAreAccessible()
    {
        PreferencesDesk desk;
        PreferencesViewController controller(desk.defaults, desk.players, desk.desktopSettings);
        verifyControlsAreAccessible(controller.view());
        QCOMPARE(tabOrder(controller.view()),
            QList<QWidget *>({&controller.radioButtonRemainingTime(), &controller.radioButtonTotalTime(),
                &controller.wheelDirectionBox(), &controller.followedPlayerPicker(), &controller.startWithSessionBox(),
                &controller.showOnlyWithPlayerBox(), &controller.globalShortcutsBox()}));
        // The name of a picker is its current entry; its caption is a relation.
        const auto labels =
            QAccessible::queryAccessibleInterface(&controller.followedPlayerPicker())->relations(QAccessible::Label);
        QCOMPARE(labels.size(), 1);
        QCOMPARE(labels.first().first->text(QAccessible::Name), QStringLiteral("Follow player:"));
    }
};

TUNEDECK_TEST(PreferencesViewControllerTest, QApplication)
#include "PreferencesViewControllerTest.moc"
