// SPDX-License-Identifier: MIT
#include "help/HelpBook.h"

#include "BookFolder.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

namespace tunedeck {

namespace {
QStringList titles(const QList<HelpTopic> &topics)
{
    QStringList titles;
    for (const HelpTopic &topic : topics) {
        titles.append(topic.pageTitle);
    }
    return titles;
}

QStringList anchors(const QList<HelpTopic> &topics)
{
    QStringList anchors;
    for (const HelpTopic &topic : topics) {
        anchors.append(topic.anchor);
    }
    return anchors;
}
} // namespace

class HelpBookTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void theContentsAreThePagesInTheOrderOfTheirFiles()
    {
        BookFolder folder;
        folder.writePage(QStringLiteral("en/2.html"), QStringLiteral("Second"), {});
        folder.writePage(QStringLiteral("en/1.html"), QStringLiteral("First"), {});
        const HelpBook book = folder.book();
        QCOMPARE(titles(book.contents()), (QStringList{QStringLiteral("First"), QStringLiteral("Second")}));
        QCOMPARE(book.contents().first().page, QStringLiteral("1.html"));
        QVERIFY(book.html(QStringLiteral("2.html"))->contains(QStringLiteral("Second")));
        QVERIFY(!book.html(QStringLiteral("3.html")));
    }

    void aPageIsReadInTheReadersLanguageWhereItIsTranslated()
    {
        BookFolder folder;
        folder.writePage(QStringLiteral("en/1.html"), QStringLiteral("First"), {});
        folder.writePage(QStringLiteral("en/2.html"), QStringLiteral("Second"), {});
        folder.writePage(QStringLiteral("de/2.html"), QStringLiteral("Zweite"), {});
        QCOMPARE(titles(folder.book(QLocale(QLocale::German, QLocale::Austria)).contents()),
            (QStringList{QStringLiteral("First"), QStringLiteral("Zweite")}));
        QCOMPARE(titles(folder.book(QLocale(QLocale::French)).contents()),
            (QStringList{QStringLiteral("First"), QStringLiteral("Second")}));
        QCOMPARE(titles(folder.book(QLocale::c()).contents()).last(), QStringLiteral("Second"));
    }

    void aPageThatOnlyATranslationHasStandsAtItsPlace()
    {
        BookFolder folder;
        folder.writePage(QStringLiteral("en/1.html"), QStringLiteral("First"), {});
        folder.writePage(QStringLiteral("en/3.html"), QStringLiteral("Third"), {});
        folder.writePage(QStringLiteral("de/2.html"), QStringLiteral("Zweite"), {});
        QCOMPARE(titles(folder.book(QLocale(QLocale::German)).contents()),
            (QStringList{QStringLiteral("First"), QStringLiteral("Zweite"), QStringLiteral("Third")}));
    }

    void aTranslationThatCannotBeReadCountsAsNone()
    {
        BookFolder folder;
        folder.writePage(QStringLiteral("en/1.html"), QStringLiteral("First"), {});
        folder.write(QStringLiteral("de/1.html"), "<html><title>Erste");
        QCOMPARE(titles(folder.book(QLocale(QLocale::German)).contents()), QStringList(QStringLiteral("First")));
    }

    void aPageThatCannotBeReadIsLeftOut()
    {
        BookFolder folder;
        folder.write(QStringLiteral("en/1.html"), "no page");
        folder.writePage(QStringLiteral("en/2.html"), QStringLiteral("Second"), {});
        folder.write(QStringLiteral("en/3.html/inside"), "a folder with a page's name");
        QCOMPARE(titles(folder.book().contents()), QStringList(QStringLiteral("Second")));
    }

    void aBookThatIsMissingIsEmpty()
    {
        const HelpBook book(QStringLiteral("/nowhere"), QLocale::c());
        QVERIFY(book.contents().isEmpty());
        QVERIFY(!book.topicAt(QStringLiteral("First")));
        QVERIFY(book.search(QStringLiteral("first")).isEmpty());
    }

    void anAnchorLeadsToItsPageOrSection()
    {
        BookFolder folder;
        folder.writePage(QStringLiteral("en/1.html"), QStringLiteral("First"), {});
        const HelpBook book = folder.book();
        const HelpTopic page{QStringLiteral("1.html"), QStringLiteral("First"), QStringLiteral("First"), {}};
        const HelpTopic section{
            QStringLiteral("1.html"), QStringLiteral("First"), QStringLiteral("FirstMore"), QStringLiteral("More")};
        QCOMPARE(book.topicAt(QStringLiteral("First")), page);
        QCOMPARE(book.topicAt(QStringLiteral("FirstMore")), section);
        QVERIFY(!book.topicAt(QStringLiteral("first")));
        QVERIFY(!book.topicAt(QString()));
    }

    void whatIsFoundByItsTitleComesBeforeWhatIsFoundByItsText()
    {
        BookFolder folder;
        folder.writePage(QStringLiteral("en/1.html"), QStringLiteral("Window"), QStringLiteral("Not the volume."));
        folder.writePage(QStringLiteral("en/2.html"), QStringLiteral("Drawer"), QStringLiteral("Playlists."));
        folder.writePage(QStringLiteral("en/3.html"), QStringLiteral("Volume"), QStringLiteral("Louder."));
        const HelpBook book = folder.book();
        // The page by its title, the other one by its text, and last a section by the title of its page.
        QCOMPARE(anchors(book.search(QStringLiteral("volume"))),
            (QStringList{QStringLiteral("Volume"), QStringLiteral("Window"), QStringLiteral("VolumeMore")}));
        QCOMPARE(anchors(book.search(QStringLiteral("drawer-key"))), QStringList(QStringLiteral("Drawer")));
    }

    void whatIsFoundAlikeKeepsTheBooksOrder()
    {
        BookFolder folder;
        folder.writePage(QStringLiteral("en/1.html"), QStringLiteral("First"), QStringLiteral("Rest a while."));
        folder.writePage(QStringLiteral("en/2.html"), QStringLiteral("Second"), QStringLiteral("Go on."));
        QCOMPARE(anchors(folder.book().search(QStringLiteral("rest"))),
            (QStringList{QStringLiteral("First"), QStringLiteral("FirstMore"), QStringLiteral("SecondMore")}));
    }

    void everyWordMustBeFoundThoughNotAtOnePlace()
    {
        BookFolder folder;
        folder.writePage(QStringLiteral("en/1.html"), QStringLiteral("Window"), QStringLiteral("Move it."));
        folder.writePage(QStringLiteral("en/2.html"), QStringLiteral("Drawer"), QStringLiteral("Open it."));
        const HelpBook book = folder.book();
        QCOMPARE(anchors(book.search(QStringLiteral("  open\tdraw "))), QStringList(QStringLiteral("Drawer")));
        QVERIFY(book.search(QStringLiteral("open window")).isEmpty());
        QVERIFY(book.search(QStringLiteral("   ")).isEmpty());
    }

    void caseAndAccentsDoNotMatter_data()
    {
        QTest::addColumn<QString>("written");
        QTest::addColumn<QString>("searched");
        QTest::newRow("case") << QStringLiteral("Shuffle") << QStringLiteral("sHUFF");
        QTest::newRow("an accent less") << QStringLiteral("Lautstärke") << QStringLiteral("lautstarke");
        QTest::newRow("an accent more") << QStringLiteral("resume") << QStringLiteral("Résumé");
        QTest::newRow("accents as characters of their own")
            << QStringLiteral("re\u0301sume\u0301") << QStringLiteral("résumé");
        QTest::newRow("a stroke through a letter") << QStringLiteral("Głośność") << QStringLiteral("glosnosc");
        QTest::newRow("sharp s") << QStringLiteral("Größe") << QStringLiteral("GROSSE");
        QTest::newRow("another alphabet") << QStringLiteral("Громкость") << QStringLiteral("ГРОМКОСТЬ");
    }
    void caseAndAccentsDoNotMatter()
    {
        QFETCH(QString, written);
        QFETCH(QString, searched);
        BookFolder folder;
        folder.writePage(QStringLiteral("en/1.html"), QStringLiteral("Page"), written);
        QCOMPARE(anchors(folder.book().search(searched)), QStringList(QStringLiteral("Page")));
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::HelpBookTest, QCoreApplication)
#include "HelpBookTest.moc"
