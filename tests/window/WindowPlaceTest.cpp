// SPDX-License-Identifier: MIT
#include "window/WindowPlace.h"

#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QTest>

using namespace tunedeck;

namespace {
const ScreenArea laptop{QStringLiteral("eDP-1"), {0, 0, 1280, 720}, {0, 30, 1280, 690}};
const ScreenArea desk{QStringLiteral("HDMI 1"), {1280, 0, 1920, 1080}, {1280, 0, 1920, 1040}};
const ScreenArea wall{QStringLiteral("DP-1"), {3200, 0, 1280, 720}, {3200, 0, 1280, 720}};

constexpr QSize player(450, 64);

WindowPlace placeOn(const ScreenArea &screen, QPoint topLeft)
{
    return {topLeft, screen.name, screen.geometry};
}
} // namespace

class WindowPlaceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void onTheSameScreensItIsTheSamePlace_data()
    {
        QTest::addColumn<QPoint>("place");
        QTest::newRow("in the middle") << QPoint(1700, 400);
        QTest::newRow("in the corner") << QPoint(2750, 976);
        QTest::newRow("half beyond the left") << QPoint(1080, 400);
        QTest::newRow("half beyond the right") << QPoint(3100, 400);
        QTest::newRow("half behind the panel") << QPoint(1700, 1008);
        QTest::newRow("half beyond the top") << QPoint(1700, -32);
    }
    void onTheSameScreensItIsTheSamePlace()
    {
        QFETCH(const QPoint, place);
        QCOMPARE(placeOn(desk, place).topLeftOn({laptop, desk}, player), place);
    }

    void aWindowThatNobodyCouldGrabComesBackInside_data()
    {
        QTest::addColumn<QPoint>("place");
        QTest::addColumn<QPoint>("expected");
        QTest::newRow("too far left") << QPoint(929, 400) << QPoint(1280, 400);
        QTest::newRow("too far right") << QPoint(3101, 400) << QPoint(2750, 400);
        QTest::newRow("behind the panel") << QPoint(1700, 1009) << QPoint(1700, 976);
        QTest::newRow("too far up") << QPoint(1700, -33) << QPoint(1700, 0);
        QTest::newRow("far away") << QPoint(-90'000, 90'000) << QPoint(1280, 976);
    }
    void aWindowThatNobodyCouldGrabComesBackInside()
    {
        QFETCH(const QPoint, place);
        QTEST(placeOn(desk, place).topLeftOn({laptop, desk}, player), "expected");
    }

    void itStaysOnItsScreenWhereverThatIsNow()
    {
        const WindowPlace place = placeOn(laptop, {100, 200});
        const ScreenArea moved{laptop.name, {1920, 360, 1280, 720}, {1920, 390, 1280, 690}};
        const ScreenArea desktop{desk.name, {0, 0, 1920, 1080}, {0, 0, 1920, 1040}};
        QCOMPARE(place.topLeftOn({desktop, moved}, player), QPoint(2020, 560));
    }

    void onAScreenThatIsSmallerNowItIsInside()
    {
        const ScreenArea smaller{desk.name, {1280, 0, 1280, 720}, {1280, 0, 1280, 680}};
        QCOMPARE(placeOn(desk, {2300, 300}).topLeftOn({laptop, smaller}, player), QPoint(2110, 300));
        QCOMPARE(placeOn(desk, {1400, 640}).topLeftOn({laptop, smaller}, player), QPoint(1400, 616));
        QCOMPARE(placeOn(desk, {1400, 300}).topLeftOn({laptop, smaller}, player), QPoint(1400, 300));
    }

    void whereTheScreenIsGoneItGoesToTheNearest()
    {
        const WindowPlace place = placeOn(wall, {3300, 700});
        QCOMPARE(place.topLeftOn({laptop, desk}, player), QPoint(2750, 700));
        QCOMPARE(place.topLeftOn({laptop}, player), QPoint(830, 656));
        const ScreenArea below{QStringLiteral("VGA"), {3200, 720, 1280, 720}, {3200, 750, 1280, 690}};
        QCOMPARE(place.topLeftOn({laptop, desk, below}, player), QPoint(3300, 750));
    }

    void onAScreenThatIsTooSmallItBeginsWhereThatBegins()
    {
        const ScreenArea tiny{QStringLiteral("tiny"), {10, 20, 300, 40}, {10, 25, 300, 35}};
        QCOMPARE(placeOn(wall, {3300, 700}).topLeftOn({tiny}, player), QPoint(10, 25));
    }

    void itsTextGivesItAgain_data()
    {
        QTest::addColumn<WindowPlace>("place");
        QTest::newRow("usual") << placeOn(laptop, {100, 200});
        QTest::newRow("negative") << WindowPlace{{-5, -6}, QStringLiteral("DP-1"), {-1920, -10, 1920, 1080}};
        QTest::newRow("name of several words") << placeOn(desk, {1300, 20});
        QTest::newRow("name like a format") << WindowPlace{{1, 2}, QStringLiteral("%1 %2"), {0, 0, 8, 9}};
        QTest::newRow("no name") << WindowPlace{{1, 2}, QString(), {0, 0, 8, 9}};
    }
    void itsTextGivesItAgain()
    {
        QFETCH(const WindowPlace, place);
        const auto again = WindowPlace::fromText(place.text());
        QVERIFY(again);
        QCOMPARE(again->topLeft, place.topLeft);
        QCOMPARE(again->screenName, place.screenName);
        QCOMPARE(again->screen, place.screen);
    }

    void aTextOfAnotherFormIsNoPlace_data()
    {
        QTest::addColumn<QString>("text");
        for (const char *text :
            {"", "true", "1 2", "1 2 3 4 5", "1 2 3 4 5 x DP-1", " 1 2 3 4 5 6", "1  2 3 4 5 6", "1.5 2 3 4 5 6 DP-1",
                "100001 2 3 4 5 6 DP-1", "1 -100001 3 4 5 6 DP-1", "1 2 99999999999999999999 4 5 6 DP-1"}) {
            QTest::newRow(text) << QString::fromLatin1(text);
        }
    }
    void aTextOfAnotherFormIsNoPlace()
    {
        QFETCH(const QString, text);
        QVERIFY(!WindowPlace::fromText(text));
    }
};

Q_DECLARE_METATYPE(tunedeck::WindowPlace)

TUNEDECK_TEST(WindowPlaceTest, QCoreApplication)
#include "WindowPlaceTest.moc"
