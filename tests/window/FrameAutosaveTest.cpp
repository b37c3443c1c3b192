// SPDX-License-Identifier: MIT
#include "window/FrameAutosave.h"

#include "support/Desktop.h"
#include "support/TimedStyle.h"
#include "support/elapse.h"
#include "support/registerTest.h"
#include "window/WindowController.h"

#include <QApplication>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <memory>

using namespace tunedeck;

namespace {
QTimer &timer(WindowController &controller, const char *name)
{
    return *controller.findChild<QTimer *>(QString::fromLatin1(name));
}

bool letRest(WindowController &controller)
{
    return elapse(timer(controller, "save frame"));
}

/// The place in a run that starts now.
QRect placeInNextRun(Desktop &desktop)
{
    WindowController controller(desktop.defaults);
    controller.window().show();
    return controller.window().contentGeometry();
}
} // namespace

class FrameAutosaveTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(new TimedStyle); }

    void init()
    {
        failOnWarning();
        m_desktop = std::make_unique<Desktop>();
    }

    void theFirstRunLeavesThePlaceToTheWindowManager()
    {
        WindowController controller(m_desktop->defaults);
        QCOMPARE(controller.window().contentRect().size(), QSize(450, 64));
        QVERIFY(!controller.window().testAttribute(Qt::WA_Moved));
    }

    void theWindowComesBackWhereItWas()
    {
        {
            WindowController controller(m_desktop->defaults);
            controller.window().show();
            controller.window().setContentGeometry({120, 90, 420, 64});
            QVERIFY(letRest(controller));
        }
        QCOMPARE(placeInNextRun(*m_desktop), QRect(120, 90, 420, 64));
    }

    void itDoesSoThoughTheProgramEndsAtOnce()
    {
        {
            WindowController controller(m_desktop->defaults);
            controller.window().show();
            controller.window().setContentGeometry({120, 90, 420, 64});
            QTimer::singleShot(0, qApp, &QCoreApplication::quit);
            QApplication::exec();
        }
        QCOMPARE(placeInNextRun(*m_desktop), QRect(120, 90, 420, 64));
    }

    void manyRunsLeaveItWhereItIs()
    {
        m_desktop->defaults.setValue(FrameAutosave::widthKey, 411);
        m_desktop->defaults.setValue(FrameAutosave::placeKey, placeText(131, 77));
        for (int run = 0; run < 10; ++run) {
            WindowController controller(m_desktop->defaults);
            Window &window = controller.window();
            window.show();
            QCOMPARE(window.contentGeometry(), QRect(131, 77, 411, 64));
            controller.setExpanded(true);
            controller.setExpanded(false);
            QVERIFY(letRest(controller));
        }
    }

    void aDragIsSavedOnceAndAtItsEnd()
    {
        WindowController controller(m_desktop->defaults);
        Window &window = controller.window();
        window.show();
        window.setContentGeometry({100, 80, 420, 64});
        QVERIFY(letRest(controller));
        const QSignalSpy saves(&m_desktop->defaults, &UserDefaults::valueChanged);
        for (int x = 101; x < 150; ++x) {
            window.move(x, 80);
            QVERIFY(timer(controller, "save frame").isActive());
        }
        QCOMPARE(saves.count(), 0);
        QVERIFY(letRest(controller));
        QCOMPARE(saves.count(), 1);
        QCOMPARE(saves.at(0).at(0).toString(), QString(FrameAutosave::placeKey));
        // At rest nothing goes on, and what is as it was is not written again.
        QVERIFY(!timer(controller, "save frame").isActive());
        window.move(10, 10);
        window.move(149, 80);
        QVERIFY(letRest(controller));
        QCOMPARE(saves.count(), 1);
    }

    void aWindowThatIsNotOnTheScreenHasNoPlaceToSave()
    {
        WindowController controller(m_desktop->defaults);
        controller.window().setContentGeometry({100, 80, 420, 64});
        QVERIFY(!timer(controller, "save frame").isActive());
    }

    void aWindowThatWasClosedHasThePlaceThatItHadOnTheScreen()
    {
        {
            WindowController controller(m_desktop->defaults);
            Window &window = controller.window();
            window.show();
            window.setContentGeometry({120, 90, 420, 64});
            window.close();
            QCOMPARE(m_desktop->defaults.stringForKey(FrameAutosave::placeKey), placeText(120, 90));
            window.windowHandle()->setPosition(0, 0);
            QCoreApplication::processEvents();
            QVERIFY(!timer(controller, "save frame").isActive());
        }
        QCOMPARE(placeInNextRun(*m_desktop), QRect(120, 90, 420, 64));
    }

    void aWindowAboveTheEdgeOfTheScreenIsSavedThere()
    {
        WindowController controller(m_desktop->defaults);
        controller.window().show();
        controller.window().setContentGeometry({0, -10, 450, 64});
        QVERIFY(letRest(controller));
        QCOMPARE(m_desktop->defaults.stringForKey(FrameAutosave::placeKey), placeText(0, -10));
    }

    void theDrawerIsClosedInTheNextRun()
    {
        {
            WindowController controller(m_desktop->defaults);
            controller.window().show();
            controller.window().setContentGeometry({120, 90, 420, 64});
            controller.setExpanded(true);
            QVERIFY(letRest(controller));
        }
        QCOMPARE(placeInNextRun(*m_desktop), QRect(120, 90, 420, 64));
    }

    void aWindowThatWasPushedUpForTheDrawerHasItsFormerPlace_data()
    {
        QTest::addColumn<bool>("isSettled");
        QTest::addColumn<bool>("isClosing");
        QTest::newRow("at once") << false << false;
        QTest::newRow("later") << true << false;
        QTest::newRow("while the drawer closes") << true << true;
    }
    void aWindowThatWasPushedUpForTheDrawerHasItsFormerPlace()
    {
        QFETCH(const bool, isSettled);
        QFETCH(const bool, isClosing);
        {
            WindowController controller(m_desktop->defaults);
            Window &window = controller.window();
            window.show();
            window.setContentGeometry({120, 600, 420, 64});
            controller.setExpanded(true);
            // The window manager's part.
            window.move(120, 576);
            if (isSettled) {
                QVERIFY(elapse(timer(controller, "settling")));
            }
            // The user drags the right edge.
            window.resize(400, 124);
            if (isClosing) {
                static_cast<TimedStyle *>(QApplication::style())->animationDuration = 10'000;
                controller.setExpanded(false);
                QTRY_VERIFY(window.y() > 576);
            }
            QVERIFY(letRest(controller));
            static_cast<TimedStyle *>(QApplication::style())->animationDuration = 0;
        }
        QCOMPARE(placeInNextRun(*m_desktop), QRect(120, 600, 400, 64));
    }

    void aWindowThatTheUserMovedWhileTheDrawerWasOpenHasItsLastPlace()
    {
        {
            WindowController controller(m_desktop->defaults);
            Window &window = controller.window();
            window.show();
            window.setContentGeometry({120, 600, 420, 64});
            controller.setExpanded(true);
            window.move(120, 576);
            QVERIFY(elapse(timer(controller, "settling")));
            window.move(120, 580);
            QVERIFY(letRest(controller));
        }
        QCOMPARE(placeInNextRun(*m_desktop), QRect(120, 580, 420, 64));
    }

    void itOpensAtItsPlaceAtOnce()
    {
        m_desktop->defaults.setValue(FrameAutosave::placeKey, placeText(131, 77));
        WindowController controller(m_desktop->defaults);
        QCOMPARE(controller.window().contentGeometry(), QRect(131, 77, 450, 64));
    }

    void aWidthBeyondTheLimitsIsBroughtWithin_data()
    {
        QTest::addColumn<QVariant>("saved");
        QTest::addColumn<int>("expected");
        QTest::newRow("too wide") << QVariant(551) << 550;
        QTest::newRow("too narrow") << QVariant(349) << 350;
        QTest::newRow("huge") << QVariant(9223372036854775807LL) << 550;
        QTest::newRow("negative") << QVariant(-1) << 350;
        QTest::newRow("none") << QVariant(0) << 450;
        QTest::newRow("a word") << QVariant(QStringLiteral("wide")) << 450;
    }
    void aWidthBeyondTheLimitsIsBroughtWithin()
    {
        QFETCH(const QVariant, saved);
        m_desktop->defaults.setValue(FrameAutosave::widthKey, saved);
        WindowController controller(m_desktop->defaults);
        QTEST(controller.window().contentRect().width(), "expected");
    }

    void aPlaceThatCannotBeReadIsNone()
    {
        m_desktop->defaults.setValue(FrameAutosave::placeKey, QStringLiteral("120 90"));
        WindowController controller(m_desktop->defaults);
        QVERIFY(!controller.window().testAttribute(Qt::WA_Moved));
    }

    void aPlaceOnAScreenThatIsGoneIsTheNearest()
    {
        m_desktop->defaults.setValue(FrameAutosave::placeKey, QStringLiteral("5000 90 4000 0 1920 1080 far"));
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        QCOMPARE(placeInNextRun(*m_desktop), QRect(area.right() - 449, 90, 450, 64));
    }

private:
    static QString placeText(int x, int y)
    {
        const QScreen &screen = *QGuiApplication::primaryScreen();
        const QSize size = screen.size();
        return QStringLiteral("%1 %2 0 0 %3 %4 ").arg(x).arg(y).arg(size.width()).arg(size.height()) + screen.name();
    }

    std::unique_ptr<Desktop> m_desktop;
};

TUNEDECK_TEST(FrameAutosaveTest, QApplication)
#include "FrameAutosaveTest.moc"
