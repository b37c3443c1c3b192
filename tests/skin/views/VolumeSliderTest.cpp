// SPDX-License-Identifier: MIT
#include "skin/views/VolumeSlider.h"

#include "skin/PaintCounter.h"
#include "skin/Picture.h"
#include "support/SkinDesk.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>
#include <QWheelEvent>

using namespace tunedeck;

namespace {
constexpr int notch = 120;

class RecordingDelegate : public VolumeSliderScrollEventDelegate {
public:
    void adjustVolume(double delta) override { told.append(QString::number(delta)); }
    void volumeSliderDidScroll() override { told.append(QStringLiteral("scrolled")); }

    QStringList told;
};

/// One report of a wheel or a touchpad.
struct Scroll {
    QPoint pixels = {};
    QPoint angle = {};
    Qt::ScrollPhase phase = Qt::NoScrollPhase;
    bool inverted = false;
    QPointF position = {34, 11};
    quint64 timestamp = 5000;
};

struct Volume {
    Volume()
    {
        slider.resize(68, 20);
        slider.setScrollEventsDelegate(&delegate);
    }

    bool scroll(const Scroll &scroll)
    {
        QWheelEvent event(scroll.position, scroll.position, scroll.pixels, scroll.angle, Qt::NoButton, Qt::NoModifier,
            scroll.phase, scroll.inverted);
        event.setTimestamp(scroll.timestamp);
        QCoreApplication::sendEvent(&slider, &event);
        return event.isAccepted();
    }

    RecordingDelegate delegate;
    SkinDesk desk;
    VolumeSlider slider{desk.environment};
};

QStringList steps(std::initializer_list<QString> deltas)
{
    QStringList told;
    for (const QString &delta : deltas) {
        told << delta << QStringLiteral("scrolled");
    }
    return told;
}
} // namespace

class VolumeSliderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void aNotchOfAWheelIsFourPercent_data()
    {
        QTest::addColumn<QPoint>("angle");
        QTest::addColumn<bool>("inverted");
        QTest::addColumn<QString>("step");
        QTest::newRow("up") << QPoint(0, notch) << false << QStringLiteral("4");
        QTest::newRow("down") << QPoint(0, -notch) << false << QStringLiteral("-4");
        QTest::newRow("natural, up") << QPoint(0, -notch) << true << QStringLiteral("4");
        QTest::newRow("natural, down") << QPoint(0, notch) << true << QStringLiteral("-4");
        QTest::newRow("tilted to the left") << QPoint(notch, 0) << false << QStringLiteral("4");
        QTest::newRow("tilted to the right") << QPoint(-notch, 0) << false << QStringLiteral("4");
        QTest::newRow("natural, tilted") << QPoint(-notch, 0) << true << QStringLiteral("-4");
        QTest::newRow("two notches at once") << QPoint(0, 2 * notch) << false << QStringLiteral("8");
    }

    void aNotchOfAWheelIsFourPercent()
    {
        QFETCH(const QPoint, angle);
        QFETCH(const bool, inverted);
        QFETCH(const QString, step);
        Volume volume;
        QVERIFY(volume.scroll({.angle = angle, .inverted = inverted}));
        QCOMPARE(volume.delegate.told, steps({step}));
    }

    void theEighthsOfAHighResolutionWheelAddUpToANotch()
    {
        Volume volume;
        for (int eighth = 0; eighth < 7; ++eighth) {
            volume.scroll({.angle = {0, notch / 8}});
        }
        QVERIFY(volume.delegate.told.isEmpty());
        volume.scroll({.angle = {0, notch / 8}});
        QCOMPARE(volume.delegate.told, steps({QStringLiteral("4")}));
        for (int eighth = 0; eighth < 16; ++eighth) {
            volume.scroll({.angle = {0, -notch / 8}});
        }
        QCOMPARE(volume.delegate.told, steps({QStringLiteral("4"), QStringLiteral("-4"), QStringLiteral("-4")}));
    }

    void aHighResolutionWheelThatTurnsBackBeginsANewNotch()
    {
        Volume volume;
        volume.scroll({.angle = {0, notch - 1}});
        volume.scroll({.angle = {0, -notch + 1}});
        volume.scroll({.angle = {0, notch - 1}});
        QVERIFY(volume.delegate.told.isEmpty());
    }

    void aPartOfANotchIsForgottenAfterAPause()
    {
        Volume volume;
        volume.scroll({.angle = {0, notch - 1}, .timestamp = 5000});
        volume.scroll({.angle = {0, notch - 1}, .timestamp = 6001});
        QVERIFY(volume.delegate.told.isEmpty());
        volume.scroll({.angle = {0, 1}, .timestamp = 7001});
        QCOMPARE(volume.delegate.told, steps({QStringLiteral("4")}));
    }

    void aTouchpadMovesTheVolumeAsItScrolls_data()
    {
        QTest::addColumn<QPoint>("pixels");
        QTest::addColumn<bool>("inverted");
        QTest::addColumn<QString>("step");
        QTest::newRow("up") << QPoint(0, 5) << false << QStringLiteral("2");
        QTest::newRow("natural") << QPoint(0, 5) << true << QStringLiteral("-2");
        QTest::newRow("sideways") << QPoint(10, 0) << false << QStringLiteral("4");
        QTest::newRow("natural, sideways") << QPoint(10, 0) << true << QStringLiteral("4");
        QTest::newRow("oblique") << QPoint(-2, 5) << false << QStringLiteral("1.2");
        QTest::newRow("natural, oblique") << QPoint(-2, 5) << true << QStringLiteral("-2.8");
    }

    void aTouchpadMovesTheVolumeAsItScrolls()
    {
        QFETCH(const QPoint, pixels);
        QFETCH(const bool, inverted);
        QFETCH(const QString, step);
        for (const Qt::ScrollPhase phase : {Qt::ScrollBegin, Qt::ScrollUpdate, Qt::ScrollMomentum}) {
            Volume volume;
            volume.scroll({.pixels = pixels, .angle = {0, notch}, .phase = phase, .inverted = inverted});
            QCOMPARE(volume.delegate.told, steps({step}));
        }
    }

    void aTouchpadWithoutPixelsIsReadByItsAngle()
    {
        Volume volume;
        volume.scroll({.angle = {0, 40}, .phase = Qt::ScrollUpdate});
        QCOMPARE(volume.delegate.told, steps({QStringLiteral("2")}));
    }

    void theEndOfAScrollIsNoStep()
    {
        Volume volume;
        volume.scroll({.phase = Qt::ScrollEnd});
        volume.scroll({});
        QVERIFY(volume.delegate.told.isEmpty());
    }

    void whatIsScrolledOverTheMarginsIsLost_data()
    {
        QTest::addColumn<QPointF>("position");
        QTest::addColumn<bool>("counts");
        // 68 by 20 points, less 3 and 4 at each side, 1 to the right and 2 down.
        QTest::newRow("left of it") << QPointF(3.9, 12) << false;
        QTest::newRow("left edge") << QPointF(4.1, 12) << true;
        QTest::newRow("right edge") << QPointF(65.9, 12) << true;
        QTest::newRow("right of it") << QPointF(66.1, 12) << false;
        QTest::newRow("above it") << QPointF(30, 5.9) << false;
        QTest::newRow("upper edge") << QPointF(30, 6.1) << true;
        QTest::newRow("lower edge") << QPointF(30, 17.9) << true;
        QTest::newRow("below it") << QPointF(30, 18.1) << false;
    }

    void whatIsScrolledOverTheMarginsIsLost()
    {
        QFETCH(const QPointF, position);
        QFETCH(const bool, counts);
        Volume volume;
        volume.scroll({.angle = {0, notch}, .position = position, .timestamp = 7});
        QCOMPARE(volume.delegate.told.isEmpty(), !counts);
        QCOMPARE(volume.slider.lastTimestamp(), counts ? 7U : 0U);
    }

    void aWheelWhoseDirectionIsTurnedIsLikeOneThatTurnsItItself_data()
    {
        QTest::addColumn<QPoint>("pixels");
        QTest::addColumn<QPoint>("angle");
        QTest::addColumn<bool>("inverted");
        QTest::addColumn<QString>("step");
        QTest::newRow("wheel") << QPoint() << QPoint(0, notch) << false << QStringLiteral("-4");
        QTest::newRow("wheel, down") << QPoint() << QPoint(0, -notch) << false << QStringLiteral("4");
        QTest::newRow("wheel that says so") << QPoint() << QPoint(0, notch) << true << QStringLiteral("-4");
        QTest::newRow("tilted") << QPoint() << QPoint(notch, 0) << false << QStringLiteral("-4");
        QTest::newRow("touchpad") << QPoint(0, 5) << QPoint() << false << QStringLiteral("-2");
        QTest::newRow("touchpad that says so") << QPoint(0, 5) << QPoint() << true << QStringLiteral("-2");
    }

    void aWheelWhoseDirectionIsTurnedIsLikeOneThatTurnsItItself()
    {
        QFETCH(const QPoint, pixels);
        QFETCH(const QPoint, angle);
        QFETCH(const bool, inverted);
        QFETCH(const QString, step);
        Volume volume;
        volume.desk.defaults.setBool(SettingsKey::wheelDirectionTurned, true);
        volume.scroll({.pixels = pixels,
            .angle = angle,
            .phase = pixels.isNull() ? Qt::NoScrollPhase : Qt::ScrollUpdate,
            .inverted = inverted});
        QCOMPARE(volume.delegate.told, steps({step}));
    }

    void theDirectionTurnsAtOnce()
    {
        Volume volume;
        volume.scroll({.angle = {0, notch}});
        volume.desk.defaults.setBool(SettingsKey::wheelDirectionTurned, true);
        volume.scroll({.angle = {0, notch}});
        volume.desk.defaults.setBool(SettingsKey::wheelDirectionTurned, false);
        volume.scroll({.angle = {0, notch}});
        QCOMPARE(volume.delegate.told, steps({QStringLiteral("4"), QStringLiteral("-4"), QStringLiteral("4")}));
    }

    void withoutADelegateNothingHappens()
    {
        Volume volume;
        volume.slider.setScrollEventsDelegate(nullptr);
        QVERIFY(volume.scroll({.angle = {0, notch}}));
        QVERIFY(volume.delegate.told.isEmpty());
        QCOMPARE(volume.slider.doubleValue(), 0.0);
    }

    void anArrowKeyIsFourPercent()
    {
        Volume volume;
        volume.slider.setDoubleValue(50);
        QTest::keyClick(&volume.slider, Qt::Key_Up);
        QCOMPARE(volume.slider.doubleValue(), 54.0);
        QTest::keyClick(&volume.slider, Qt::Key_Down);
        QTest::keyClick(&volume.slider, Qt::Key_Down);
        QCOMPARE(volume.slider.doubleValue(), 46.0);
    }

    void theKnobIsGraspedWhereItIsPainted()
    {
        const SkinDesk desk;
        VolumeSlider slider(desk.environment);
        slider.resize(114, 20);
        // 14 points wide, it has 100 to travel.
        slider.setDoubleValue(30);
        QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(42, 10));
        QCOMPARE(slider.doubleValue(), 30.0);
        QTest::mouseMove(&slider, QPoint(52, 10));
        QCOMPARE(slider.doubleValue(), 40.0);
        QTest::mouseRelease(&slider, Qt::LeftButton, {}, QPoint(52, 10));
        QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(55, 10));
        QCOMPARE(slider.doubleValue(), 48.0);
        QTest::mouseMove(&slider, QPoint(56, 10));
        QCOMPARE(slider.doubleValue(), 49.0);
    }

    void itIsPaintedWholeWhateverMovesItsKnob()
    {
        const SkinDesk desk;
        VolumeSlider slider(desk.environment);
        slider.resize(68, 20);
        PaintCounter paints(slider);
        slider.setDoubleValue(1);
        QCOMPARE(paints.takeCount(), 1);
        QVERIFY(paints.wasPaintedWhole());
        QTest::keyClick(&slider, Qt::Key_Right);
        QCOMPARE(paints.takeCount(), 1);
        QVERIFY(paints.wasPaintedWhole());
    }

    void aDisabledSliderIsFaint()
    {
        const SkinDesk desk;
        VolumeSlider slider(desk.environment);
        slider.resize(68, 20);
        slider.setDoubleValue(0);
        QCOMPARE(Picture(slider).at(7, 10).alpha(), 255);
        slider.setEnabled(false);
        QVERIFY(Picture(slider).at(7, 10).alpha() < 128);
        QVERIFY(Picture(slider).at(7, 10).alpha() > 50);
    }

    void itsGrooveFollowsTheAppearance()
    {
        SkinDesk desk;
        VolumeSlider slider(desk.environment);
        slider.resize(68, 20);
        const QColor light = Picture(slider).at(50, 6.5);
        PaintCounter paints(slider);
        desk.setDark(true);
        QCOMPARE(paints.takeCount(), 1);
        QVERIFY(Picture(slider).at(50, 6.5).alpha() < light.alpha() / 2);
    }
};

TUNEDECK_TEST(VolumeSliderTest, QApplication)
#include "VolumeSliderTest.moc"
