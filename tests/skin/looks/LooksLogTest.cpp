// SPDX-License-Identifier: MIT
#include "skin/looks/LooksLog.h"

#include "skin/SkinLogRecorder.h"
#include "skin/views/LCDBackgroundView.h"
#include "support/SkinDesk.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QPixmap>
#include <QTest>

namespace tunedeck {

class LooksLogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theLooksAreLoggedAtFirstAndOnAChangeOnly()
    {
        const SkinLogRecorder log(true);
        SkinDesk desk;
        LCDBackgroundView view(desk.environment);
        paint(view);
        QCOMPARE(SkinLogRecorder::lines, {QStringLiteral("light appearance, blue accent, scale 1")});
        paint(view);
        QCOMPARE(SkinLogRecorder::lines.size(), 1);
        desk.setDark(true);
        paint(view);
        QCOMPARE(SkinLogRecorder::lines.last(), QStringLiteral("dark appearance, blue accent, scale 1"));
        desk.setAccentColor(graphiteAccent);
        paint(view);
        QCOMPARE(SkinLogRecorder::lines.last(), QStringLiteral("dark appearance, graphite accent, scale 1"));
        QCOMPARE(SkinLogRecorder::lines.size(), 3);
    }

    void nothingIsLoggedUnlessTheLogIsSwitchedOn()
    {
        const SkinLogRecorder log(false);
        SkinDesk desk;
        LCDBackgroundView view(desk.environment);
        paint(view);
        QVERIFY(SkinLogRecorder::lines.isEmpty());
    }

private:
    static void paint(LCDBackgroundView &view) { view.grab(); }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::LooksLogTest, QApplication)
#include "LooksLogTest.moc"
