// SPDX-License-Identifier: MIT
#include "skin/cells/PinstripeCell.h"

#include "skin/Picture.h"
#include "skin/drawing/flipY.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

namespace tunedeck {

namespace {
constexpr int width = 20;
/// Higher than the stripes may fill, so that their end shows.
constexpr int pictureHeight = 20;
constexpr PinstripeState key{.isKeyWindow = true};

Picture drawn(double height, const PinstripeState &state, double scale = 1, const QRectF &dirty = {0, 0, width, 20})
{
    return {QSize(width, pictureHeight), scale, [&](QPainter &painter) {
                // The y of the stripes counts downwards.
                flipY(painter, pictureHeight);
                PinstripeCell().draw(painter, dirty, height, state);
            }};
}

/// The points from the top where stripes are.
QList<int> stripedRows(const Picture &picture)
{
    QList<int> rows;
    for (int row = 0; row < pictureHeight; ++row) {
        if (picture.at(width / 2.0, pictureHeight - row - 0.5).alpha() > 0) {
            rows.append(row);
        }
    }
    return rows;
}
} // namespace

class PinstripeCellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void stripesAre2PointsHighEvery4PointsFromTheTop()
    {
        for (const double scale : {1.0, 2.0}) {
            QCOMPARE(stripedRows(drawn(10, key, scale)), QList<int>({0, 1, 4, 5, 8, 9}));
            QCOMPARE(stripedRows(drawn(9, key, scale)), QList<int>({0, 1, 4, 5, 8, 9}));
            QCOMPARE(stripedRows(drawn(8, key, scale)), QList<int>({0, 1, 4, 5}));
        }
    }

    void atAFractionalScaleStripesAreEvenAndCrisp()
    {
        // Device pixels at scale 1.25, of which 20 points have 25.
        const Picture quarter = drawn(8, key, 1.25);
        for (int row = 0; row < 10; ++row) {
            QCOMPARE(quarter.at(10, pictureHeight - (row + 0.5) / 1.25).alpha(), row % 4 < 2 ? 5 : 0);
        }
        const Picture half = drawn(8, key, 1.5);
        for (int row = 0; row < 12; ++row) {
            QCOMPARE(half.at(10, pictureHeight - (row + 0.5) / 1.5).alpha(), row % 6 < 3 ? 5 : 0);
        }
    }

    void theFirstStripeIsAlwaysDrawn()
    {
        QCOMPARE(stripedRows(drawn(4, key)), QList<int>({0, 1}));
        QCOMPARE(stripedRows(drawn(1, key)), QList<int>({0, 1}));
    }

    void withoutHeightThereAreNoStripes()
    {
        QCOMPARE(stripedRows(drawn(0, key)), QList<int>());
        QCOMPARE(stripedRows(drawn(-1, key)), QList<int>());
    }

    void stripesAre2PercentOfBlackOrInTheDarkOfWhite()
    {
        QCOMPARE(drawn(8, key).at(10, 19.5), QColor(0, 0, 0, 5));
        QCOMPARE(drawn(8, {.isKeyWindow = true, .isDark = true}).at(10, 19.5), QColor(255, 255, 255, 5));
    }

    void thereAreNoneWhileNoWindowIsKeyOrWhereTheyAreUnwanted()
    {
        QCOMPARE(stripedRows(drawn(10, {.isKeyWindow = false})), QList<int>());
        QCOMPARE(stripedRows(drawn(10, {.isKeyWindow = true, .drawsPinstripes = false})), QList<int>());
    }

    void stripesBeginAtTheLeftEdgeAndAreAsWideAsWhatIsDirty()
    {
        const Picture picture = drawn(8, key, 1, {6, 0, 9, 20});
        QVERIFY(picture.at(0.5, 19.5).alpha() > 0);
        QVERIFY(picture.at(8.5, 19.5).alpha() > 0);
        QCOMPARE(picture.at(9.5, 19.5).alpha(), 0);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PinstripeCellTest, QApplication)
#include "PinstripeCellTest.moc"
