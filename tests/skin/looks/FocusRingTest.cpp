// SPDX-License-Identifier: MIT
#include "skin/looks/FocusRing.h"

#include "skin/difference.h"
#include "skin/looks/MarkedControl.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QTest>

#include <array>

using namespace tunedeck;

class FocusRingTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { tunedeck::failOnWarning(); }

    void itIsThinAndAroundTheControl()
    {
        MarkedControl window;
        new FocusRing(window.control, window.desk.environment);
        QVERIFY(window.open(Qt::lightGray));
        const QImage plain = window.picture();
        window.control.setFocus(Qt::TabFocusReason);
        const QRect ring = difference(plain, window.picture());
        const QRect control = window.control.geometry();
        QVERIFY(control.adjusted(-4, -4, 4, 4).contains(ring));
        QVERIFY(ring.contains(control.adjusted(-2, -2, 2, 2)));
    }

    void itHugsWhatTheControlDraws()
    {
        MarkedControl window;
        new FocusRing(window.control, window.desk.environment,
            [](const QRectF &control) { return control.adjusted(0, 8, 0, -8); });
        QVERIFY(window.open(Qt::lightGray));
        const QImage plain = window.picture();
        window.control.setFocus(Qt::TabFocusReason);
        const QRect ring = difference(plain, window.picture());
        QVERIFY(window.control.geometry().adjusted(-4, 4, 4, -4).contains(ring));
    }

    void itsCornersAreThoseOfTheControl()
    {
        MarkedControl window;
        new FocusRing(window.control, window.desk.environment, {}, 2);
        QVERIFY(window.open(Qt::lightGray));
        const QImage plain = window.picture();
        window.control.setFocus(Qt::TabFocusReason);
        const QPoint corner = window.control.geometry().topLeft() - QPoint(1, 1);
        QVERIFY(window.picture().pixel(corner) != plain.pixel(corner));
    }

    void itIsSeenOnEveryGround_data() { addGrounds(); }

    void itIsSeenOnEveryGround()
    {
        QFETCH(const QColor, ground);
        QFETCH(const bool, graphite);
        MarkedControl window;
        if (graphite) {
            window.desk.setAccentColor(graphiteAccent);
        }
        new FocusRing(window.control, window.desk.environment);
        QVERIFY(window.open(ground));
        window.control.setFocus(Qt::TabFocusReason);
        const QImage above = window.picture().copy(35, 8, 5, 7);
        QVERIFY2(contrast(above) >= 3, qPrintable(QString::number(contrast(above))));
    }

    void atHighContrastItIsBlackInAWhiteRimFromThatMomentOn()
    {
        MarkedControl window;
        new FocusRing(window.control, window.desk.environment);
        QVERIFY(window.open(Qt::lightGray));
        window.control.setFocus(Qt::TabFocusReason);
        const auto colors = [&window] {
            const QImage picture = window.picture();
            const int x = window.control.geometry().center().x();
            const int top = window.control.geometry().top();
            return std::array{picture.pixelColor(x, top - 2), picture.pixelColor(x, top - 4)};
        };
        const auto before = colors();
        window.desk.setHighContrast(true);
        QCOMPARE(colors(), (std::array{QColor(Qt::black), QColor(Qt::white)}));
        window.desk.setHighContrast(false);
        QCOMPARE(colors(), before);
    }
};

TUNEDECK_TEST(FocusRingTest, QApplication)
#include "FocusRingTest.moc"
