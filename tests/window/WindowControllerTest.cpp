// SPDX-License-Identifier: MIT
#include "window/WindowController.h"

#include "music/MenuItemIdentifier.h"
#include "support/Desktop.h"
#include "support/TimedStyle.h"
#include "support/registerTest.h"

#include <QAction>
#include <QApplication>
#include <QSignalSpy>
#include <QTest>

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
