// SPDX-License-Identifier: MIT
#include "skin/views/AuxiliaryButton.h"

#include "skin/Picture.h"
#include "skin/drawing/flipY.h"
#include "support/SkinDesk.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

namespace tunedeck {

namespace {
constexpr QSize size(12, 11);
const QColor lightOlive(127, 129, 119);
const QColor darkOlive(102, 103, 91);

Picture drawn(const AuxiliaryButtonState &state, double scale = 1)
{
    return {size, scale, [state](QPainter &painter) {
                flipY(painter, size.height());
                AuxiliaryButtonCell().draw(painter, QRectF({}, size), state);
            }};
}
} // namespace

class AuxiliaryButtonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void itsUpperHalfIsTheLighterWithAHardEdgeBetween()
    {
        for (const double scale : {1.0, 2.0}) {
            const Picture picture = drawn({}, scale);
            QCOMPARE(picture.at(2.25, 6.25), lightOlive);
            QCOMPARE(picture.at(9.75, 7.75), lightOlive);
            QCOMPARE(picture.at(2.25, 4.75), darkOlive);
            QCOMPARE(picture.at(9.75, 3.25), darkOlive);
        }
        QCOMPARE(drawn({}, 2).at(2.25, 5.75), lightOlive);
        QCOMPARE(drawn({}, 2).at(2.25, 5.25), darkOlive);
    }

    void pressedItIsDarkAllOver()
    {
        for (const double scale : {1.0, 2.0}) {
            const Picture picture = drawn({.isPressed = true}, scale);
            QCOMPARE(picture.at(2.25, 6.25), darkOlive);
            QCOMPARE(picture.at(2.25, 4.75), darkOlive);
        }
    }

    void itIsOval()
    {
        const Picture picture = drawn({});
        for (const double x : {0.5, 11.5}) {
            QVERIFY(picture.at(x, 0.5).alpha() < 30);
            QVERIFY(picture.at(x, 10.5).alpha() < 30);
        }
        QCOMPARE(picture.at(6, 9.5).alpha(), 255);
    }

    void aTrianglePointsRight()
    {
        for (const bool isPressed : {false, true}) {
            const Picture picture = drawn({.isPressed = isPressed}, 2);
            const QColor ivory(233, 234, 209);
            QCOMPARE(picture.at(4.25, 7.25), ivory);
            QCOMPARE(picture.at(4.25, 3.75), ivory);
            QVERIFY(isNear(picture.at(7.25, 5.25), ivory));
            QVERIFY(picture.at(3.75, 5.25) != ivory);
            QVERIFY(picture.at(8.75, 5.25) != ivory);
            QVERIFY(picture.at(7.25, 7.25) != ivory);
        }
    }

    void theViewShowsWhetherItIsPressed()
    {
        const SkinDesk desk;
        AuxiliaryButton button(desk.environment);
        button.resize(size);
        QCOMPARE(Picture(button), drawn({}));
        button.setDown(true);
        QCOMPARE(Picture(button), drawn({.isPressed = true}));
    }

    void aClickCounts()
    {
        const SkinDesk desk;
        AuxiliaryButton button(desk.environment);
        button.resize(size);
        QSignalSpy clicked(&button, &AuxiliaryButton::clicked);
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(clicked.count(), 1);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::AuxiliaryButtonTest, QApplication)
#include "AuxiliaryButtonTest.moc"
