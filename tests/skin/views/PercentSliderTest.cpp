// SPDX-License-Identifier: MIT
#include "skin/views/PercentSlider.h"

#include "skin/PaintCounter.h"
#include "support/MenuWindow.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <limits>

using namespace tunedeck;

namespace {
constexpr QSizeF knobSize(16, 16);
} // namespace

class PercentSliderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { tunedeck::failOnWarning(); }

    void aValueIsKeptToAHundredth()
    {
        PercentSlider slider(knobSize);
        slider.setDoubleValue(55.7);
        QCOMPARE(slider.doubleValue(), 55.7);
    }

    void whatLiesOutsideBecomesTheNearerEnd()
    {
        PercentSlider slider(knobSize);
        slider.setDoubleValue(1e300);
        QCOMPARE(slider.doubleValue(), 100.0);
        slider.setDoubleValue(-0.5);
        QCOMPARE(slider.doubleValue(), 0.0);
    }

    void aStepThatNobodyCouldSeeIsNotPainted()
    {
        PercentSlider slider(knobSize);
        slider.resize(116, 16);
        PaintCounter paints(slider);
        // A percent is a point of the way.
        slider.setDoubleValue(50);
        QCOMPARE(paints.takeCount(), 1);
        slider.setDoubleValue(50.1);
        QCOMPARE(paints.takeCount(), 0);
        QCOMPARE(slider.doubleValue(), 50.1);
        slider.setDoubleValue(50.6);
        QCOMPARE(paints.takeCount(), 1);
    }

    void aKnobThatGoesWhereItWasBeforeAResizeIsPainted()
    {
        PercentSlider slider(knobSize);
        slider.resize(116, 16);
        slider.setDoubleValue(50);
        PaintCounter paints(slider);
        slider.resize(216, 16);
        (void)paints.takeCount();
        // 50 points to the right, as before, of twice the way.
        slider.setDoubleValue(25);
        QCOMPARE(paints.takeCount(), 1);
    }

    void aSliderThatIsHiddenInADragLetsGo()
    {
        PercentSlider slider(knobSize);
        slider.resize(116, 16);
        slider.show();
        QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(8, 8));
        QVERIFY(slider.isSliderDown());
        slider.hide();
        slider.show();
        QVERIFY(!slider.isSliderDown());
    }

    void aSliderThatIsReleasedOnAMenuLetsGo()
    {
        auto *slider = new PercentSlider(knobSize);
        MenuWindow window(*slider);
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.press(Qt::LeftButton);
        window.press(Qt::RightButton);
        QVERIFY(window.isMenuOpen());
        QVERIFY(slider->isSliderDown());
        window.release(Qt::LeftButton);
        QVERIFY(!slider->isSliderDown());
    }

    void whatIsNotFiniteIsTheStart()
    {
        PercentSlider slider(knobSize);
        for (const double value : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
            slider.setDoubleValue(50);
            slider.setDoubleValue(value);
            QCOMPARE(slider.doubleValue(), 0.0);
        }
    }

    void onlyTheUserIsToldAsAnAdjustment()
    {
        PercentSlider slider(knobSize);
        slider.setStep(4);
        QSignalSpy adjusted(&slider, &PercentSlider::adjusted);
        slider.setDoubleValue(50);
        QCOMPARE(adjusted.count(), 0);
        QTest::keyClick(&slider, Qt::Key_Right);
        QCOMPARE(adjusted.count(), 1);
        QCOMPARE(adjusted.at(0).at(0).toDouble(), 54.0);
        QTest::keyClick(&slider, Qt::Key_PageUp);
        QCOMPARE(adjusted.at(1).at(0).toDouble(), 66.0);
    }

    void aPressBesideTheKnobBringsTheKnobThere()
    {
        PercentSlider slider(knobSize);
        slider.resize(200, 20);
        QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(100, 10));
        QCOMPARE(slider.doubleValue(), 50.0);
        QTest::mouseMove(&slider, QPoint(200, 10));
        QTest::mouseRelease(&slider, Qt::LeftButton, {}, QPoint(200, 10));
        QCOMPARE(slider.doubleValue(), 100.0);
    }

    void aPressOnTheKnobDoesNotMoveIt()
    {
        PercentSlider slider(knobSize);
        slider.resize(200, 20);
        slider.setDoubleValue(50);
        QSignalSpy adjusted(&slider, &PercentSlider::adjusted);
        QTest::mouseClick(&slider, Qt::LeftButton, {}, QPoint(102, 10));
        QCOMPARE(adjusted.count(), 0);
        QCOMPARE(slider.doubleValue(), 50.0);
    }

    void theKnobFollowsThePointerThatDragsIt()
    {
        PercentSlider slider(knobSize);
        slider.resize(200, 20);
        slider.setDoubleValue(50);
        QSignalSpy adjusted(&slider, &PercentSlider::adjusted);
        QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(102, 10));
        QTest::mouseMove(&slider, QPoint(120, 10));
        const double further = slider.doubleValue();
        QVERIFY(qAbs(further - (50 + 18 / 1.84)) < 1e-4);
        QTest::mouseMove(&slider, QPoint(120, 300));
        QCOMPARE(slider.doubleValue(), further);
        QCOMPARE(adjusted.count(), 1);
        QTest::mouseRelease(&slider, Qt::LeftButton, {}, QPoint(120, 10));
        QTest::mouseMove(&slider, QPoint(20, 10));
        QCOMPARE(slider.doubleValue(), further);
    }

    void aDragEndsAtTheEndsOfTheSlider()
    {
        PercentSlider slider(knobSize);
        slider.resize(200, 20);
        slider.setDoubleValue(50);
        QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(100, 10));
        QTest::mouseMove(&slider, QPoint(900, 10));
        QCOMPARE(slider.doubleValue(), 100.0);
        QTest::mouseMove(&slider, QPoint(-900, 10));
        QCOMPARE(slider.doubleValue(), 0.0);
    }

    void onlyTheLeftButtonDrags()
    {
        PercentSlider slider(knobSize);
        slider.resize(200, 20);
        QTest::mousePress(&slider, Qt::RightButton, {}, QPoint(100, 10));
        QTest::mouseMove(&slider, QPoint(150, 10));
        QCOMPARE(slider.doubleValue(), 0.0);
        QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(100, 10));
        QTest::mouseRelease(&slider, Qt::RightButton, {}, QPoint(100, 10));
        QVERIFY(slider.isSliderDown());
        QTest::mouseRelease(&slider, Qt::LeftButton, {}, QPoint(100, 10));
        QVERIFY(!slider.isSliderDown());
    }

    void aSliderNarrowerThanItsKnobStandsStill()
    {
        PercentSlider slider(knobSize);
        slider.resize(5, 20);
        QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(4, 10));
        QTest::mouseMove(&slider, QPoint(50, 10));
        QCOMPARE(slider.doubleValue(), 0.0);
    }

    void aSliderDisabledWhileItIsDraggedLetsGo()
    {
        PercentSlider slider(knobSize);
        slider.resize(200, 20);
        QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(100, 10));
        const double grasped = slider.doubleValue();
        slider.setEnabled(false);
        slider.setEnabled(true);
        QTest::mouseMove(&slider, QPoint(150, 10));
        QCOMPARE(slider.doubleValue(), grasped);
    }

    void aPressOnADisabledSliderDoesNotReachTheWindow()
    {
        PercentSlider slider(knobSize);
        slider.setEnabled(false);
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, QPointF(5, 5), QPointF(5, 5), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
            event.ignore();
            QCoreApplication::sendEvent(&slider, &event);
            QVERIFY(event.isAccepted());
        }
        QVERIFY(!slider.isSliderDown());
    }

    void theRightArrowMovesTheKnobToTheRightInEveryLanguage()
    {
        QWidget window;
        window.setLayoutDirection(Qt::RightToLeft);
        PercentSlider slider(knobSize, &window);
        slider.setStep(4);
        slider.setDoubleValue(50);
        QTest::keyClick(&slider, Qt::Key_Right);
        QCOMPARE(slider.doubleValue(), 54.0);
    }

    void theWheelIsLeftToWhatIsBelow()
    {
        PercentSlider slider(knobSize);
        slider.setDoubleValue(50);
        QWheelEvent wheel({5, 5}, {5, 5}, {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&slider, &wheel);
        QVERIFY(!wheel.isAccepted());
        QCOMPARE(slider.doubleValue(), 50.0);
    }
};

TUNEDECK_TEST(PercentSliderTest, QApplication)
#include "PercentSliderTest.moc"
