// SPDX-License-Identifier: MIT
#include "skin/views/ShadowView.h"

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

class ShadowViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        focus(nullptr);
        m_desk = std::make_unique<SkinDesk>();
        m_view = std::make_unique<ShadowView>(m_desk->environment);
        m_view->resize(200, 40);
    }

    void cleanup()
    {
        m_view.reset();
        m_desk.reset();
    }

    void onlyTheShadowIsPaintedAndNeverTheStrip()
    {
        const Picture picture(*m_view);
        QVERIFY(isNear(picture.at(100.5, 14.5), grey(0, 113)));
        QCOMPARE(picture.at(100.5, 15.5).alpha(), 0);
        QCOMPARE(picture.at(100.5, 29.5).alpha(), 0);
    }

    void theShadowHangsFromTheViewsLowerEdge()
    {
        m_view->resize(200, 60);
        const Picture picture(*m_view);
        QVERIFY(isNear(picture.at(100.5, 14.5), grey(0, 113)));
        QCOMPARE(picture.at(100.5, 40.5).alpha(), 0);
    }

    void itIsPaintedAgainWhenAWindowBecomesMainThoughItLooksTheSame()
    {
        const Picture inactive(*m_view);
        PaintCounter paints(*m_view);
        focus(nullptr);
        static_cast<void>(paints.takeCount());
        QVERIFY(!m_view->isMainWindow());
        focus(&m_window);
        QVERIFY(m_view->isMainWindow());
        QCOMPARE(paints.takeCount(), 1);
        QCOMPARE(Picture(*m_view), inactive);
    }

    void itLetsTheMouseThrough()
    {
        QWidget window;
        window.resize(200, 40);
        QWidget control(&window);
        control.setGeometry(0, 0, 200, 40);
        m_view->setParent(&window);
        m_view->raise();
        QCOMPARE(window.childAt(100, 26), &control);
        m_view->setParent(nullptr);
    }

private:
    QWindow m_window;
    std::unique_ptr<SkinDesk> m_desk;
    std::unique_ptr<ShadowView> m_view;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::ShadowViewTest, QApplication)
#include "ShadowViewTest.moc"
