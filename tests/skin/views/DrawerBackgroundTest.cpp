// SPDX-License-Identifier: MIT
#include "skin/views/DrawerBackground.h"

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
const QColor activeBody = grey(163);
const QColor inactiveBody = grey(217);
} // namespace

class DrawerBackgroundTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        focus(nullptr);
        m_desk = std::make_unique<SkinDesk>();
        m_view = std::make_unique<DrawerBackground>(m_desk->environment);
        m_view->resize(300, 64);
    }

    void cleanup()
    {
        m_view.reset();
        m_desk.reset();
    }

    void itIsActiveWhileAWindowOfTheProgramIsMain()
    {
        QVERIFY(!m_view->isMainWindow());
        QVERIFY(isNear(body(), inactiveBody));
        focus(&m_window);
        QVERIFY(m_view->isMainWindow());
        QVERIFY(isNear(body(), activeBody));
        QVERIFY(isNear(upperField(), QColor(109, 117, 130)));
        focus(nullptr);
        QVERIFY(isNear(body(), inactiveBody));
        QCOMPARE(upperField(), QColor(143, 151, 165));
    }

    void aDrawerThatIsKeptAboveStaysActiveWhenTheProgramIsNot()
    {
        m_desk->defaults.setBool(SettingsKey::keepMainWindowAboveAllOtherWindows, true);
        focus(&m_window);
        focus(nullptr);
        QVERIFY(!m_view->isMainWindow());
        QVERIFY(isNear(body(), activeBody));
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
        QVERIFY(isNear(body(), activeBody));
        m_desk->defaults.setBool(SettingsKey::keepMainWindowAboveAllOtherWindows, false);
        QVERIFY(isNear(body(), inactiveBody));
    }

    void itIsPaintedAgainWhenAWindowBecomesMain()
    {
        PaintCounter paints(*m_view);
        focus(nullptr);
        static_cast<void>(paints.takeCount());
        focus(&m_window);
        QCOMPARE(paints.takeCount(), 1);
        focus(&m_window);
        QCOMPARE(paints.takeCount(), 0);
    }

    void theDarkAppearanceDoesNotChangeTheMetal()
    {
        const Picture light(*m_view);
        m_desk->setDark(true);
        QCOMPARE(Picture(*m_view), light);
    }

    void aHigherViewHasTheMetalAtItsLowerEdge()
    {
        m_view->resize(300, 100);
        const Picture picture(*m_view);
        QVERIFY(isNear(picture.at(3.5, 32.5), inactiveBody));
        QCOMPARE(picture.at(150, 63.5).alpha(), 255);
        QCOMPARE(picture.at(150, 64.5).alpha(), 0);
    }

private:
    [[nodiscard]] QColor body() const { return Picture(*m_view).at(3.5, 32.5); }
    [[nodiscard]] QColor upperField() const { return Picture(*m_view).at(150, 61.5); }

    QWindow m_window;
    std::unique_ptr<SkinDesk> m_desk;
    std::unique_ptr<DrawerBackground> m_view;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::DrawerBackgroundTest, QApplication)
#include "DrawerBackgroundTest.moc"
