// SPDX-License-Identifier: MIT
#include "skin/views/LCDBackgroundView.h"

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

class LCDBackgroundViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        m_desk = std::make_unique<SkinDesk>();
        m_view = std::make_unique<LCDBackgroundView>(m_desk->environment);
        m_view->resize(220, 52);
        focus(nullptr);
    }

    void cleanup()
    {
        m_view.reset();
        m_desk.reset();
    }

    void itFillsTheView()
    {
        for (const QSize size : {QSize(220, 52), QSize(312, 40)}) {
            m_view->resize(size);
            const Picture drawn(size, 1,
                [size](QPainter &painter) { LCDBackgroundCell().draw(painter, QRectF({}, size), {.isDark = false}); });
            QCOMPARE(Picture(*m_view), drawn);
        }
    }

    void itFollowsTheAppearance()
    {
        const Picture light(*m_view);
        m_desk->setDark(true);
        QVERIFY(isNear(Picture(*m_view).at(110, 20.5), QColor(204, 207, 182)));
        m_desk->setDark(false);
        QCOMPARE(Picture(*m_view), light);
    }

    void itRepaintsWhenTheMainWindowChangesThoughItLooksTheSame()
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
        focus(nullptr);
        QVERIFY(!m_view->isMainWindow());
    }

    void aNewAppearanceRepaints()
    {
        PaintCounter paints(*m_view);
        m_desk->setDark(true);
        QCOMPARE(paints.takeCount(), 1);
    }

private:
    QWindow m_window;
    std::unique_ptr<SkinDesk> m_desk;
    std::unique_ptr<LCDBackgroundView> m_view;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::LCDBackgroundViewTest, QApplication)
#include "LCDBackgroundViewTest.moc"
