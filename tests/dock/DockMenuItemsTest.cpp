// SPDX-License-Identifier: MIT
#include "dock/DockMenuItems.h"
#include "music/MenuItemIdentifier.h"
#include "support/registerTest.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QMenu>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {
const MusicConnectorTrack wholeTrack(u"Song"_s, u"Band"_s, u"Record"_s, 60, {});

/// Commands that are recorded.
struct Recorder {
    DockMenuItems::Commands commands()
    {
        const auto recorded = [this](const QString &name) { return [this, name] { names.append(name); }; };
        return {
            .receiver = receiver.get(),
            .openMusicApp = recorded(u"openMusicApp"_s),
            .playPause = recorded(u"playPause"_s),
            .next = recorded(u"next"_s),
            .previous = recorded(u"previous"_s),
            .showPlayer = recorded(u"showPlayer"_s),
            .toggleKeepAbove = recorded(u"toggleKeepAbove"_s),
            .follow = [this](const QString &id) { names.append(u"follow "_s + id); },
            .neverFollow = [this](const QString &id) { names.append(u"neverFollow "_s + id); },
            .playThrough = [this](const QString &id) { names.append(u"playThrough "_s + id); },
            .validate = [this](const QAction &item) { return item.objectName() != disabled; },
        };
    }

    QStringList names;
    QString disabled; ///< the identifier of the item that is not enabled
    std::unique_ptr<QObject> receiver = std::make_unique<QObject>();
};

QStringList titles(const QMenu &menu)
{
    QStringList titles;
    for (const QAction *item : menu.actions()) {
        titles.append(item->isSeparator() ? u"-"_s : item->text());
    }
    return titles;
}

QAction *itemOf(const QMenu &menu, const QString &identifier)
{
    const QList<QAction *> items = menu.actions();
    const auto found =
        std::ranges::find_if(items, [&identifier](const QAction *item) { return item->objectName() == identifier; });
    return found == items.end() ? nullptr : *found;
}
} // namespace

class DockMenuItemsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theDockMenuLeavesOutWhatTheTrackLacks()
    {
        Recorder recorder;
        DockMenuItems items;
        items.track = MusicConnectorTrack(u"Alone"_s, QString(), {}, {}, {});
        QCOMPARE(titles(*items.menu(recorder.commands())).first(4),
            (QStringList{u"Now Playing"_s, u"-"_s, u"    Track: Alone"_s, u"-"_s}));
        for (const std::optional<QString> &name : {std::optional<QString>(), std::optional<QString>(QString())}) {
            items.track = MusicConnectorTrack(name, u"Band"_s, {}, {}, {});
            QCOMPARE(titles(*items.menu(recorder.commands())).first(), u"Open \"Music\""_s);
        }
    }

    void whatIsShownOfTheTrackCannotBeChosen()
    {
        Recorder recorder;
        DockMenuItems items;
        items.track = wholeTrack;
        const auto menu = items.menu(recorder.commands());
        const QList<QAction *> shown = menu->actions().first(6);
        QCOMPARE(shown.at(2)->text(), u"    Track: Song"_s);
        QCOMPARE(shown.at(3)->text(), u"    Artist: Band"_s);
        QCOMPARE(shown.at(4)->text(), u"    Album: Record"_s);
        for (const QAction *item : shown) {
            QVERIFY(item->isSeparator() || !item->isEnabled());
        }
    }

    void eachItemCarriesOutItsOwnCommand()
    {
        Recorder recorder;
        DockMenuItems items;
        items.isMusicAppRunning = true;
        items.playPauseTitle = u"Pause"_s;
        const auto menu = items.menu(recorder.commands());
        QCOMPARE(itemOf(*menu, MenuItemIdentifier::playPause)->text(), u"Pause"_s);
        for (const QString &identifier :
            {MenuItemIdentifier::playPause, MenuItemIdentifier::next, MenuItemIdentifier::previous,
                MenuItemIdentifier::showPlayer, MenuItemIdentifier::keepAboveAllWindows}) {
            itemOf(*menu, identifier)->trigger();
        }
        items.isMusicAppRunning = false;
        itemOf(*items.menu(recorder.commands()), MenuItemIdentifier::openMusicApp)->trigger();
        QCOMPARE(recorder.names,
            (QStringList{
                u"playPause"_s, u"next"_s, u"previous"_s, u"showPlayer"_s, u"toggleKeepAbove"_s, u"openMusicApp"_s}));
    }

    void thePlayersOwnWindowIsOfferedWhileItRuns()
    {
        Recorder recorder;
        DockMenuItems items;
        QVERIFY(!itemOf(*items.menu(recorder.commands()), MenuItemIdentifier::showPlayer));
        items.isMusicAppRunning = true;
        QCOMPARE(itemOf(*items.menu(recorder.commands()), MenuItemIdentifier::showPlayer)->text(), u"Show Player"_s);
        items.playerName = u"Salt & Pepper"_s;
        QCOMPARE(
            itemOf(*items.menu(recorder.commands()), MenuItemIdentifier::showPlayer)->text(), u"Show Salt && Pepper"_s);
    }

    void thePlayersToFollowAreInASubmenu()
    {
        Recorder recorder;
        DockMenuItems items;
        QCOMPARE(titles(*items.menu(recorder.commands())).last(), u"Keep Above All Other Windows"_s);

        items.followChoices = {{.id = {}, .text = u"Automatic"_s, .desktopEntry = {}},
            {.id = u"vlc"_s, .text = u"Salt & Pepper"_s, .desktopEntry = u"org.videolan.VLC"_s, .isChosen = true}};
        items.followedPlayer = FollowablePlayer{.id = u"vlc"_s, .name = u"A & B"_s, .desktopEntry = {}, .title = {}};
        items.iconName = [](const QString &desktopEntry) { return u"icon of "_s + desktopEntry; };
        const auto menu = items.menu(recorder.commands());
        QCOMPARE(titles(*menu).last(), u"Follow"_s);
        const QMenu &follow = *menu->actions().constLast()->menu();
        QCOMPARE(titles(follow), (QStringList{u"Automatic"_s, u"Salt && Pepper"_s, u"-"_s, u"Never Follow A && B"_s}));
        const QList<QAction *> actions = follow.actions();
        QVERIFY(!actions.at(0)->isChecked());
        QVERIFY(actions.at(1)->isChecked());
        QVERIFY(actions.at(1)->actionGroup()->isExclusive());
        QCOMPARE(actions.at(0)->data(), QVariant(QString()));
        QCOMPARE(actions.at(1)->data(), QVariant(u"icon of org.videolan.VLC"_s));
        for (QAction *action : actions) {
            action->trigger();
        }
        QCOMPARE(recorder.names, (QStringList{u"follow "_s, u"follow vlc"_s, u"neverFollow vlc"_s}));
    }

    void theOutputsAreInASubmenu()
    {
        Recorder recorder;
        DockMenuItems items;
        QVERIFY(!itemOf(*items.menu(recorder.commands()), u"PlayThrough"_s));
        items.outputChoices = OutputChoices{.obstacle = {},
            .choices = {
                {.id = {}, .text = u"Default"_s}, {.id = u"kitchen"_s, .text = u"Salt & Pepper"_s, .isCurrent = true}}};
        const auto menu = items.menu(recorder.commands());
        const QAction *item = itemOf(*menu, u"PlayThrough"_s);
        QCOMPARE(item->text(), u"Play Through"_s);
        QCOMPARE(titles(*item->menu()), (QStringList{u"Default"_s, u"Salt && Pepper"_s}));
        const QList<QAction *> outputs = item->menu()->actions();
        QVERIFY(!outputs.at(0)->isCheckable());
        QVERIFY(outputs.at(1)->isChecked());
        outputs.at(0)->trigger();
        outputs.at(1)->trigger();
        QCOMPARE(recorder.names, (QStringList{u"playThrough "_s, u"playThrough kitchen"_s}));
    }

    void outputsThatCannotBeChosenAreBelowTheReason()
    {
        Recorder recorder;
        DockMenuItems items;
        items.outputChoices = OutputChoices{.obstacle = u"No & no"_s, .choices = {{.id = {}, .text = u"Default"_s}}};
        const auto menu = items.menu(recorder.commands());
        const QMenu &outputs = *itemOf(*menu, u"PlayThrough"_s)->menu();
        QCOMPARE(titles(outputs), (QStringList{u"No && no"_s, u"Default"_s}));
        QVERIFY(!outputs.actions().at(0)->isEnabled());
        QVERIFY(!outputs.actions().at(1)->isEnabled());
    }

    void whereNothingCanBeKeptAboveItCanOnlyBeSwitchedOff_data()
    {
        QTest::addColumn<AboveWay>("way");
        QTest::addColumn<QString>("text");
        QTest::newRow("Wayland") << AboveWay::None << u"Keep Above All Other Windows (Not Possible on Wayland)"_s;
        QTest::newRow("sandbox") << AboveWay::Sandbox << u"Keep Above All Other Windows (Not Possible in a Sandbox)"_s;
    }
    void whereNothingCanBeKeptAboveItCanOnlyBeSwitchedOff()
    {
        QFETCH(const AboveWay, way);
        QFETCH(const QString, text);
        Recorder recorder;
        DockMenuItems items;
        items.aboveWay = way;
        items.isKeptAbove = true;
        const auto on = items.menu(recorder.commands());
        QAction *item = itemOf(*on, MenuItemIdentifier::keepAboveAllWindows);
        QCOMPARE(item->text(), text);
        QVERIFY(item->isChecked());
        QVERIFY(item->isEnabled());
        items.isKeptAbove = false;
        const auto off = items.menu(recorder.commands());
        QVERIFY(!itemOf(*off, MenuItemIdentifier::keepAboveAllWindows)->isChecked());
        QVERIFY(!itemOf(*off, MenuItemIdentifier::keepAboveAllWindows)->isEnabled());
    }

    void withoutAFollowedPlayerNoneCanBeLeftOut()
    {
        Recorder recorder;
        DockMenuItems items;
        items.followChoices = {{.id = {}, .text = u"Automatic"_s, .desktopEntry = {}},
            {.id = u"vlc"_s, .text = u"VLC (not open)"_s, .desktopEntry = {}, .isChosen = true}};
        QCOMPARE(titles(*items.menu(recorder.commands())->actions().constLast()->menu()),
            (QStringList{u"Automatic"_s, u"VLC (not open)"_s}));
    }

    void whereThereIsNothingToChooseTheSubmenuIsLeftOut()
    {
        Recorder recorder;
        DockMenuItems items;
        items.followChoices = {{.id = {}, .text = u"Automatic"_s, .desktopEntry = {}, .isChosen = true}};
        QCOMPARE(titles(*items.menu(recorder.commands())).last(), u"Keep Above All Other Windows"_s);
    }

    void anItemIsEnabledAsItsValidationSays()
    {
        Recorder recorder;
        recorder.disabled = MenuItemIdentifier::next;
        DockMenuItems items;
        items.isMusicAppRunning = true;
        const auto menu = items.menu(recorder.commands());
        QVERIFY(!itemOf(*menu, MenuItemIdentifier::next)->isEnabled());
        QVERIFY(itemOf(*menu, MenuItemIdentifier::previous)->isEnabled());
    }

    void whereMusicCannotBeLaunchedTheItemSaysWhyAndIsDisabled()
    {
        Recorder recorder;
        DockMenuItems items;
        items.canOpenMusicApp = false;
        const auto menu = items.menu(recorder.commands());
        const QAction *open = itemOf(*menu, MenuItemIdentifier::openMusicApp);
        QCOMPARE(open->text(), u"Open \"Music\" (Not Possible in a Sandbox)"_s);
        QVERIFY(!open->isEnabled());
    }

    void nothingIsDoneOnceTheReceiverIsGone()
    {
        Recorder recorder;
        const auto menu = DockMenuItems().menu(recorder.commands());
        QAction *open = itemOf(*menu, MenuItemIdentifier::openMusicApp);
        open->trigger();
        recorder.receiver.reset();
        open->trigger();
        QCOMPARE(recorder.names, {u"openMusicApp"_s});
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::DockMenuItemsTest, QApplication)
#include "DockMenuItemsTest.moc"
