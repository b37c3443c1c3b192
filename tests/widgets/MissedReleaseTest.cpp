// SPDX-License-Identifier: MIT
#include "widgets/MissedRelease.h"

#include "support/MenuWindow.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace tunedeck;

class MissedReleaseTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnWarning();
        m_control = new QWidget;
        m_window = std::make_unique<MenuWindow>(*m_control);
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        m_missedRelease = std::make_unique<MissedRelease>(*m_control);
    }

    void cleanup()
    {
        m_missedRelease.reset();
        m_window.reset();
    }

    void aReleaseThatReachesTheControlIsNotMissed()
    {
        const QSignalSpy missed(m_missedRelease.get(), &MissedRelease::missed);
        m_window->press(Qt::LeftButton);
        m_window->release(Qt::LeftButton);
        QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, {}, besideControl);
        QCoreApplication::processEvents();
        QCOMPARE(missed.count(), 0);
    }

    void aReleaseThatAMenuGetsIsMissedOnce()
    {
        const QSignalSpy missed(m_missedRelease.get(), &MissedRelease::missed);
        m_window->press(Qt::LeftButton);
        m_window->press(Qt::RightButton);
        QVERIFY(m_window->isMenuOpen());
        QCOMPARE(missed.count(), 0);
        m_window->release(Qt::RightButton);
        QCOMPARE(missed.count(), 0);
        m_window->release(Qt::LeftButton);
        QCOMPARE(missed.count(), 1);
        m_window->closeMenu();
        QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, {}, besideControl);
        QCOMPARE(missed.count(), 1);
    }

    void noReleaseIsAwaitedOnceTheMenuHasClosed()
    {
        const QSignalSpy missed(m_missedRelease.get(), &MissedRelease::missed);
        m_window->press(Qt::LeftButton);
        m_window->press(Qt::RightButton);
        QVERIFY(m_window->isMenuOpen());
        m_window->release(Qt::RightButton);
        QCOMPARE(missed.count(), 0);
        m_window->closeMenu();
        QCOMPARE(missed.count(), 1);
        m_window->release(Qt::LeftButton);
        QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, {}, besideControl);
        QCoreApplication::processEvents();
        QCOMPARE(missed.count(), 1);
    }

    void aReleaseThatNoWidgetGetsIsMissed()
    {
        const QSignalSpy missed(m_missedRelease.get(), &MissedRelease::missed);
        m_window->press(Qt::RightButton);
        m_window->release(Qt::RightButton);
        QVERIFY(m_window->isMenuOpen());
        // It closes the menu, and stays down.
        m_window->press(Qt::MiddleButton);
        QVERIFY(!m_window->isMenuOpen());
        m_window->press(Qt::LeftButton);
        m_window->release(Qt::MiddleButton);
        QCoreApplication::processEvents();
        QCOMPARE(missed.count(), 0);
        m_window->release(Qt::LeftButton);
        QTRY_COMPARE(missed.count(), 1);
    }

    void noReleaseComesOnceTheWindowIsOffTheScreen()
    {
        const QSignalSpy missed(m_missedRelease.get(), &MissedRelease::missed);
        m_window->press(Qt::LeftButton);
        m_window->windowHandle()->setVisible(false);
        QTRY_COMPARE(missed.count(), 1);
    }

    void otherButtonsAreNotWatched()
    {
        const QSignalSpy missed(m_missedRelease.get(), &MissedRelease::missed);
        m_window->press(Qt::RightButton);
        QVERIFY(m_window->isMenuOpen());
        m_window->release(Qt::RightButton);
        m_window->press(Qt::LeftButton);
        m_window->release(Qt::LeftButton);
        QCOMPARE(missed.count(), 0);
    }

private:
    static constexpr QPoint besideControl{50, 50};

    QWidget *m_control = nullptr;
    std::unique_ptr<MenuWindow> m_window;
    std::unique_ptr<MissedRelease> m_missedRelease;
};

TUNEDECK_TEST(MissedReleaseTest, QApplication)
#include "MissedReleaseTest.moc"
