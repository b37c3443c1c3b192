// SPDX-License-Identifier: MIT
#include "skin/views/WindowControlButton.h"

#include "skin/PaintCounter.h"
#include "skin/Picture.h"
#include "support/SkinDesk.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainterPath>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace tunedeck;

class WindowControlButtonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        m_desk = std::make_unique<SkinDesk>();
        m_button = std::make_unique<WindowControlButton>(m_desk->environment);
        m_button->resize(14, 14);
    }

    void cleanup()
    {
        m_button.reset();
        m_desk.reset();
    }

    void aNewButtonClosesAndIsNotHoveredOver()
    {
        QCOMPARE(m_button->controlStyle(), WindowControlButtonStyle::close);
        QVERIFY(!m_button->mouseHovering());
    }

    void onlyANewStyleIsPainted()
    {
        PaintCounter paints(*m_button);
        m_button->setControlStyle(WindowControlButtonStyle::close);
        QCOMPARE(paints.takeCount(), 0);
        m_button->setControlStyle(WindowControlButtonStyle::maximize);
        QCOMPARE(paints.takeCount(), 1);
        QCOMPARE(m_button->controlStyle(), WindowControlButtonStyle::maximize);
    }

    void onlyAChangeOfHoveringIsPainted()
    {
        PaintCounter paints(*m_button);
        m_button->setMouseHovering(false);
        QCOMPARE(paints.takeCount(), 0);
        m_button->setMouseHovering(true);
        QCOMPARE(paints.takeCount(), 1);
        QVERIFY(m_button->mouseHovering());
    }

    void aButtonPressedByTheKeyboardShowsNoSymbol()
    {
        const Picture rest(*m_button);
        m_button->setDown(true);
        const Picture pressed(*m_button);
        QVERIFY(pressed != rest);
        QVERIFY(isNear(pressed.at(7, 7), rest.at(7, 7), 4));
        m_button->setMouseHovering(true);
        QVERIFY(Picture(*m_button).at(7, 7).green() < rest.at(7, 7).green() - 50);
    }

    void aPressOutsideItsHitTestAreaIsDropped()
    {
        QVERIFY(!m_button->customHitTestArea());
        QPainterPath leftHalf;
        leftHalf.addRect(0, 0, 7, 14);
        m_button->setCustomHitTestArea(leftHalf);
        QCOMPARE(m_button->customHitTestArea(), leftHalf);
        QSignalSpy clicked(m_button.get(), &WindowControlButton::clicked);
        QMouseEvent press(
            QEvent::MouseButtonPress, QPointF(10, 7), QPointF(10, 7), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_button.get(), &press);
        QVERIFY(press.isAccepted());
        QVERIFY(!m_button->isDown());
        QTest::mouseRelease(m_button.get(), Qt::LeftButton, {}, QPoint(10, 7));
        QCOMPARE(clicked.count(), 0);
        QTest::mousePress(m_button.get(), Qt::LeftButton, {}, QPoint(3, 7));
        QVERIFY(m_button->isDown());
        QTest::mouseRelease(m_button.get(), Qt::LeftButton, {}, QPoint(10, 7));
        QCOMPARE(clicked.count(), 1);
        m_button->setCustomHitTestArea(std::nullopt);
        QTest::mouseClick(m_button.get(), Qt::LeftButton, {}, QPoint(10, 7));
        QCOMPARE(clicked.count(), 2);
    }

    void itsCornersAreClickable()
    {
        QSignalSpy clicked(m_button.get(), &WindowControlButton::clicked);
        for (const QPoint corner : {QPoint(0, 0), QPoint(13, 0), QPoint(0, 13), QPoint(13, 13)}) {
            QTest::mouseClick(m_button.get(), Qt::LeftButton, {}, corner);
        }
        QCOMPARE(clicked.count(), 4);
    }

    void aNewAccentIsPainted()
    {
        const QColor red = Picture(*m_button).at(1.5, 7.5);
        PaintCounter paints(*m_button);
        m_desk->setAccentColor(-1);
        QCOMPARE(paints.takeCount(), 1);
        const QColor graphite = Picture(*m_button).at(1.5, 7.5);
        QVERIFY(red.red() > red.blue() && graphite.red() < graphite.blue());
        m_desk->setAccentColor(2);
        QVERIFY(isNear(Picture(*m_button).at(1.5, 7.5), red, 0));
    }

    void aNewAppearanceIsPainted()
    {
        const QColor light = Picture(*m_button).at(7.5, 0.5);
        PaintCounter paints(*m_button);
        m_desk->setDark(true);
        QCOMPARE(paints.takeCount(), 1);
        QVERIFY(Picture(*m_button).at(7.5, 0.5).alpha() < light.alpha());
    }

private:
    std::unique_ptr<SkinDesk> m_desk;
    std::unique_ptr<WindowControlButton> m_button;
};

TUNEDECK_TEST(WindowControlButtonTest, QApplication)
#include "WindowControlButtonTest.moc"
