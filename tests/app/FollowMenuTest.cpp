// SPDX-License-Identifier: MIT
#include "app/FollowMenu.h"

#include "platform/DesktopEntries.h"
#include "platform/UserDefaults.h"
#include "support/ScriptedFollowablePlayers.h"
#include "support/TurnWatch.h"
#include "support/registerTest.h"

#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QPixmap>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tunedeck;

namespace {
/// A menu, and everything that it needs.
struct Follow {
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(u"settings"_s)};
    ScriptedFollowablePlayers players;
    DesktopEntries desktopEntries;
    QMenu menu;
    FollowMenu follow{menu, {players, defaults, desktopEntries}};

    Follow()
    {
        FollowablePlayer strawberry = playerNamed(u"strawberry"_s, u"Strawberry"_s);
        strawberry.title = u"Quince Harbour Timetable"_s;
        strawberry.isFollowed = true;
        players.players = {playerNamed(u"vlc"_s, u"VLC"_s), strawberry};
    }

    void open() { menu.popup({}); }

    /// A line for each item: whether it is checked, its title, and whether it is disabled.
    [[nodiscard]] QStringList lines() const
    {
        QStringList lines;
        for (const QAction *action : menu.actions()) {
            if (!action->isVisible()) {
                continue;
            }
            lines.append(action->isSeparator() ? u"-"_s
                                               : (action->isChecked() ? u"* "_s : u"  "_s) + action->text()
                        + (action->isEnabled() ? QString() : u" (disabled)"_s));
        }
        return lines;
    }

    [[nodiscard]] QAction &item(const QString &title) const
    {
        for (QAction *action : menu.actions()) {
            if (action->text() == title) {
                return *action;
            }
        }
        qFatal("No item %s", qPrintable(title));
    }

    [[nodiscard]] QString pinned() const { return defaults.stringForKey(SettingsKey::followedPlayer); }
};

class ResizeCounter : public QObject {
public:
    int count = 0;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        count += event->type() == QEvent::Resize ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
};

/// Installs a desktop entry "demo" with an icon in a folder of the test's own.
void installDesktopEntry(const QTemporaryDir &folder)
{
    QVERIFY(QDir(folder.path()).mkpath(u"applications"_s));
    QPixmap icon(16, 16);
    icon.fill(Qt::red);
    QVERIFY(icon.save(folder.filePath(u"demo.png"_s)));
    QFile entry(folder.filePath(u"applications/demo.desktop"_s));
    QVERIFY(entry.open(QIODevice::WriteOnly));
    entry.write("[Desktop Entry]\nType=Application\nName=Demo\nExec=true\nIcon="
        + folder.filePath(u"demo.png"_s).toUtf8() + '\n');
}
} // namespace

// Without failOnWarning(): the offscreen platform warns of every menu.
class FollowMenuTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("XDG_DATA_HOME", m_data.path().toUtf8());
        installDesktopEntry(m_data);
    }

    void itListsThePlayersWhenItOpens()
    {
        Follow follow;
        QCOMPARE(follow.lines(), {u"* Automatic"_s});
        follow.open();
        QCOMPARE(follow.lines(),
            (QStringList{u"* Automatic (Strawberry)"_s, u"  VLC"_s, u"  Strawberry: Quince Harbour Timetable"_s, u"-"_s,
                u"  Never Follow Strawberry"_s}));
        QVERIFY(follow.item(u"VLC"_s).isCheckable());
        QVERIFY(!follow.item(u"Never Follow Strawberry"_s).isCheckable());
    }

    void thePlayerThatIsFollowedIsBold()
    {
        Follow follow;
        follow.open();
        QVERIFY(follow.item(u"Strawberry: Quince Harbour Timetable"_s).font().bold());
        QVERIFY(!follow.item(u"VLC"_s).font().bold());
        QVERIFY(!follow.item(u"Automatic (Strawberry)"_s).font().bold());
        QList<FollowablePlayer> players = follow.players.players;
        players[0].isFollowed = true;
        players[1].isFollowed = false;
        follow.players.set(players);
        QVERIFY(follow.item(u"VLC"_s).font().bold());
        QVERIFY(!follow.item(u"Strawberry: Quince Harbour Timetable"_s).font().bold());
    }

    void aClosedMenuDoesNotFollowThePlayers()
    {
        Follow follow;
        follow.players.set({playerNamed(u"mpv"_s, u"mpv"_s)});
        QCOMPARE(follow.lines(), {u"* Automatic"_s});
    }

    void choosingAPlayerPinsItAndAutomaticUnpinsIt()
    {
        Follow follow;
        follow.open();
        follow.item(u"VLC"_s).trigger();
        QCOMPARE(follow.pinned(), u"vlc"_s);
        follow.menu.hide();
        follow.open();
        QCOMPARE(follow.lines().first(3),
            (QStringList{u"  Automatic"_s, u"* VLC"_s, u"  Strawberry: Quince Harbour Timetable"_s}));
        follow.item(u"Automatic"_s).trigger();
        QCOMPARE(follow.pinned(), QString());
    }

    void theFollowedPlayerIsLeftOutForGood()
    {
        Follow follow;
        follow.open();
        follow.item(u"Never Follow Strawberry"_s).trigger();
        QCOMPARE(follow.players.left, {u"strawberry"_s});
    }

    void anOpenMenuShowsWhatChangesInItsPlace()
    {
        Follow follow;
        follow.open();
        follow.menu.setActiveAction(&follow.item(u"VLC"_s));
        QList<FollowablePlayer> players = follow.players.players;
        players[0].title = u"Salt & Pepper"_s;
        players.append(playerNamed(u"mpv"_s, u"mpv"_s));
        follow.players.set(players);
        QVERIFY(follow.menu.isVisible());
        QCOMPARE(follow.lines(),
            (QStringList{u"* Automatic (Strawberry)"_s, u"  VLC: Salt && Pepper"_s,
                u"  Strawberry: Quince Harbour Timetable"_s, u"  mpv"_s, u"-"_s, u"  Never Follow Strawberry"_s}));
        QCOMPARE(follow.menu.activeAction()->text(), u"VLC: Salt && Pepper"_s);
    }

    void noItemOfAnOpenMenuMovesOrMeansAnotherPlayer()
    {
        Follow follow;
        follow.open();
        FollowablePlayer mpv = playerNamed(u"mpv"_s, u"mpv"_s);
        mpv.isFollowed = true;
        follow.players.set({mpv});
        QCOMPARE(follow.lines(),
            (QStringList{u"* Automatic (mpv)"_s, u"  VLC (disabled)"_s,
                u"  Strawberry: Quince Harbour Timetable (disabled)"_s, u"  mpv"_s, u"-"_s,
                u"  Never Follow Strawberry (disabled)"_s}));
        follow.menu.hide();
        follow.open();
        QCOMPARE(follow.lines(), (QStringList{u"* Automatic (mpv)"_s, u"  mpv"_s, u"-"_s, u"  Never Follow mpv"_s}));
    }

    void aPlayerThatComesBackToAnOpenMenuIsWhereItWas()
    {
        Follow follow;
        follow.open();
        const QList<FollowablePlayer> players = follow.players.players;
        const QStringList lines = follow.lines();
        follow.players.set({});
        follow.players.set({players.at(1), players.at(0)});
        QCOMPARE(follow.lines(), lines);
    }

    void aPinChangedElsewhereIsShownInAnOpenMenu()
    {
        Follow follow;
        follow.open();
        follow.defaults.setValue(SettingsKey::followedPlayer, u"vlc"_s);
        QVERIFY(follow.item(u"VLC"_s).isChecked());
        QVERIFY(!follow.item(u"Automatic"_s).isChecked());
    }

    void aFirstPlayerComesToAnOpenMenu()
    {
        Follow follow;
        follow.players.players.clear();
        follow.open();
        follow.players.set({playerNamed(u"mpv"_s, u"mpv"_s)});
        QCOMPARE(follow.lines(), (QStringList{u"* Automatic"_s, u"  mpv"_s}));
    }

    void aPinnedPlayerThatDoesNotRunIsInTheList()
    {
        Follow follow;
        follow.players.players.clear();
        follow.players.awaited = u"Strawberry"_s;
        follow.defaults.setValue(SettingsKey::followedPlayer, u"strawberry"_s);
        follow.open();
        QCOMPARE(follow.lines(), (QStringList{u"  Automatic"_s, u"* Strawberry (not open)"_s}));
    }

    void playersThatComeAndGoDoNotFillAnOpenMenu()
    {
        Follow follow;
        follow.open();
        for (int run = 0; run < 40; ++run) {
            QList<FollowablePlayer> crowd;
            for (int player = 0; player < 64; ++player) {
                crowd.append(playerNamed(u"p%1"_s.arg(run * 64 + player), u"Player"_s));
            }
            follow.players.set(crowd);
        }
        // Also the separator and the command below.
        QCOMPARE(follow.lines().size(), 64 + 2 + 2);
        QCOMPARE(follow.menu.actions().size(), 64 + 2 + 2);
    }

    void aFullMenuWhoseEveryEntryChangesIsLaidOutOnce()
    {
        Follow follow;
        const auto crowd = [](int longer) {
            QList<FollowablePlayer> players;
            for (int player = 0; player < 64; ++player) {
                players.append(
                    playerNamed(u"p%1"_s.arg(player), QString(longer * player / 2, u'M') + QString::number(player)));
            }
            return players;
        };
        follow.players.set(crowd(0));
        follow.open();
        ResizeCounter counter;
        follow.menu.installEventFilter(&counter);
        TurnWatch watch;
        // Each entry is wider than the one before.
        follow.players.set(crowd(1));
        QCOMPARE(follow.menu.actions().at(64)->text(), QString(31, u'M') + u"63"_s);
        QCOMPARE(counter.count, 1);
        QVERIFY(watch.longest() < 50);
    }

    void aPlayerHasTheIconOfItsDesktopEntryOnceItIsRead()
    {
        Follow follow;
        follow.players.players.first().desktopEntry = u"demo"_s;
        follow.open();
        const QAction &item = follow.item(u"VLC"_s);
        QTRY_VERIFY(!item.icon().isNull());
        QCOMPARE(item.icon().pixmap(16, 16).toImage().pixelColor(8, 8), QColor(Qt::red));
        QVERIFY(follow.item(u"Strawberry: Quince Harbour Timetable"_s).icon().isNull());
    }

    void untilItOpensItReadsNoDesktopEntry()
    {
        Follow follow;
        follow.players.players.first().desktopEntry = u"demo"_s;
        QMenu menu;
        const FollowMenu later(menu, {follow.players, follow.defaults, follow.desktopEntries});
        const QSignalSpy known(&follow.desktopEntries, &DesktopEntries::factsKnown);
        // The entries are read in the order in which they are asked for.
        QVERIFY(!follow.desktopEntries.facts(u"another"_s));
        QTRY_VERIFY(!known.isEmpty());
        QCOMPARE(known.first().first().toString(), u"another"_s);
    }

    void aGlobalMenuBarGetsTheIconsOfAMenuThatItReads()
    {
        Follow follow;
        follow.players.players.first().desktopEntry = u"demo"_s;
        Q_EMIT follow.menu.aboutToShow();
        QTRY_VERIFY(!follow.item(u"VLC"_s).icon().isNull());
    }

    /// It may be open, and the user about to click.
    void theIconsMoveNoItemOfAMenuThatAGlobalMenuBarShows()
    {
        Follow follow;
        follow.players.players.first().desktopEntry = u"demo"_s;
        Q_EMIT follow.menu.aboutToShow();
        const QStringList lines = follow.lines();
        QList<FollowablePlayer> players = follow.players.players;
        players.prepend(playerNamed(u"mpv"_s, u"mpv"_s));
        players.removeLast();
        follow.players.set(players);
        const QAction &second = *follow.menu.actions().at(1);
        const QAction &third = *follow.menu.actions().at(2);
        QTRY_VERIFY(!second.icon().isNull() || !third.icon().isNull());
        QCOMPARE(follow.lines(), lines);
        QVERIFY(!second.icon().isNull());
        QCOMPARE(second.data().toString(), u"vlc"_s);
    }

    void screenReadersHearThePlayersAndWhichIsChosen()
    {
        Follow follow;
        follow.defaults.setValue(SettingsKey::followedPlayer, u"vlc"_s);
        follow.open();
        QAccessibleInterface *menu = QAccessible::queryAccessibleInterface(&follow.menu);
        QCOMPARE(menu->child(1)->text(QAccessible::Name), u"VLC"_s);
        QVERIFY(menu->child(1)->state().checkable);
        QVERIFY(menu->child(1)->state().checked);
        QVERIFY(!menu->child(2)->state().checked);
        QCOMPARE(menu->child(2)->text(QAccessible::Name), u"Strawberry: Quince Harbour Timetable"_s);
    }

private:
    QTemporaryDir m_data;
};

TUNEDECK_TEST(FollowMenuTest, QApplication)
#include "FollowMenuTest.moc"
