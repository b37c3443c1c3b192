// SPDX-License-Identifier: MIT
#include "skin/looks/FocusLamp.h"

#include "skin/difference.h"
#include "skin/looks/MarkedControl.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QTest>

using namespace tunedeck;

class FocusLampTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { tunedeck::failOnWarning(); }

    void itIsBelowTheMiddleOfWhatTheControlDraws()
    {
        MarkedControl window;
        new FocusLamp(window.control, window.desk.environment,
            [](const QRectF &control) { return control.adjusted(0, 0, 0, -3); });
        QVERIFY(window.open(Qt::lightGray));
        const QImage plain = window.picture();
        window.control.setFocus(Qt::TabFocusReason);
        const QRect lamp = difference(plain, window.picture());
        const QRect control = window.control.geometry();
        QCOMPARE(lamp.center().x(), control.center().x());
        QVERIFY(lamp.top() > control.bottom() - 3);
        QVERIFY(lamp.bottom() < control.bottom() + 6);
        QVERIFY(lamp.width() < 20);
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
        new FocusLamp(window.control, window.desk.environment);
        QVERIFY(window.open(ground));
        window.control.setFocus(Qt::TabFocusReason);
        const QImage lamp = window.picture().copy(34, 40, 7, 6);
        QVERIFY2(contrast(lamp) >= 3, qPrintable(QString::number(contrast(lamp))));
    }

    void itsLightIsTheAccent()
    {
        MarkedControl window;
        new FocusLamp(window.control, window.desk.environment);
        QVERIFY(window.open(Qt::lightGray));
        window.control.setFocus(Qt::TabFocusReason);
        const QColor blue = window.picture().pixelColor(33, 42);
        QVERIFY(blue.blue() > blue.red() + 60);
        window.desk.setAccentColor(graphiteAccent);
        const QColor grey = window.picture().pixelColor(33, 42);
        QVERIFY(grey.blue() < grey.red() + 60);
    }
};

TUNEDECK_TEST(FocusLampTest, QApplication)
#include "FocusLampTest.moc"
