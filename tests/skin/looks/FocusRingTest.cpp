// SPDX-License-Identifier: MIT
#include "skin/looks/FocusRing.h"

#include "skin/cells/MetalButtonCell.h"
#include "skin/views/MetalButton.h"
#include "skin/views/PlayerButton.h"
#include "support/SkinDesk.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QFocusEvent>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace tunedeck;

class FocusRingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        m_desk = std::make_unique<SkinDesk>();
        m_window = std::make_unique<QWidget>();
        m_window->resize(100, 60);
        m_button = new PlayerButton(m_desk->environment, m_window.get());
        m_button->setGeometry(10, 10, 35, 35);
        m_other = new PlayerButton(m_desk->environment, m_window.get());
        m_other->setGeometry(55, 10, 35, 35);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_other->setFocus(Qt::OtherFocusReason);
        m_plain = picture();
    }

    void cleanup()
    {
        m_window.reset();
        m_desk.reset();
    }

    void tabShowsWhereTheKeyboardIs()
    {
        for (const Qt::FocusReason reason : {Qt::TabFocusReason, Qt::BacktabFocusReason}) {
            m_button->setFocus(reason);
            const QImage ringed = picture();
            QVERIFY(ringed != m_plain);
            QCOMPARE(ringed.copy(m_button->geometry().adjusted(6, 6, -6, -6)),
                m_plain.copy(m_button->geometry().adjusted(6, 6, -6, -6)));
            QVERIFY(ringed.pixelColor(27, 8).blue() > ringed.pixelColor(27, 8).red());
            m_other->setFocus(Qt::OtherFocusReason);
            QCOMPARE(picture(), m_plain);
        }
    }

    void theRingLiesAroundWhatAControlDrawsNotAroundItsRectangle()
    {
        auto *metal = new MetalButton(m_desk->environment, m_window.get());
        metal->setGeometry(10, 15, 60, 30);
        metal->show();
        const QImage plain = picture();
        metal->setFocus(Qt::TabFocusReason);
        const QImage ringed = picture();
        const QRect rim = MetalButtonCell::rim(metal->geometry()).toRect();
        const QPoint above(rim.center().x(), rim.top() - 2);
        const QPoint corner(rim.left() - 1, rim.top() - 1);
        const QPoint atTheRectanglesEdge(metal->geometry().center().x(), metal->geometry().bottom());
        QVERIFY(ringed.pixelColor(above) != plain.pixelColor(above));
        QVERIFY(ringed.pixelColor(corner) != plain.pixelColor(corner));
        QCOMPARE(ringed.pixelColor(atTheRectanglesEdge), plain.pixelColor(atTheRectanglesEdge));
    }

    void theButtonItselfIsPaintedAsEver()
    {
        const QImage plain = m_plain.copy(m_button->geometry());
        m_button->setFocus(Qt::TabFocusReason);
        const QImage ringed = picture().copy(m_button->geometry());
        for (int row = 0; row < plain.height(); ++row) {
            QCOMPARE(ringed.pixel(17, row), plain.pixel(17, row));
            QCOMPARE(ringed.pixel(row, 17), plain.pixel(row, 17));
        }
    }

    void nothingElseDoes()
    {
        for (const Qt::FocusReason reason : {Qt::MouseFocusReason, Qt::ActiveWindowFocusReason, Qt::OtherFocusReason}) {
            m_button->setFocus(reason);
            QVERIFY(m_button->hasFocus());
            QCOMPARE(picture(), m_plain);
            m_other->setFocus(Qt::OtherFocusReason);
        }
    }

    void itComesBackWithTheWindow()
    {
        m_button->setFocus(Qt::TabFocusReason);
        const QImage ringed = picture();
        QFocusEvent leave(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(m_button, &leave);
        QCOMPARE(picture(), m_plain);
        QFocusEvent comeBack(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(m_button, &comeBack);
        QCOMPARE(picture(), ringed);
    }

    void itFollowsTheControl()
    {
        m_button->setFocus(Qt::TabFocusReason);
        m_button->move(10, 20);
        const QImage moved = picture();
        QVERIFY(moved.pixelColor(27, 18).blue() > moved.pixelColor(27, 18).red());
        QCOMPARE(moved.pixel(27, 8), m_plain.pixel(0, 0));
    }

    void itGoesWithTheControl()
    {
        m_button->setFocus(Qt::TabFocusReason);
        QVERIFY(m_window->childAt(27, 8) == nullptr);
        const qsizetype children = m_window->children().size();
        delete m_button;
        QCOMPARE(m_window->children().size(), children - 2);
    }

    void itHugsAControlThatIsLowerThanItsRectangle()
    {
        QWidget low(m_window.get());
        low.setGeometry(10, 10, 35, 35);
        low.setFocusPolicy(Qt::TabFocus);
        new FocusRing(
            low, m_desk->environment, {[](const QRectF &control) { return control.adjusted(0, 10, 0, -10); }});
        m_button->hide();
        low.show();
        const QImage plain = picture();
        low.setFocus(Qt::TabFocusReason);
        QVERIFY(picture().pixel(27, 18) != plain.pixel(27, 18));
        QVERIFY(picture().pixel(27, 36) != plain.pixel(27, 36));
        QCOMPARE(picture().pixel(27, 8), plain.pixel(27, 8));
    }

    void aControlOnItsOwnHasNone()
    {
        PlayerButton alone(m_desk->environment);
        QFocusEvent tab(QEvent::FocusIn, Qt::TabFocusReason);
        QCoreApplication::sendEvent(&alone, &tab);
        QVERIFY(alone.findChildren<QWidget *>().isEmpty());
    }

private:
    [[nodiscard]] QImage picture() { return m_window->grab().toImage(); }

    std::unique_ptr<SkinDesk> m_desk;
    std::unique_ptr<QWidget> m_window;
    PlayerButton *m_button = nullptr;
    PlayerButton *m_other = nullptr;
    QImage m_plain;
};

TUNEDECK_TEST(FocusRingTest, QApplication)
#include "FocusRingTest.moc"
