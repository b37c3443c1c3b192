// SPDX-License-Identifier: MIT
#include "skin/views/WindowBackground.h"

#include "skin/FocusedWindow.h"
#include "skin/PaintCounter.h"
#include "skin/Picture.h"
#include "support/SkinDesk.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

#include <memory>

namespace tunedeck {

namespace {
const QColor activeMetal = grey(185);
const QColor inactiveMetal = grey(230);
} // namespace

class WindowBackgroundTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        focus(nullptr);
        m_desk = std::make_unique<SkinDesk>();
        m_view = std::make_unique<WindowBackground>(m_desk->environment);
        m_view->resize(200, 64);
    }

    void cleanup()
    {
        m_view.reset();
        m_desk.reset();
    }

    void itIsActiveWhileAWindowOfTheProgramIsMain()
    {
        QVERIFY(!m_view->isMainWindow());
        QVERIFY(isNear(metal(), inactiveMetal));
        focus(&m_window);
        QVERIFY(m_view->isMainWindow());
        QVERIFY(isNear(metal(), activeMetal));
        focus(nullptr);
        QVERIFY(isNear(metal(), inactiveMetal));
    }

    void aWindowThatIsKeptAboveStaysActiveWhenTheProgramIsNot()
    {
        m_desk->defaults.setBool(SettingsKey::keepMainWindowAboveAllOtherWindows, true);
        focus(&m_window);
        focus(nullptr);
        QVERIFY(!m_view->isMainWindow());
        QVERIFY(isNear(metal(), activeMetal));
    }

    void itIsPaintedAsTheSettingSaysAtOnce()
    {
        PaintCounter paints(*m_view);
        focus(nullptr);
        static_cast<void>(paints.takeCount());
        m_desk->defaults.setBool(SettingsKey::keepMainWindowAboveAllOtherWindows, true);
        QCOMPARE(paints.takeCount(), 1);
        m_desk->defaults.setBool(SettingsKey::remainingTimeEnabled, false);
        QCOMPARE(paints.takeCount(), 0);
        QVERIFY(isNear(metal(), activeMetal));
        m_desk->defaults.setBool(SettingsKey::keepMainWindowAboveAllOtherWindows, false);
        QVERIFY(isNear(metal(), inactiveMetal));
    }

    void theDarkAppearanceDoesNotChangeTheMetal()
    {
        const Picture light(*m_view);
        m_desk->setDark(true);
        QCOMPARE(Picture(*m_view), light);
    }

    void aHigherViewHasTheMetalAtItsLowerEdge()
    {
        m_view->resize(200, 200);
        const Picture picture(*m_view);
        QVERIFY(isNear(picture.at(100, 32.5), inactiveMetal));
        QCOMPARE(picture.at(100, 63.5).alpha(), 255);
        QCOMPARE(picture.at(100, 64.5).alpha(), 0);
    }

    void itIsAsWideAsTheView()
    {
        m_view->resize(351, 64);
        const Picture picture(*m_view);
        QCOMPARE(picture.at(350.5, 32.5).alpha(), 255);
        QCOMPARE(picture.at(350.5, 63.5).alpha(), 0);
    }

private:
    [[nodiscard]] QColor metal() const { return Picture(*m_view).at(100, 32.5); }

    QWindow m_window;
    std::unique_ptr<SkinDesk> m_desk;
    std::unique_ptr<WindowBackground> m_view;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::WindowBackgroundTest, QApplication)
#include "WindowBackgroundTest.moc"
