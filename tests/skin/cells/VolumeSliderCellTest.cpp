// SPDX-License-Identifier: MIT
#include "skin/cells/VolumeSliderCell.h"

#include "skin/Picture.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;

namespace {
Picture groove(double scale, bool dark)
{
    return {QSize(100, 20), scale,
        [dark](QPainter &painter) { VolumeSliderCell().drawBarInside(painter, QRectF(0, 8, 100, 4), dark); }};
}

Picture knob(const QRectF &rect, double scale)
{
    return {QSize(30, 30), scale, [&rect](QPainter &painter) { VolumeSliderCell().drawKnob(painter, rect); }};
}
} // namespace

class VolumeSliderCellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void theGrooveIsTallerThanItsBarAndNarrower()
    {
        const Picture picture = groove(1, false);
        QCOMPARE(picture.at(50, 14.5).alpha(), 0);
        QCOMPARE(picture.at(50, 5.5).alpha(), 0);
        QCOMPARE(picture.at(1.5, 10).alpha(), 0);
        QCOMPARE(picture.at(98.5, 10).alpha(), 0);
        QVERIFY(picture.at(2.5, 10).alpha() > 0);
        QVERIFY(picture.at(97.5, 10).alpha() > 0);
        QCOMPARE(picture.at(2.5, 13.5).alpha(), 0);
    }

    void itsBezelIsDarkAboveAndLitBelow()
    {
        QVERIFY(isNear(groove(1, false).at(50, 13.5), grey(16, 82), 2));
        QVERIFY(isNear(groove(1, false).at(50, 6.5), grey(239, 160), 2));
        QVERIFY(isNear(groove(2, false).at(50, 6.25), grey(247, 101), 2));
        QVERIFY(isNear(groove(1, true).at(50, 13.5), grey(16, 103), 2));
        QVERIFY(isNear(groove(1, true).at(50, 6.5), grey(239, 42), 3));
    }

    void itIsRecessed()
    {
        // The shadow hugs the upper edge; at the lower one there is only the shade: 5 % and 15 % of black.
        const Picture picture = groove(2, false);
        QVERIFY(picture.at(50, 12.75).alpha() > 140);
        QVERIFY(picture.at(50, 12.75).red() < 30);
        const double bezelAlpha = 0.3 + 0.1 * 0.84375;
        const int alpha = qRound(255 * (1 - (1 - bezelAlpha) * 0.95 * 0.85));
        QVERIFY(qAbs(picture.at(50, 7.25).alpha() - alpha) <= 2);
    }

    void theKnobStandsUprightOnItsShadow()
    {
        const Picture picture = knob(QRectF(8, 8, 13, 13), 2);
        QCOMPARE(picture.at(14.5, 14.5).alpha(), 255);
        QVERIFY(picture.at(14.5, 19.75).lightness() > picture.at(14.5, 9.25).lightness());
        QVERIFY(picture.at(14.5, 7.5).alpha() > 100);
        QVERIFY(picture.at(14.5, 22.5).alpha() < 5);
    }
};

TUNEDECK_TEST(VolumeSliderCellTest, QApplication)
#include "VolumeSliderCellTest.moc"
