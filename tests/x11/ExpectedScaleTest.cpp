// SPDX-License-Identifier: MIT
#include "x11/expectedScale.h"
#include "support/registerTest.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QScopeGuard>
#include <QTest>

#include <optional>

namespace tunedeck {

class ExpectedScaleTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        for (const char *name : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI"}) {
            qunsetenv(name);
        }
    }

    void aServerThatSaysNothingHasScale1() { QCOMPARE(expectedScale(QByteArray()), 1.0); }

    void theDotsPerInchOfTheDesktopDecide()
    {
        QCOMPARE(expectedScale("Xcursor.size:\t24\nXft.dpi:\t144\nXft.hinting:\t1\n"), 1.5);
    }

    void dotsPerInchThatAreNoPositiveNumberDoNotCount_data()
    {
        QTest::addColumn<QByteArray>("resources");
        QTest::newRow("nothing") << QByteArray("Xft.dpi:\n");
        QTest::newRow("a word") << QByteArray("Xft.dpi:\tmany\n");
        QTest::newRow("zero") << QByteArray("Xft.dpi:\t0\n");
        QTest::newRow("negative") << QByteArray("Xft.dpi:\t-192\n");
        QTest::newRow("another name") << QByteArray("MyXft.dpi:\t192\n");
    }
    void dotsPerInchThatAreNoPositiveNumberDoNotCount()
    {
        QFETCH(const QByteArray, resources);
        QCOMPARE(expectedScale(resources), 1.0);
    }

    void theDotsPerInchOfFontsComeFirst()
    {
        qputenv("QT_FONT_DPI", "192");
        QCOMPARE(expectedScale("Xft.dpi:\t144\n"), 2.0);
    }

    void theLargestOfTheScreensFactorsReplacesTheDotsPerInch()
    {
        qputenv("QT_SCREEN_SCALE_FACTORS", "DP-1=1.25;HDMI-1=1.75;");
        QCOMPARE(expectedScale("Xft.dpi:\t192\n"), 1.75);
        qputenv("QT_SCREEN_SCALE_FACTORS", "3");
        QCOMPARE(expectedScale(QByteArray()), 3.0);
    }

    void theFactorOfAllScreensMultiplies()
    {
        qputenv("QT_SCALE_FACTOR", "2");
        QCOMPARE(expectedScale(QByteArray()), 2.0);
        QCOMPARE(expectedScale("Xft.dpi:\t144\n"), 3.0);
        qputenv("QT_SCREEN_SCALE_FACTORS", "1.5");
        QCOMPARE(expectedScale(QByteArray()), 3.0);
    }

    void withoutAServerThereIsNoConnection()
    {
        const std::optional<QByteArray> display =
            qEnvironmentVariableIsSet("DISPLAY") ? std::optional(qgetenv("DISPLAY")) : std::nullopt;
        const auto restore = qScopeGuard([&display] {
            if (display) {
                qputenv("DISPLAY", *display);
            } else {
                qunsetenv("DISPLAY");
            }
        });
        qputenv("DISPLAY", "no display");
        QVERIFY(!connectToX11Early());
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::ExpectedScaleTest, QCoreApplication)
#include "ExpectedScaleTest.moc"
