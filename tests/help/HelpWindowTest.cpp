// SPDX-License-Identifier: MIT
#include "help/HelpWindow.h"

#include "BookFolder.h"
#include "help/HelpBrowser.h"
#include "platform/BundleInfo.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QTest>
#include <QToolButton>

#include <memory>

namespace tunedeck {

namespace {
QStringList lines(const QListWidget &list)
{
    QStringList lines;
    for (int row = 0; row < list.count(); ++row) {
        lines.append(list.item(row)->text());
    }
    return lines;
}
} // namespace

class HelpWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        tunedeck::failOnWarning();
        BookFolder folder;
        folder.writePage(QStringLiteral("en/1.html"), QStringLiteral("First"), QStringLiteral("apples"));
        folder.writePage(QStringLiteral("en/2.html"), QStringLiteral("Second"), QStringLiteral("pears"));
        folder.writePage(QStringLiteral("en/3.html"), QStringLiteral("Third"), QStringLiteral("apples and pears"));
        m_window = std::make_unique<HelpWindow>(folder.book());
    }
    void cleanup() { m_window.reset(); }

    void aKnownAnchorOpensItsPageAndBringsTheWindowForward()
    {
        QCOMPARE(m_window->windowTitle(), QStringLiteral("Tunedeck Help"));
        QVERIFY(!m_window->isVisible());
        m_window->openHelpAnchor(QStringLiteral("Second"), m_bookName);
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QCOMPARE(m_window->browser().page(), QStringLiteral("2.html"));
        QCOMPARE(m_window->topicList().currentItem()->text(), QStringLiteral("Second"));
        m_window->showMinimized();
        m_window->openHelpAnchor(QStringLiteral("ThirdMore"), m_bookName);
        QVERIFY(!m_window->isMinimized());
        QCOMPARE(m_window->browser().page(), QStringLiteral("3.html"));
        QCOMPARE(m_window->browser().source().fragment(), QStringLiteral("ThirdMore"));
    }

    void anUnknownAnchorOpensTheFirstPage()
    {
        m_window->openHelpAnchor(QStringLiteral("Second"), m_bookName);
        m_window->openHelpAnchor(QStringLiteral("Nowhere"), m_bookName);
        QCOMPARE(m_window->browser().page(), QStringLiteral("1.html"));
        QVERIFY(m_window->isVisible());
    }

    void anotherBookIsNotOpened()
    {
        m_window->openHelpAnchor(QStringLiteral("Second"), QStringLiteral("Another Book"));
        m_window->openHelpAnchor(QStringLiteral("Second"), QString());
        QVERIFY(!m_window->isVisible());
        QCOMPARE(m_window->browser().page(), QString());
    }

    void aBookWithoutPagesOpensEmpty()
    {
        HelpWindow window(BookFolder().book());
        window.openHelpAnchor(QStringLiteral("First"), m_bookName);
        QVERIFY(window.isVisible());
        QCOMPARE(window.browser().toPlainText(), QString());
    }

    void theContentsListEveryPageAndOpenIt()
    {
        show();
        QCOMPARE(lines(m_window->topicList()),
            (QStringList{QStringLiteral("First"), QStringLiteral("Second"), QStringLiteral("Third")}));
        click(1);
        QCOMPARE(m_window->browser().page(), QStringLiteral("2.html"));
        m_window->topicList().setFocus();
        QTest::keyClick(&m_window->topicList(), Qt::Key_Down);
        QCOMPARE(m_window->browser().page(), QStringLiteral("2.html"));
        QTest::keyClick(&m_window->topicList(), Qt::Key_Return);
        QCOMPARE(m_window->browser().page(), QStringLiteral("3.html"));
    }

    void theButtonsGoBackAndForwardAndTheListFollows()
    {
        show();
        QVERIFY(!m_window->backButton().isEnabled());
        click(2);
        m_window->backButton().click();
        QCOMPARE(m_window->browser().page(), QStringLiteral("1.html"));
        QCOMPARE(m_window->topicList().currentRow(), 0);
        QVERIFY(!m_window->backButton().isEnabled());
        m_window->forwardButton().click();
        QCOMPARE(m_window->browser().page(), QStringLiteral("3.html"));
        QCOMPARE(m_window->topicList().currentRow(), 2);
        QVERIFY(!m_window->forwardButton().isEnabled());
    }

    void aSearchListsWhatItFindsAndReturnOpensTheFirst()
    {
        show();
        QTest::keyClicks(&m_window->searchField(), QStringLiteral("pears"));
        QCOMPARE(lines(m_window->topicList()), (QStringList{QStringLiteral("Second"), QStringLiteral("Third")}));
        QCOMPARE(m_window->topicList().accessibleName(), QStringLiteral("Search results"));
        QTest::keyClick(&m_window->searchField(), Qt::Key_Return);
        QCOMPARE(m_window->browser().page(), QStringLiteral("2.html"));
        QCOMPARE(m_window->topicList().currentRow(), 0);
        click(1);
        QCOMPARE(m_window->browser().page(), QStringLiteral("3.html"));
    }

    void aSectionThatIsFoundTellsItsPage()
    {
        m_window->searchField().setText(QStringLiteral("third more"));
        QCOMPARE(lines(m_window->topicList()), QStringList(QStringLiteral("Third › More")));
    }

    void aSearchThatFindsNothingSaysSo()
    {
        show();
        m_window->searchField().setText(QStringLiteral("bananas"));
        QCOMPARE(lines(m_window->topicList()), QStringList(QStringLiteral("Nothing found")));
        click(0);
        QTest::keyClick(&m_window->searchField(), Qt::Key_Return);
        QCOMPARE(m_window->browser().page(), QStringLiteral("1.html"));
    }

    void openingAnAnchorEndsASearch()
    {
        show();
        m_window->searchField().setText(QStringLiteral("pears"));
        m_window->openHelpAnchor(QStringLiteral("First"), m_bookName);
        QVERIFY(m_window->searchField().text().isEmpty());
        QCOMPARE(m_window->topicList().count(), 3);
        QCOMPARE(m_window->topicList().currentRow(), 0);
    }

    void escapeEndsTheSearchAndThenClosesTheWindow()
    {
        show();
        m_window->searchField().setText(QStringLiteral("pears"));
        press(Qt::Key_Escape);
        QVERIFY(m_window->searchField().text().isEmpty());
        QCOMPARE(m_window->topicList().accessibleName(), QStringLiteral("Contents"));
        QVERIFY(m_window->isVisible());
        press(Qt::Key_Escape);
        QVERIFY(!m_window->isVisible());
    }

    void itsKeysWork()
    {
        show();
        press(Qt::Key_F, Qt::ControlModifier);
        QVERIFY(m_window->searchField().hasFocus());
        click(1);
        press(Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(m_window->browser().page(), QStringLiteral("1.html"));
        press(Qt::Key_Right, Qt::AltModifier);
        QCOMPARE(m_window->browser().page(), QStringLiteral("2.html"));
        const double size = m_window->browser().font().pointSizeF();
        press(Qt::Key_Plus, Qt::ControlModifier);
        press(Qt::Key_Equal, Qt::ControlModifier);
        QCOMPARE(m_window->browser().font().pointSizeF(), size + 2);
        press(Qt::Key_Minus, Qt::ControlModifier);
        QCOMPARE(m_window->browser().font().pointSizeF(), size + 1);
        press(Qt::Key_0, Qt::ControlModifier);
        QCOMPARE(m_window->browser().font().pointSizeF(), size);
        press(Qt::Key_W, Qt::ControlModifier);
        QVERIFY(!m_window->isVisible());
    }

    void tabReachesEveryControlInReadingOrder()
    {
        show();
        click(1);
        click(2);
        m_window->backButton().click();
        m_window->backButton().setFocus();
        for (const QWidget *next : std::initializer_list<const QWidget *>{
                 &m_window->forwardButton(), &m_window->searchField(), &m_window->topicList(), &m_window->browser()}) {
            press(Qt::Key_Tab);
            QCOMPARE(m_window->focusWidget(), next);
            QVERIFY(!next->accessibleName().isEmpty());
        }
        QVERIFY(!m_window->backButton().accessibleName().isEmpty());
    }

    void aLargerTextMakesRoomForItself()
    {
        show();
        const int width = m_window->width();
        const int searchWidth = m_window->searchField().maximumWidth();
        const int listWidth = m_window->topicList().width();
        QFont large = m_window->font();
        large.setPixelSize(10);
        m_window->setFont(large);
        QCOMPARE(m_window->width(), width);
        large.setPixelSize(48);
        m_window->setFont(large);
        QVERIFY(m_window->width() > width);
        QCOMPARE(m_window->size(), m_window->size().boundedTo(m_window->screen()->availableSize()));
        QVERIFY(m_window->searchField().maximumWidth() > searchWidth);
        QTRY_VERIFY(m_window->topicList().width() > listWidth);
    }

    void aScreenReaderMayAskForEveryPartOfTheSearchedTextAtEveryOffset_data()
    {
        QTest::addColumn<QString>("searched");
        QTest::newRow("empty") << QString();
        QTest::newRow("one word") << QStringLiteral("pears");
        QTest::newRow("a space at the end") << QStringLiteral("pears and ");
        QTest::newRow("spaces") << QStringLiteral("  ");
        QTest::newRow("sentences") << QStringLiteral("Pears. And apples? Both! ");
        QTest::newRow("marks") << QStringLiteral("e\u0301 \U0001F468\u200D\U0001F469 \u202E\u0627");
    }
    void aScreenReaderMayAskForEveryPartOfTheSearchedTextAtEveryOffset()
    {
        QFETCH(const QString, searched);
        show();
        m_window->searchField().setText(searched);
        QCOMPARE(askForEveryPart(m_window->searchField()), searched.size());
    }

    void itDoesNotKeepTheProgramRunning() { QVERIFY(!m_window->testAttribute(Qt::WA_QuitOnClose)); }

    void theProgramsOwnBookOpens()
    {
        HelpWindow window;
        window.openHelpAnchor(QStringLiteral("TermsConditions"), m_bookName);
        QCOMPARE(window.browser().page(), QStringLiteral("12-terms.html"));
        QVERIFY(window.browser().toPlainText().contains(QStringLiteral("MIT")));
    }

private:
    /// Returns the length of the text that was asked for.
    static int askForEveryPart(QWidget &control)
    {
        QAccessibleInterface &accessible = *QAccessible::queryAccessibleInterface(&control);
        const QAccessibleTextInterface &text = *accessible.textInterface();
        const int length = text.characterCount();
        for (int type = QAccessible::CharBoundary; type <= QAccessible::NoBoundary; ++type) {
            for (int offset = -2; offset <= length + 2; ++offset) {
                askForParts(text, offset, static_cast<QAccessible::TextBoundaryType>(type));
            }
        }
        return length;
    }
    static void askForParts(const QAccessibleTextInterface &text, int offset, QAccessible::TextBoundaryType type)
    {
        int start = 0;
        int end = 0;
        const auto isWithin = [&](const QString &part) {
            return part.isEmpty() || (start >= 0 && start < end && text.text(start, end) == part);
        };
        QVERIFY(isWithin(text.textAtOffset(offset, type, &start, &end)));
        QVERIFY(isWithin(text.textBeforeOffset(offset, type, &start, &end)));
        QVERIFY(isWithin(text.textAfterOffset(offset, type, &start, &end)));
    }

    void show()
    {
        m_window->openHelpAnchor(QStringLiteral("First"), m_bookName);
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(m_window->windowHandle(), key, modifiers);
    }
    void click(int row)
    {
        QListWidget &list = m_window->topicList();
        const QPoint middle = list.visualItemRect(list.item(row)).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, middle);
    }

    const QString m_bookName = *bundleInfo(u"CFBundleHelpBookName");
    std::unique_ptr<HelpWindow> m_window;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::HelpWindowTest, QApplication)
#include "HelpWindowTest.moc"
