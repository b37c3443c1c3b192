// SPDX-License-Identifier: MIT
#include "skin/cells/ShadowViewCell.h"

#include "skin/Picture.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

namespace tunedeck {

namespace {
constexpr QSize size(200, 40);
constexpr QRectF frame(0, 0, 200, 40);

Picture drawn(double scale)
{
    return {size, scale, [](QPainter &painter) { ShadowViewCell().draw(painter, frame); }};
}

Picture shadowAlone(double scale)
{
    return {size, scale, [](QPainter &painter) { ShadowViewCell().drawShadow(painter, frame); }};
}
} // namespace

class ShadowViewCellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void theStripReachesBeyondBothSides() { QCOMPARE(ShadowViewCell::strip(frame), QRectF(-4, 15, 208, 15)); }

    void theStripIsBlack()
    {
        for (const double scale : {1.0, 2.0}) {
            const Picture picture = drawn(scale);
            for (const double x : {0.25, 100.25, 199.75}) {
                QCOMPARE(picture.at(x, 15.25), grey(0));
                QCOMPARE(picture.at(x, 29.75), grey(0));
            }
        }
    }

    void theShadowLiesFourPointsLowerAndIsSoft()
    {
        for (const Picture &picture : {drawn(1), shadowAlone(1)}) {
            QVERIFY(isNear(picture.at(100.5, 14.5), grey(0, 113)));
            QVERIFY(isNear(picture.at(100.5, 11.5), grey(0, 71)));
            QVERIFY(isNear(picture.at(100.5, 10.5), grey(0, 52)));
            QVERIFY(isNear(picture.at(100.5, 3.5), grey(0, 0)));
            QVERIFY(isNear(picture.at(100.5, 30.5), grey(0, 4)));
        }
    }

    void theShadowIsAsSoftAtScale2()
    {
        const Picture picture = drawn(2);
        QVERIFY(isNear(picture.at(100.5, 14.75), grey(0, 114)));
        QVERIFY(isNear(picture.at(100.5, 11.25), grey(0, 66)));
        QVERIFY(isNear(picture.at(100.5, 10.75), grey(0, 56)));
    }

    void theShadowHardlyFadesAtTheSides()
    {
        QVERIFY(isNear(drawn(1).at(0.5, 14.5), grey(0, 108)));
        QVERIFY(isNear(drawn(1).at(199.5, 14.5), grey(0, 108)));
    }

    void theShadowAloneLeavesTheStripOut()
    {
        for (const double scale : {1.0, 2.0}) {
            const Picture picture = shadowAlone(scale);
            for (const double y : {15.25, 22.25, 29.75}) {
                QCOMPARE(picture.at(100.25, y).alpha(), 0);
                QCOMPARE(picture.at(0.25, y).alpha(), 0);
            }
        }
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::ShadowViewCellTest, QApplication)
#include "ShadowViewCellTest.moc"
