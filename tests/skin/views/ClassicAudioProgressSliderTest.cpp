// SPDX-License-Identifier: MIT
#include "skin/views/ClassicAudioProgressSlider.h"

#include "skin/PaintCounter.h"
#include "skin/Picture.h"
#include "support/SkinDesk.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace tunedeck;

class ClassicAudioProgressSliderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        m_desk = std::make_unique<SkinDesk>();
        m_slider = std::make_unique<ClassicAudioProgressSlider>(m_desk->environment);
        m_slider->resize(217, 20);
    }

    void cleanup()
    {
        m_slider.reset();
        m_desk.reset();
    }

    void theKnobIsGraspedWhereItIsPainted()
    {
        // 17 points wide, it has 200 to travel.
        m_slider->setDoubleValue(50);
        QCOMPARE(Picture(*m_slider).at(108.5, 10).alpha(), 255);
        QTest::mousePress(m_slider.get(), Qt::LeftButton, {}, QPoint(101, 10));
        QCOMPARE(m_slider->doubleValue(), 50.0);
        QTest::mouseMove(m_slider.get(), QPoint(121, 10));
        QCOMPARE(m_slider->doubleValue(), 60.0);
        QTest::mouseRelease(m_slider.get(), Qt::LeftButton, {}, QPoint(121, 10));
        QTest::mousePress(m_slider.get(), Qt::LeftButton, {}, QPoint(30, 10));
        QCOMPARE(m_slider->doubleValue(), 10.75);
    }

    void itShowsItsValue()
    {
        m_slider->setDoubleValue(100);
        QVERIFY(isNear(Picture(*m_slider).at(208.5, 10), QColor(53, 57, 42)));
        QVERIFY(Picture(*m_slider).at(150, 10).alpha() > 0);
        m_slider->setDoubleValue(0);
        QVERIFY(isNear(Picture(*m_slider).at(8.5, 10), QColor(53, 57, 42)));
        QCOMPARE(Picture(*m_slider).at(150, 10).alpha(), 0);
    }

    void aDisabledSliderIsAnEmptyFrame()
    {
        m_slider->setDoubleValue(50);
        m_slider->setEnabled(false);
        const Picture picture(*m_slider);
        QCOMPARE(picture.at(108.5, 10).alpha(), 0);
        QCOMPARE(picture.at(50, 10).alpha(), 0);
        QVERIFY(isNear(picture.at(50, 14.5), QColor(53, 57, 42)));
    }

    void itIsPaintedWholeWhateverMovesItsKnob()
    {
        PaintCounter paints(*m_slider);
        m_slider->setDoubleValue(0.5);
        QCOMPARE(paints.takeCount(), 1);
        QVERIFY(paints.wasPaintedWhole());
        m_slider->setEnabled(false);
        QCOMPARE(paints.takeCount(), 1);
        QVERIFY(paints.wasPaintedWhole());
    }

private:
    std::unique_ptr<SkinDesk> m_desk;
    std::unique_ptr<ClassicAudioProgressSlider> m_slider;
};

TUNEDECK_TEST(ClassicAudioProgressSliderTest, QApplication)
#include "ClassicAudioProgressSliderTest.moc"
