// SPDX-License-Identifier: MIT
#include "skin/looks/FocusPointers.h"

#include "skin/difference.h"
#include "skin/drawing/LCDTextColor.h"
#include "skin/looks/MarkedControl.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QTest>

using namespace tunedeck;

class FocusPointersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { tunedeck::failOnWarning(); }

    void theyPointAtTheControlFromBothSides()
    {
        MarkedControl window;
        new FocusPointers(window.control, window.desk.environment);
        QVERIFY(window.open(QColor(0xe6, 0xec, 0xc8)));
        const QImage plain = window.picture();
        window.control.setFocus(Qt::TabFocusReason);
        const QImage marked = window.picture();
        const QRect control = window.control.geometry();
        const QRect pointers = difference(plain, marked);
        QVERIFY(pointers.left() >= control.left() - 5);
        QVERIFY(pointers.right() <= control.right() + 5);
        QCOMPARE(marked.copy(control), plain.copy(control));
        const int y = control.center().y();
        QCOMPARE(marked.pixelColor(control.left() - 5, y), lcdTextColor);
        QCOMPARE(marked.pixelColor(control.right() + 5, y), lcdTextColor);
        // They are wider at their bases.
        QVERIFY(marked.pixelColor(control.left() - 5, y - 2) != plain.pixelColor(control.left() - 5, y - 2));
        QCOMPARE(marked.pixelColor(control.left() - 2, y - 2), plain.pixelColor(control.left() - 2, y - 2));
        QCOMPARE(marked.pixelColor(control.right() + 2, y - 2), plain.pixelColor(control.right() + 2, y - 2));
    }
};

TUNEDECK_TEST(FocusPointersTest, QApplication)
#include "FocusPointersTest.moc"
