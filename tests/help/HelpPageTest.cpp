// SPDX-License-Identifier: MIT
#include "help/HelpPage.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

namespace tunedeck {

class HelpPageTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void aPageIsTakenApartAtItsAnchors()
    {
        const auto page = readHelpPage("<!DOCTYPE html><html><head><title> The\nwindow </title>"
                                       "<meta name=\"keywords\" content=\"move drag\"/></head><body>"
                                       "<h1><a name=\"Window\">The <b>window</b></a></h1><p>It has <i>no</i> bar.</p>"
                                       "<h2><a name=\"Width\">Width</a></h2><p>Drag <a href=\"x.html\">it</a>.</p>"
                                       "</body></html>");
        QVERIFY(page);
        QCOMPARE(page->title, QStringLiteral("The window"));
        QCOMPARE(page->keywords, QStringLiteral("move drag"));
        QCOMPARE(page->sections.size(), 2);
        QCOMPARE(page->sections.at(0).anchor, QStringLiteral("Window"));
        QCOMPARE(page->sections.at(0).title, QStringLiteral("The window"));
        QCOMPARE(page->sections.at(0).text.simplified(), QStringLiteral("It has no bar."));
        QCOMPARE(page->sections.at(1).anchor, QStringLiteral("Width"));
        QCOMPARE(page->sections.at(1).text.simplified(), QStringLiteral("Drag it ."));
    }

    void cellsOfATableAreWordsOfTheirOwn()
    {
        const auto page = readHelpPage("<html><head><title>T</title></head><body><a name=\"A\">A</a>"
                                       "<table><tr><td>Ctrl+L</td><td>Drawer</td></tr></table></body></html>");
        QVERIFY(page);
        QCOMPARE(page->sections.at(0).text.simplified(), QStringLiteral("Ctrl+L Drawer"));
    }

    void whatIsNoPageIsRefused_data()
    {
        QTest::addColumn<QByteArray>("html");
        const QByteArray start = "<html><head><title>T</title></head><body><a name=\"A\">A</a>";
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("text") << QByteArray("Hello");
        QTest::newRow("a tag that is not closed") << start + "<p></body></html>";
        QTest::newRow("the end is missing") << start;
        QTest::newRow("not in UTF-8") << start + "caf\xe9</body></html>";
        QTest::newRow("an entity that is unknown") << start + "&nbsp;</body></html>";
        QTest::newRow("no title") << QByteArray("<html><body><a name=\"A\">A</a></body></html>");
        QTest::newRow("no anchor") << QByteArray("<html><head><title>T</title></head><body>A</body></html>");
    }
    void whatIsNoPageIsRefused()
    {
        QFETCH(QByteArray, html);
        QVERIFY(!readHelpPage(html));
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::HelpPageTest, QCoreApplication)
#include "HelpPageTest.moc"
