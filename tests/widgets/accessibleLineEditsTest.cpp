// SPDX-License-Identifier: MIT
#include "widgets/accessibleLineEdits.h"

#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include <limits>
#include <memory>
#include <tuple>
#include <utility>

namespace tunedeck {

namespace {
/// The text, its start and its end.
using Part = std::tuple<QString, int, int>;
const Part nothing(QString(), -1, -1);
} // namespace

class accessibleLineEditsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnWarning();
        installAccessibleLineEdits();
        m_lineEdit = std::make_unique<QLineEdit>(QStringLiteral("Pears. And apples "));
    }
    void cleanup() { m_lineEdit.reset(); }

    void aWordReachesToTheNextWord()
    {
        QCOMPARE(at(0, QAccessible::WordBoundary), Part(QStringLiteral("Pears. "), 0, 7));
        QCOMPARE(at(7, QAccessible::WordBoundary), Part(QStringLiteral("And "), 7, 11));
        QCOMPARE(at(10, QAccessible::WordBoundary), Part(QStringLiteral("And "), 7, 11));
        QCOMPARE(before(11, QAccessible::WordBoundary), Part(QStringLiteral("And "), 7, 11));
        QCOMPARE(after(7, QAccessible::WordBoundary), Part(QStringLiteral("apples "), 11, 18));
    }

    void theEndOfTheTextIsInTheLastPart()
    {
        QCOMPARE(at(18, QAccessible::WordBoundary), Part(QStringLiteral("apples "), 11, 18));
        QCOMPARE(at(18, QAccessible::SentenceBoundary), Part(QStringLiteral("And apples "), 7, 18));
        QCOMPARE(at(18, QAccessible::CharBoundary), Part(QStringLiteral(" "), 17, 18));
        QCOMPARE(after(18, QAccessible::WordBoundary), nothing);
    }

    void aCharacterMayHaveSeveralCodes()
    {
        m_lineEdit->setText(QStringLiteral("e\u0301\U0001F600x"));
        QCOMPARE(at(1, QAccessible::CharBoundary), Part(QStringLiteral("e\u0301"), 0, 2));
        QCOMPARE(after(0, QAccessible::CharBoundary), Part(QStringLiteral("\U0001F600"), 2, 4));
        QCOMPARE(before(4, QAccessible::CharBoundary), Part(QStringLiteral("\U0001F600"), 2, 4));
    }

    void aLineAndAParagraphAreTheWholeText_data()
    {
        QTest::addColumn<QAccessible::TextBoundaryType>("type");
        QTest::newRow("line") << QAccessible::LineBoundary;
        QTest::newRow("paragraph") << QAccessible::ParagraphBoundary;
        QTest::newRow("whole") << QAccessible::NoBoundary;
    }
    void aLineAndAParagraphAreTheWholeText()
    {
        QFETCH(const QAccessible::TextBoundaryType, type);
        QCOMPARE(at(9, type), Part(QStringLiteral("Pears. And apples "), 0, 18));
        QCOMPARE(before(9, type), nothing);
        QCOMPARE(after(9, type), nothing);
    }

    void outsideTheTextIsNothing_data()
    {
        QTest::addColumn<int>("offset");
        QTest::newRow("before") << -1;
        QTest::newRow("after") << 19;
        QTest::newRow("least") << std::numeric_limits<int>::min();
        QTest::newRow("most") << std::numeric_limits<int>::max();
    }
    void outsideTheTextIsNothing()
    {
        QFETCH(const int, offset);
        for (const auto type : {QAccessible::CharBoundary, QAccessible::WordBoundary, QAccessible::LineBoundary}) {
            QCOMPARE(at(offset, type), nothing);
            QCOMPARE(before(offset, type), nothing);
            QCOMPARE(after(offset, type), nothing);
        }
        QVERIFY(accessible().characterRect(offset).isEmpty());
        accessible().setSelection(0, offset, 3);
        accessible().addSelection(0, offset);
        QCOMPARE(accessible().selectionCount(), offset < 0 ? 1 : 0);
        editable().insertText(offset, QStringLiteral("x"));
        editable().deleteText(offset, 3);
        QCOMPARE(m_lineEdit->text(), QStringLiteral("Pears. And apples "));
    }

    void anEmptyTextHasNoParts()
    {
        m_lineEdit->clear();
        QCOMPARE(at(0, QAccessible::WordBoundary), nothing);
        QCOMPARE(at(0, QAccessible::NoBoundary), nothing);
        QCOMPARE(accessible().characterCount(), 0);
    }

    void aPasswordIsNotReadOut()
    {
        m_lineEdit->setEchoMode(QLineEdit::Password);
        QCOMPARE(at(0, QAccessible::WordBoundary), nothing);
        QCOMPARE(accessible().characterCount(), 18);
        QCOMPARE(accessible().text(0, 5), m_lineEdit->displayText().first(5));
        QVERIFY(!accessible().text(0, 5).contains(u'P'));
        QVERIFY(interface().state().passwordEdit);
    }

    void theTextIsSelectedAndDeselected()
    {
        int start = -1;
        int end = -1;
        accessible().setSelection(0, 7, 10);
        QCOMPARE(m_lineEdit->selectedText(), QStringLiteral("And"));
        accessible().selection(0, &start, &end);
        QCOMPARE(std::pair(start, end), std::pair(7, 10));
        accessible().removeSelection(0);
        QCOMPARE(accessible().selectionCount(), 0);
        accessible().setCursorPosition(3);
        QCOMPARE(accessible().cursorPosition(), 3);
    }

    void theTextIsEdited()
    {
        editable().replaceText(0, 5, QStringLiteral("Plums"));
        editable().insertText(18, QStringLiteral("too"));
        editable().deleteText(5, 6);
        QCOMPARE(m_lineEdit->text(), QStringLiteral("Plums And apples too"));
        QCOMPARE(interface().text(QAccessible::Value), QStringLiteral("Plums And apples too"));
        interface().setText(QAccessible::Value, QStringLiteral("Figs"));
        QCOMPARE(m_lineEdit->text(), QStringLiteral("Figs"));
    }

    void aTextThatIsReadOnlyIsNotEdited()
    {
        m_lineEdit->setReadOnly(true);
        editable().deleteText(0, 5);
        QCOMPARE(m_lineEdit->text(), QStringLiteral("Pears. And apples "));
        QVERIFY(interface().state().readOnly);
        QVERIFY(!interface().state().editable);
    }

    void aCharacterIsWhereItIsSeen()
    {
        m_lineEdit->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_lineEdit.get()));
        for (int offset = 0; offset < accessible().characterCount(); ++offset) {
            const QRect place = accessible().characterRect(offset);
            QCOMPARE(accessible().offsetAtPoint(place.center() - QPoint(place.width() / 4 + 1, 0)), offset);
        }
    }

    void itIsNamedByItsPlaceholderUnlessItHasAName()
    {
        m_lineEdit->setPlaceholderText(QStringLiteral("Search"));
        QCOMPARE(interface().text(QAccessible::Name), QStringLiteral("Search"));
        m_lineEdit->setAccessibleName(QStringLiteral("Search the help"));
        QCOMPARE(interface().text(QAccessible::Name), QStringLiteral("Search the help"));
        QCOMPARE(interface().role(), QAccessible::EditableText);
    }

private:
    QAccessibleInterface &interface() { return *QAccessible::queryAccessibleInterface(m_lineEdit.get()); }
    QAccessibleTextInterface &accessible() { return *interface().textInterface(); }
    QAccessibleEditableTextInterface &editable() { return *interface().editableTextInterface(); }

    Part at(int offset, QAccessible::TextBoundaryType type)
    {
        int start = 0;
        int end = 0;
        const QString text = accessible().textAtOffset(offset, type, &start, &end);
        return {text, start, end};
    }
    Part before(int offset, QAccessible::TextBoundaryType type)
    {
        int start = 0;
        int end = 0;
        const QString text = accessible().textBeforeOffset(offset, type, &start, &end);
        return {text, start, end};
    }
    Part after(int offset, QAccessible::TextBoundaryType type)
    {
        int start = 0;
        int end = 0;
        const QString text = accessible().textAfterOffset(offset, type, &start, &end);
        return {text, start, end};
    }

    std::unique_ptr<QLineEdit> m_lineEdit;
};

} // namespace tunedeck

Q_DECLARE_METATYPE(QAccessible::TextBoundaryType)
TUNEDECK_TEST(tunedeck::accessibleLineEditsTest, QApplication)
#include "accessibleLineEditsTest.moc"
