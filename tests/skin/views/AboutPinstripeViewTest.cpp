// SPDX-License-Identifier: MIT
#include "skin/views/AboutPinstripeView.h"

#include "skin/FocusedWindow.h"
#include "skin/PaintCounter.h"
#include "skin/Picture.h"
#include "support/SkinDesk.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace tunedeck {

class AboutPinstripeViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        m_desk = std::make_unique<SkinDesk>();
        m_view = std::make_unique<AboutPinstripeView>(m_desk->environment);
        m_view->resize(60, 10);
    }

    void cleanup()
    {
        m_view.reset();
        m_desk.reset();
    }

    void itFollowsNoWindowAndStaysPlain()
    {
        QWindow window;
        focus(&window);
        QVERIFY(!m_view->isKeyWindow());
        QCOMPARE(topLeft().alpha(), 0);
        focus(nullptr);
    }

    void toldThatItsWindowIsKeyItHasStripes()
    {
        QSignalSpy changed(m_view.get(), &AboutPinstripeView::isKeyWindowChanged);
        m_view->setKeyWindow(true);
        QCOMPARE(changed.count(), 1);
        QCOMPARE(topLeft(), QColor(0, 0, 0, 5));
        m_desk->setDark(true);
        QCOMPARE(topLeft(), QColor(255, 255, 255, 5));
        m_view->setKeyWindow(false);
        QCOMPARE(topLeft().alpha(), 0);
    }

    void onlyARealChangeRepaints()
    {
        PaintCounter paints(*m_view);
        m_view->setKeyWindow(false);
        QCOMPARE(paints.takeCount(), 0);
        m_view->setKeyWindow(true);
        QCOMPARE(paints.takeCount(), 1);
    }

private:
    [[nodiscard]] QColor topLeft() const { return Picture(*m_view).at(0.5, 9.5); }

    std::unique_ptr<SkinDesk> m_desk;
    std::unique_ptr<AboutPinstripeView> m_view;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::AboutPinstripeViewTest, QApplication)
#include "AboutPinstripeViewTest.moc"
