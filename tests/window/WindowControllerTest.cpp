// SPDX-License-Identifier: MIT
#include "window/WindowController.h"

#include "music/MenuItemIdentifier.h"
#include "support/Desktop.h"
#include "support/TimedStyle.h"
#include "support/elapse.h"
#include "support/registerTest.h"

#include <QAction>
#include <QApplication>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace tunedeck;

namespace {
/// Counts the sizes that a window is given.
class ResizeCounter : public QObject {
public:
    QList<int> heights;

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Resize) {
            heights.append(static_cast<QResizeEvent *>(event)->size().height());
        }
        return false;
    }
};

/// The time in which a window manager makes room for the drawer.
QTimer &settling(WindowController &controller)
{
    return *controller.findChild<QTimer *>(QStringLiteral("settling"));
}
} // namespace

class WindowControllerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_style = new TimedStyle;
        QApplication::setStyle(m_style);
    }

    void init()
    {
        failOnWarning();
        m_style->animationDuration = 0;
    }

    void itStartsCollapsedAndOnTheNormalLevel()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        QVERIFY(!controller.isExpanded());
        QVERIFY(!controller.keepAboveAllWindows());
        QCOMPARE(controller.window().level(), WindowLevel::Normal);
        QCOMPARE(controller.window().height(), 64);
        QCOMPARE(controller.window().minimumSize(), QSize(350, 64));
        QCOMPARE(controller.window().maximumSize(), QSize(550, 64));
    }

    void theDrawerHasNoWindowOfItsOwn()
    {
        Desktop desktop;
        const WindowController controller(desktop.defaults);
        QVERIFY(controller.playlistWindowController().expired());
    }

    void theSavedLevelIsAppliedAtOnce()
    {
        Desktop desktop;
        desktop.defaults.setBool(SettingsKey::keepMainWindowAboveAllOtherWindows, true);
        WindowController controller(desktop.defaults);
        QVERIFY(controller.keepAboveAllWindows());
        QCOMPARE(controller.window().level(), WindowLevel::Floating);
    }

    void togglingTwiceGivesTheFormerKeyAndLevel()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        controller.toggleKeepMainWindowAboveAllOtherWindows();
        QVERIFY(desktop.defaults.boolForKey(SettingsKey::keepMainWindowAboveAllOtherWindows));
        QCOMPARE(controller.window().level(), WindowLevel::Floating);
        controller.toggleKeepMainWindowAboveAllOtherWindows();
        QVERIFY(!desktop.defaults.boolForKey(SettingsKey::keepMainWindowAboveAllOtherWindows));
        QCOMPARE(controller.window().level(), WindowLevel::Normal);
    }

    void itValidatesOnlyTheKeepAboveItem()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        QAction item;
        item.setCheckable(true);
        QVERIFY(!controller.validateMenuItem(item));
        item.setObjectName(MenuItemIdentifier::closeWindow);
        QVERIFY(!controller.validateMenuItem(item));
        item.setObjectName(MenuItemIdentifier::keepAboveAllWindows);
        QVERIFY(controller.validateMenuItem(item));
        QVERIFY(!item.isChecked());
        desktop.defaults.setBool(SettingsKey::keepMainWindowAboveAllOtherWindows, true);
        QVERIFY(controller.validateMenuItem(item));
        QVERIFY(item.isChecked());
    }

    void expandingGrowsDownwardsBySixtyAndCollapsingRestoresTheFrame()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.setGeometry(100, 80, 420, 64);
        window.show();
        controller.setExpanded(true);
        QCOMPARE(window.geometry(), QRect(100, 80, 420, 124));
        QCOMPARE(window.minimumSize(), QSize(350, 124));
        QCOMPARE(window.maximumSize(), QSize(550, 124));
        controller.setExpanded(false);
        QCOMPARE(window.geometry(), QRect(100, 80, 420, 64));
        QCOMPARE(window.minimumSize(), QSize(350, 64));
        QCOMPARE(window.maximumSize(), QSize(550, 64));
    }

    void aWindowThatWasPushedUpForTheDrawerGoesBack_data()
    {
        QTest::addColumn<int>("duration");
        QTest::newRow("animated") << 40;
        QTest::newRow("at once") << 0;
    }

    void aWindowThatWasPushedUpForTheDrawerGoesBack()
    {
        QFETCH(const int, duration);
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.setGeometry(100, 700, 420, 64);
        window.show();
        controller.setExpanded(true);
        // The window manager's part.
        window.move(100, 676);
        QVERIFY(elapse(settling(controller)));
        m_style->animationDuration = duration;
        ResizeCounter resizes;
        window.installEventFilter(&resizes);
        controller.setExpanded(false);
        QTRY_COMPARE(window.geometry(), QRect(100, 700, 420, 64));
        QCOMPARE(window.minimumSize(), QSize(350, 64));
        QVERIFY(duration == 0 || resizes.heights.size() > 1);
    }

    void theDrawerStaysOnTheScreenWhereTheWindowManagerMakesNoRoom_data()
    {
        QTest::addColumn<int>("top");
        QTest::addColumn<int>("expected");
        QTest::newRow("there is room") << 600 << 600;
        QTest::newRow("there is room for a part of it") << 700 << 676;
        QTest::newRow("the user has moved the window half off the screen") << 760 << 760;
    }

    void theDrawerStaysOnTheScreenWhereTheWindowManagerMakesNoRoom()
    {
        QFETCH(const int, top);
        QFETCH(const int, expected);
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        QCOMPARE(window.screen()->availableGeometry().height(), 800);
        window.setGeometry(100, top, 420, 64);
        window.show();
        controller.setExpanded(true);
        QCOMPARE(window.geometry(), QRect(100, expected, 420, 124));
        controller.setExpanded(false);
        QCOMPARE(window.geometry(), QRect(100, top, 420, 64));
    }

    void aWindowThatTheUserMovesWhileTheDrawerIsOpenStays_data()
    {
        QTest::addColumn<QPoint>("pushedTo");
        QTest::addColumn<QPoint>("movedTo");
        QTest::newRow("after a push") << QPoint(100, 676) << QPoint(100, 680);
        QTest::newRow("without a push") << QPoint(100, 700) << QPoint(100, 690);
        QTest::newRow("to the side") << QPoint(100, 676) << QPoint(101, 676);
        QTest::newRow("further than the window is high, at once") << QPoint(100, 570) << QPoint(100, 570);
        QTest::newRow("down, at once") << QPoint(100, 720) << QPoint(100, 720);
    }

    void aWindowThatTheUserMovesWhileTheDrawerIsOpenStays()
    {
        QFETCH(const QPoint, pushedTo);
        QFETCH(const QPoint, movedTo);
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.setGeometry(100, 700, 420, 64);
        window.show();
        controller.setExpanded(true);
        window.move(pushedTo);
        if (movedTo != pushedTo) {
            QVERIFY(elapse(settling(controller)));
        }
        window.move(movedTo);
        controller.setExpanded(false);
        QCOMPARE(window.geometry(), QRect(movedTo, QSize(420, 64)));
    }

    void aDrawerThatIsClosedAndOpenedInOneGoForgetsNoPlace()
    {
        Desktop desktop;
        m_style->animationDuration = 10'000;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.setGeometry(100, 700, 420, 64);
        window.show();
        controller.setExpanded(true);
        QTRY_VERIFY(window.height() > 64);
        window.move(100, 699);
        controller.setExpanded(false);
        controller.setExpanded(true);
        m_style->animationDuration = 0;
        controller.setExpanded(false);
        QTRY_COMPARE(window.geometry(), QRect(100, 700, 420, 64));
    }

    void theWidthStaysWithinItsLimitsAndTheHeightIsFixed()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        for (const auto &[expanded, height] : {std::pair(false, 64), std::pair(true, 124)}) {
            controller.setExpanded(expanded);
            controller.window().resize(1000, 500);
            QCOMPARE(controller.window().size(), QSize(550, height));
            controller.window().resize(1, 1);
            QCOMPARE(controller.window().size(), QSize(350, height));
        }
    }

    void theSameValueChangesNoFrameButAppliesTheLimitsAgain()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.show();
        controller.setExpanded(true);
        window.setMinimumSize(10, 10);
        window.setMaximumSize(900, 900);
        ResizeCounter resizes;
        window.installEventFilter(&resizes);
        QSignalSpy told(&controller, &DrawerHost::isExpandedChanged);
        controller.setExpanded(true);
        QCOMPARE(window.minimumSize(), QSize(350, 124));
        QCOMPARE(window.maximumSize(), QSize(550, 124));
        QVERIFY(resizes.heights.isEmpty());
        QCOMPARE(told.count(), 1);
    }

    void theWindowHasItsHeightBeforeTheChangeIsTold()
    {
        Desktop desktop;
        m_style->animationDuration = 60;
        WindowController controller(desktop.defaults);
        controller.window().show();
        QList<int> heightsWhenTold;
        connect(&controller, &DrawerHost::isExpandedChanged, this,
            [&] { heightsWhenTold.append(controller.window().height()); });
        controller.setExpanded(true);
        QVERIFY(controller.isExpanded());
        QVERIFY(heightsWhenTold.isEmpty());
        QTRY_COMPARE(heightsWhenTold, QList<int>({124}));
        controller.setExpanded(false);
        QTRY_COMPARE(heightsWhenTold, (QList<int>{124, 64}));
    }

    void anAnimatedResizeKeepsTheTopEdgeAndTheWidth()
    {
        Desktop desktop;
        m_style->animationDuration = 100;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.setGeometry(100, 80, 420, 64);
        window.show();
        ResizeCounter resizes;
        window.installEventFilter(&resizes);
        QSignalSpy told(&controller, &DrawerHost::isExpandedChanged);
        controller.setExpanded(true);
        QVERIFY(told.wait());
        QVERIFY(resizes.heights.size() > 2);
        QVERIFY(std::is_sorted(resizes.heights.begin(), resizes.heights.end()));
        QCOMPARE(window.geometry(), QRect(100, 80, 420, 124));
        QCOMPARE(window.minimumSize(), QSize(350, 124));
        QCOMPARE(window.maximumSize(), QSize(550, 124));
    }

    void withReducedMotionTheDrawerOpensAtOnce()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        m_style->animationDuration = 10'000;
        controller.setMotionReduced(true);
        controller.window().show();
        controller.setExpanded(true);
        QCOMPARE(controller.window().contentRect().height(), 124);
        controller.setMotionReduced(false);
        controller.setExpanded(false);
        QVERIFY(controller.window().contentRect().height() > 64);
    }

    void anInterruptedResizeGoesOnFromWhereItIs()
    {
        Desktop desktop;
        m_style->animationDuration = 200;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.show();
        QSignalSpy told(&controller, &DrawerHost::isExpandedChanged);
        controller.setExpanded(true);
        QTRY_VERIFY(window.height() > 80);
        const int interruptedAt = window.height();
        ResizeCounter resizes;
        window.installEventFilter(&resizes);
        controller.setExpanded(false);
        QVERIFY(told.wait());
        QCOMPARE(told.count(), 1);
        QCOMPARE(told.at(0).at(0).toBool(), false);
        QVERIFY(std::is_sorted(resizes.heights.rbegin(), resizes.heights.rend()));
        QVERIFY(resizes.heights.first() <= interruptedAt);
        QCOMPARE(window.height(), 64);
        QCOMPARE(window.maximumSize(), QSize(550, 64));
    }

private:
    TimedStyle *m_style = nullptr; ///< the application's
};

TUNEDECK_TEST(WindowControllerTest, QApplication)
#include "WindowControllerTest.moc"
