// SPDX-License-Identifier: MIT
#include "music/mpris/PlaylistPages.h"
#include "support/registerTest.h"

#include <QGuiApplication>
#include <QTest>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

/// The playlists from `first` on, as a player sends them.
QVariantList page(int first, int count)
{
    QVariantList elements;
    for (int number = first; number < first + count; ++number) {
        elements.append(QVariant(QVariantList{u"/p/%1"_s.arg(number), u"List %1"_s.arg(number), QString()}));
    }
    return elements;
}

QStringList namesOf(const PlaylistPages &pages)
{
    QStringList names;
    for (const PlaylistDetails &playlist : pages.playlists()) {
        names.append(playlist.name);
    }
    return names;
}

} // namespace

class PlaylistPagesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void thePagesAreAskedForOneAfterTheOtherUntilTheCountIsReached()
    {
        PlaylistPages pages(1'999);
        QVERIFY(!pages.isComplete());
        QCOMPARE(pages.nextIndex(), 0U);
        pages.add(page(0, 1'000));
        QVERIFY(!pages.isComplete());
        QCOMPARE(pages.nextIndex(), 1'000U);
        pages.add(page(1'000, 999));
        QVERIFY(pages.isComplete());
        QCOMPARE(pages.playlists().size(), 1'999);
        QCOMPARE(pages.playlists().constFirst().path, u"/p/0"_s);
        QCOMPARE(pages.playlists().constLast().path, u"/p/1998"_s);
    }

    void aPageThatIsNotFullIsNotTheEndWhileMoreAreCounted()
    {
        PlaylistPages pages(5);
        pages.add(page(0, 2));
        QVERIFY(!pages.isComplete());
        QCOMPARE(pages.nextIndex(), 2U);
        pages.add(page(2, 2));
        QVERIFY(!pages.isComplete());
        QCOMPARE(pages.nextIndex(), 4U);
        pages.add(page(4, 1));
        QVERIFY(pages.isComplete());
        QCOMPARE(pages.playlists().size(), 5);
    }

    void withoutACountAnEmptyPageIsTheEnd()
    {
        PlaylistPages pages;
        pages.add(page(0, 3));
        QVERIFY(!pages.isComplete());
        QCOMPARE(pages.nextIndex(), 3U);
        pages.add(page(3, 0));
        QVERIFY(pages.isComplete());
        QCOMPARE(pages.playlists().size(), 3);
    }

    void aCountThatIsTooSmallDoesNotEndAListOfFullPages()
    {
        PlaylistPages pages(-1);
        pages.add(page(0, 1'000));
        QVERIFY(!pages.isComplete());
        pages.add(page(1'000, 1));
        QVERIFY(pages.isComplete());
        QCOMPARE(pages.playlists().size(), 1'001);
    }

    void aCountThatIsTooLargeEndsWithAPageThatBringsNothingNew()
    {
        PlaylistPages pages(1e300);
        pages.add(page(0, 3));
        QVERIFY(!pages.isComplete());
        pages.add(page(0, 3));
        QVERIFY(pages.isComplete());
        QCOMPARE(pages.playlists().size(), 3);
    }

    void theCountIsReachedOnceAsManyAreToldOf()
    {
        PlaylistPages pages(3);
        QVERIFY(!pages.reachesCount());
        pages.add(page(0, 2));
        QVERIFY(!pages.reachesCount());
        pages.add(page(2, 1));
        QVERIFY(pages.reachesCount());
        QVERIFY(PlaylistPages(0).reachesCount());
    }

    void withoutACountItIsReachedWithTheFirst()
    {
        PlaylistPages pages;
        QVERIFY(!pages.reachesCount());
        pages.add(page(0, 1));
        QVERIFY(pages.reachesCount());
        QVERIFY(!pages.isComplete());
    }

    void whatIsNoPageEndsTheList_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("an empty page") << QVariant(QVariantList());
        QTest::newRow("nothing") << QVariant();
        QTest::newRow("a text") << QVariant(u"playlists"_s);
        QTest::newRow("a map") << QVariant(QVariantMap{{u"/p/0"_s, u"A"_s}});
        QTest::newRow("a thousand numbers") << QVariant(QVariantList(1'000, QVariant(7)));
    }
    void whatIsNoPageEndsTheList()
    {
        QFETCH(const QVariant, value);
        PlaylistPages pages;
        pages.add(value);
        QVERIFY(pages.isComplete());
        QCOMPARE(pages.playlists(), QList<PlaylistDetails>());
    }

    void aPlaylistThatIsNoneIsLeftOut()
    {
        PlaylistPages pages;
        QVariantList elements = page(0, 3);
        elements.replace(1, QVariant(7));
        pages.add(elements);
        QCOMPARE(namesOf(pages), QStringList({u"List 0"_s, u"List 2"_s}));
    }

    void aPlaylistThatComesTwiceIsInTheListOnceInItsFirstPlace()
    {
        PlaylistPages pages;
        pages.add(page(0, 2) + page(0, 1) + page(2, 1));
        QCOMPARE(namesOf(pages), QStringList({u"List 0"_s, u"List 1"_s, u"List 2"_s}));
    }

    void aListThatGrewBetweenTwoPagesHasNoPlaylistTwice()
    {
        PlaylistPages pages;
        pages.add(page(0, 1'000));
        pages.add(page(999, 5));
        QCOMPARE(pages.playlists().size(), 1'004);
    }

    void thePlayerThatSendsTheSamePageForeverIsAskedTwice()
    {
        PlaylistPages pages;
        pages.add(page(0, 1'000));
        QVERIFY(!pages.isComplete());
        pages.add(page(0, 1'000));
        QVERIFY(pages.isComplete());
        QCOMPARE(pages.playlists().size(), 1'000);
    }

    void thePlayerThatSendsNewPagesForeverIsStoppedAtAHundredThousand()
    {
        PlaylistPages pages;
        int asked = 0;
        for (; !pages.isComplete() && asked < 200; ++asked) {
            // Every page has one invalid playlist, so that the limit falls into the middle of a page.
            pages.add(page(asked * 999, 999) + QVariantList{7});
        }
        QCOMPARE(asked, 101);
        QCOMPARE(pages.playlists().size(), 100'000);
    }
};

TUNEDECK_TEST(PlaylistPagesTest, QGuiApplication)
#include "PlaylistPagesTest.moc"
