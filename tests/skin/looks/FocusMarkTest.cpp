// SPDX-License-Identifier: MIT
#include "skin/looks/FocusMark.h"

#include "skin/difference.h"
#include "skin/looks/FocusRing.h"
#include "skin/looks/MarkedControl.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QFocusEvent>
#include <QTest>

#include <memory>

using namespace tunedeck;

class FocusMarkTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        tunedeck::failOnWarning();
        m_window = std::make_unique<MarkedControl>();
        new FocusRing(m_window->control, m_window->desk.environment);
        QVERIFY(m_window->open(Qt::lightGray));
        m_plain = m_window->picture();
    }

    void cleanup() { m_window.reset(); }

    void aKeyShowsIt_data()
    {
        QTest::addColumn<Qt::FocusReason>("reason");
        QTest::newRow("Tab") << Qt::TabFocusReason;
        QTest::newRow("Shift+Tab") << Qt::BacktabFocusReason;
        QTest::newRow("the caption's letter") << Qt::ShortcutFocusReason;
    }

    void aKeyShowsIt()
    {
        QFETCH(const Qt::FocusReason, reason);
        control().setFocus(reason);
        const QRect mark = difference(m_plain, m_window->picture());
        QVERIFY(mark.contains(control().geometry()));
        m_window->other.setFocus(Qt::OtherFocusReason);
        QCOMPARE(m_window->picture(), m_plain);
    }

    void nothingElseDoes_data()
    {
        QTest::addColumn<Qt::FocusReason>("reason");
        QTest::newRow("a click") << Qt::MouseFocusReason;
        QTest::newRow("the window") << Qt::ActiveWindowFocusReason;
        QTest::newRow("the program") << Qt::OtherFocusReason;
    }

    void nothingElseDoes()
    {
        QFETCH(const Qt::FocusReason, reason);
        control().setFocus(reason);
        QVERIFY(control().hasFocus());
        QCOMPARE(m_window->picture(), m_plain);
    }

    void theControlItselfIsPaintedAsEver()
    {
        control().setFocus(Qt::TabFocusReason);
        // The ring is behind the control's corners, which are round.
        for (const QMargins &corners : {QMargins(13, 0, 13, 0), QMargins(0, 12, 0, 12)}) {
            const QRect inside = control().geometry().marginsRemoved(corners);
            QCOMPARE(m_window->picture().copy(inside), m_plain.copy(inside));
        }
    }

    void itGoesWithTheWindowOrAMenuAndComesBack_data()
    {
        QTest::addColumn<Qt::FocusReason>("reason");
        QTest::newRow("window") << Qt::ActiveWindowFocusReason;
        QTest::newRow("menu") << Qt::PopupFocusReason;
    }

    void itGoesWithTheWindowOrAMenuAndComesBack()
    {
        QFETCH(const Qt::FocusReason, reason);
        control().setFocus(Qt::TabFocusReason);
        const QImage marked = m_window->picture();
        QFocusEvent leave(QEvent::FocusOut, reason);
        QCoreApplication::sendEvent(&control(), &leave);
        QCOMPARE(m_window->picture(), m_plain);
        QFocusEvent comeBack(QEvent::FocusIn, reason);
        QCoreApplication::sendEvent(&control(), &comeBack);
        QCOMPARE(m_window->picture(), marked);
    }

    void itFollowsTheControl()
    {
        control().setFocus(Qt::TabFocusReason);
        const QRect mark = difference(m_plain, m_window->picture());
        control().move(control().pos() + QPoint(2, 5));
        QCOMPARE(difference(m_plain, m_window->picture()), mark.translated(2, 5));
    }

    void itTakesNoClicks()
    {
        control().setFocus(Qt::TabFocusReason);
        const QPoint beside = control().geometry().topLeft() - QPoint(2, -10);
        QVERIFY(m_window->picture().pixel(beside) != m_plain.pixel(beside));
        QVERIFY(m_window->childAt(beside) == nullptr);
    }

    void itGoesWithTheControl()
    {
        auto *guest = new QWidget(m_window.get());
        new FocusRing(*guest, m_window->desk.environment);
        guest->setGeometry(20, 15, 35, 25);
        guest->setFocusPolicy(Qt::TabFocus);
        guest->show();
        guest->setFocus(Qt::TabFocusReason);
        QVERIFY(m_window->picture() != m_plain);
        delete guest;
        QCOMPARE(m_window->picture(), m_plain);
    }

    void aControlOnItsOwnHasNone()
    {
        QWidget alone;
        new FocusRing(alone, m_window->desk.environment);
        QFocusEvent tab(QEvent::FocusIn, Qt::TabFocusReason);
        QCoreApplication::sendEvent(&alone, &tab);
        QVERIFY(alone.findChildren<QWidget *>().isEmpty());
    }

private:
    [[nodiscard]] QWidget &control() const { return m_window->control; }

    std::unique_ptr<MarkedControl> m_window;
    QImage m_plain;
};

TUNEDECK_TEST(FocusMarkTest, QApplication)
#include "FocusMarkTest.moc"
