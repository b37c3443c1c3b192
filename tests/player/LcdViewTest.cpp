// SPDX-License-Identifier: MIT
#include "player/LcdView.h"

#include "player/ScrollingMarqueeView.h"
#include "skin/drawing/LCDTextColor.h"
#include "skin/views/ClassicAudioProgressSlider.h"
#include "skin/views/PlainButton.h"
#include "support/SkinDesk.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QLabel>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTest>

using namespace tunedeck;

class LcdViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void nothingOverlapsAtAnyWidth()
    {
        const SkinDesk desk;
        LcdView lcd(desk.environment);
        lcd.primaryTimeLabel().setText(QStringLiteral("10:00:00"));
        lcd.secondaryTimeLabel().setText(QStringLiteral("-10:00:00"));
        lcd.show();
        for (const int windowWidth : {350, 450, 550}) {
            lcd.resize(windowWidth - 138, 52);
            const int elapsedEnd = lcd.primaryTimeLabel().geometry().right();
            const QRect slider = lcd.trackProgressSlider().geometry();
            const QRect remaining = lcd.secondaryTimeLabel().geometry();
            const QRect info = lcd.infoButton().geometry();
            QVERIFY(elapsedEnd < slider.left());
            QVERIFY(slider.width() >= 50);
            QVERIFY(slider.right() < remaining.left());
            QVERIFY(remaining.right() < info.left());
            QVERIFY(info.right() < lcd.width());
            // They overlap only where the text has faded out.
            QVERIFY(lcd.trackInfoLabel().geometry().bottom() - slider.top() < 0.12 * lcd.trackInfoLabel().height());
        }
    }

    void theSliderGivesWayToAWiderTime()
    {
        const SkinDesk desk;
        LcdView lcd(desk.environment);
        lcd.resize(212, 52);
        lcd.show();
        lcd.primaryTimeLabel().setText(QStringLiteral("9:59"));
        QCoreApplication::processEvents();
        const int left = lcd.trackProgressSlider().x();
        lcd.primaryTimeLabel().setText(QStringLiteral("10:00"));
        QCoreApplication::processEvents();
        QCOMPARE(lcd.trackProgressSlider().x(), left);
        lcd.primaryTimeLabel().setText(QStringLiteral("1:00:00"));
        QTRY_VERIFY(lcd.trackProgressSlider().x() > left);
    }

    void itsTextsAreOfTheSameInk()
    {
        const SkinDesk desk;
        LcdView lcd(desk.environment);
        for (const QWidget *text :
            std::initializer_list<QWidget *>{&lcd.primaryTimeLabel(), &lcd.secondaryTimeLabel(), &lcd.isLiveLabel()}) {
            QCOMPARE(text->palette().color(QPalette::WindowText), lcdTextColor);
        }
        QCOMPARE(lcd.infoButton().palette().color(QPalette::ButtonText), lcdTextColor);
    }

    void aBoldItalicFontOfTheDesktopDoesNotMakeTheTimesBoldOrItalic()
    {
        const auto reset = qScopeGuard([before = QApplication::font()] { QApplication::setFont(before); });
        QFont boldItalic = QApplication::font();
        boldItalic.setBold(true);
        boldItalic.setItalic(true);
        QApplication::setFont(boldItalic);
        const SkinDesk desk;
        LcdView lcd(desk.environment);
        lcd.show();
        for (const QLabel *time : {&lcd.primaryTimeLabel(), &lcd.secondaryTimeLabel()}) {
            QCOMPARE(time->font().weight(), QFont::Normal);
            QCOMPARE(time->font().style(), QFont::StyleNormal);
        }
    }

    void theLongestTimeKeepsItsRoom()
    {
        const SkinDesk desk;
        LcdView lcd(desk.environment);
        lcd.resize(312, 52);
        lcd.setLongestTime(QStringLiteral("-1:10:00"));
        const QRect slider = lcd.trackProgressSlider().geometry();
        lcd.primaryTimeLabel().setText(QStringLiteral("1:09:59"));
        lcd.secondaryTimeLabel().setText(QStringLiteral("-1:09:59"));
        QCoreApplication::sendPostedEvents(&lcd, QEvent::LayoutRequest);
        QCOMPARE(lcd.trackProgressSlider().geometry(), slider);
    }
};

TUNEDECK_TEST(LcdViewTest, QApplication)
#include "LcdViewTest.moc"
