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
#include <QPaintEvent>
#include <QRegion>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTest>

using namespace tunedeck;

namespace {
/// The regions that a view and all that is in it repaint.
class PaintedRegion : public QObject {
public:
    explicit PaintedRegion(QWidget &view)
        : m_view(view)
    {
        view.installEventFilter(this);
        const auto parts = view.findChildren<QWidget *>();
        for (QWidget *part : parts) {
            part->installEventFilter(this);
        }
    }

    [[nodiscard]] QRegion region() const { return m_region; }
    void forget() { m_region = {}; }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            const auto &part = *static_cast<QWidget *>(watched);
            const QRegion &region = static_cast<QPaintEvent *>(event)->region();
            m_region += region.translated(part.mapTo(&m_view, QPoint()));
        }
        return false;
    }

private:
    QWidget &m_view;
    QRegion m_region;
};
} // namespace

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

    void atHighContrastItsInkIsBlackFromThatMomentOn()
    {
        SkinDesk desk;
        const LcdView lcd(desk.environment);
        QCOMPARE(lcd.palette().color(QPalette::WindowText), lcdTextColor);
        desk.setHighContrast(true);
        QCOMPARE(lcd.palette().color(QPalette::WindowText), QColor(Qt::black));
        QCOMPARE(lcd.palette().color(QPalette::ButtonText), QColor(Qt::black));
        desk.setHighContrast(false);
        QCOMPARE(lcd.palette().color(QPalette::WindowText), lcdTextColor);
    }

    void theTracksInkIsBlackInBothAppearancesAtHighContrast()
    {
        SkinDesk desk;
        LcdView lcd(desk.environment);
        lcd.resize(300, 52);
        lcd.trackInfoLabel().setDisplayStrings({QString(5, QChar(0x2588))});
        lcd.show();
        const auto ink = [&lcd] {
            return lcd.trackInfoLabel().grab().toImage().pixelColor(lcd.trackInfoLabel().rect().center());
        };
        for (const bool isDark : {false, true}) {
            lcd.trackInfoLabel().setDark(isDark);
            const QColor before = ink();
            QVERIFY(before != QColor(Qt::black));
            desk.setHighContrast(true);
            QCOMPARE(ink(), QColor(Qt::black));
            desk.setHighContrast(false);
            QCOMPARE(ink(), before);
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

    void aNewTimePaintsTheWholeRowAtOnce()
    {
        const SkinDesk desk;
        LcdView lcd(desk.environment);
        lcd.resize(312, 52);
        lcd.setPrimaryTime(QStringLiteral("0:01"));
        lcd.setSecondaryTime(QStringLiteral("-2:01"));
        lcd.show();
        QVERIFY(QTest::qWaitForWindowExposed(&lcd));
        QCoreApplication::processEvents();
        PaintedRegion painted(lcd);
        lcd.setPrimaryTime(QStringLiteral("0:02"));
        lcd.setSecondaryTime(QStringLiteral("-2:00"));
        lcd.trackProgressSlider().setDoubleValue(50);
        QTRY_COMPARE(painted.region(), QRegion(0, 30, 312, 12));
        painted.forget();
        lcd.setPrimaryTime(QStringLiteral("0:02"));
        QCoreApplication::processEvents();
        QCOMPARE(painted.region(), QRegion());
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
