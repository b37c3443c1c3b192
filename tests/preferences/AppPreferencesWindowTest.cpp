// SPDX-License-Identifier: MIT
#include "preferences/AppPreferencesWindow.h"

#include "PreferencesDesk.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QScreen>

using namespace tunedeck;

namespace {
const QString key = QStringLiteral("PreferencesWindow");

QRect screenArea()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}
} // namespace

class AppPreferencesWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void itKeepsNoProgramRunning()
    {
        PreferencesDesk desk;
        const AppPreferencesWindow window(desk.defaults);
        QVERIFY(!window.testAttribute(Qt::WA_QuitOnClose));
    }

    void escapeClosesIt()
    {
        PreferencesDesk desk;
        AppPreferencesWindow window(desk.defaults);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&window, Qt::Key_A);
        QVERIFY(window.isVisible());
        QTest::keyClick(&window, Qt::Key_Escape);
        QVERIFY(!window.isVisible());
    }

    void theFrameIsSavedOnEveryClose()
    {
        PreferencesDesk desk;
        AppPreferencesWindow window(desk.defaults);
        window.resize(450, 200);
        window.show();
        for (const QPoint place : {QPoint(30, 40), QPoint(70, 20)}) {
            window.move(place);
            window.cancelOperation();
            // The frames of the offscreen platform are 2 points wide.
            QCOMPARE(desk.defaults.stringForKey(key), QStringLiteral("%1 %2 454 204").arg(place.x()).arg(place.y()));
            window.show();
        }
    }

    void theFrameIsSavedWhenTheProgramQuitsWithTheWindowOpen()
    {
        PreferencesDesk desk;
        AppPreferencesWindow window(desk.defaults);
        window.resize(450, 200);
        window.show();
        window.move(30, 40);
        QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
        QApplication::exec();
        QCOMPARE(desk.defaults.stringForKey(key), QStringLiteral("30 40 454 204"));
    }

    void aWindowThatWasNeverShownSavesNoFrame()
    {
        PreferencesDesk desk;
        AppPreferencesWindow window(desk.defaults);
        window.close();
        QCOMPARE(desk.defaults.stringForKey(key), QString());
        QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
        QApplication::exec();
        QCOMPARE(desk.defaults.stringForKey(key), QString());
    }

    void itOpensWhereItWasClosed()
    {
        PreferencesDesk desk;
        {
            AppPreferencesWindow window(desk.defaults);
            window.resize(450, 200);
            window.show();
            window.move(30, 40);
            window.close();
            window.move(0, 0);
            window.show();
            QTRY_COMPARE(window.pos(), QPoint(30, 40));
            window.close();
        }
        AppPreferencesWindow next(desk.defaults);
        next.resize(450, 200);
        next.show();
        QCOMPARE(next.pos(), QPoint(30, 40));
    }

    void itOpensInTheMiddleTheFirstTime()
    {
        PreferencesDesk desk;
        AppPreferencesWindow window(desk.defaults);
        window.resize(450, 200);
        window.show();
        const QPoint off = window.geometry().center() - screenArea().center();
        QVERIFY(std::abs(off.x()) <= 1);
        // Half of a title bar that the window manager may add.
        QVERIFY(std::abs(off.y()) <= 20);
    }

    void aFrameThatIsNotWhollyOnTheScreenIsMovedOntoIt_data()
    {
        QTest::addColumn<QString>("frame");
        QTest::newRow("left") << QStringLiteral("-440 40 450 200");
        QTest::newRow("above") << QStringLiteral("30 -190 450 200");
        QTest::newRow("right") << QStringLiteral("790 40 450 200");
        QTest::newRow("below") << QStringLiteral("30 790 450 200");
        QTest::newRow("corner") << QStringLiteral("799 799 450 200");
        QTest::newRow("larger than the screen") << QStringLiteral("-100 -100 5000 5000");
        QTest::newRow("a screen that is gone") << QStringLiteral("5000 100 450 200");
        QTest::newRow("far above") << QStringLiteral("100 -9000 450 200");
    }

    void aFrameThatIsNotWhollyOnTheScreenIsMovedOntoIt()
    {
        QFETCH(const QString, frame);
        PreferencesDesk desk;
        desk.defaults.setValue(key, frame);
        AppPreferencesWindow window(desk.defaults);
        window.resize(450, 200);
        window.show();
        QVERIFY(screenArea().contains(window.frameGeometry()));
        QCOMPARE(window.size(), QSize(450, 200));
    }

    void aWindowLargerThanTheScreenBeginsOnIt()
    {
        PreferencesDesk desk;
        desk.defaults.setValue(key, QStringLiteral("100 100 900 900"));
        AppPreferencesWindow window(desk.defaults);
        window.resize(900, 900);
        window.show();
        QCOMPARE(window.pos(), screenArea().topLeft());
    }

    void aFrameThatIsNonsenseOrOnNoScreenIsIgnored_data()
    {
        QTest::addColumn<QString>("frame");
        for (const char *frame :
            {"", "nonsense", "1 2 3", "1 2 3 4 5", "1 2 3 x", "1,2,3,4", "1 2 0 4", "1 2 -3 4", "1 2  3 4",
                "2147483647 2147483647 2147483647 2147483647", "-2147483648 0 450 200", "99999999999 0 450 200",
                "nan inf 450 200", "1.5 2 450 200", "0x10 0 450 200", "5000 100 450 200", "100 -9000 450 200"}) {
            QTest::newRow(frame) << QString::fromLatin1(frame);
        }
        QTest::newRow("a thousand numbers") << QStringLiteral("1 ").repeated(1000);
    }

    void aFrameThatIsNonsenseOrOnNoScreenIsIgnored()
    {
        QFETCH(const QString, frame);
        PreferencesDesk desk;
        AppPreferencesWindow first(desk.defaults);
        first.resize(450, 200);
        first.show();
        desk.defaults.setValue(key, frame);
        AppPreferencesWindow window(desk.defaults);
        window.resize(450, 200);
        window.show();
        QCOMPARE(window.geometry(), first.geometry());
    }
};

TUNEDECK_TEST(AppPreferencesWindowTest, QApplication)
#include "AppPreferencesWindowTest.moc"
