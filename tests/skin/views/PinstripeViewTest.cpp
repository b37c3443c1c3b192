// SPDX-License-Identifier: MIT
#include "skin/views/PinstripeView.h"

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

namespace {
constexpr QColor stripe(0, 0, 0, 5);
constexpr QColor darkStripe(255, 255, 255, 5);
constexpr QColor nothing(0, 0, 0, 0);
} // namespace

class PinstripeViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        m_desk = std::make_unique<SkinDesk>();
        m_view = std::make_unique<PinstripeView>(m_desk->environment);
        m_view->resize(60, 10);
        focus(nullptr);
    }

    void cleanup()
    {
        m_view.reset();
        m_desk.reset();
    }

    void stripesShowWhileAWindowOfTheProgramIsKey()
    {
        QVERIFY(!m_view->isKeyWindow());
        QCOMPARE(topLeft(), nothing);
        focus(&m_panel);
        QVERIFY(m_view->isKeyWindow());
        QCOMPARE(topLeft(), stripe);
        focus(nullptr);
        QCOMPARE(topLeft(), nothing);
    }

    void theStripesFillTheView()
    {
        focus(&m_panel);
        const Picture picture(*m_view);
        for (const double fromTop : {0.5, 1.5, 4.5, 5.5, 8.5, 9.5}) {
            QCOMPARE(picture.at(0.5, 10 - fromTop), stripe);
            QCOMPARE(picture.at(59.5, 10 - fromTop), stripe);
        }
        for (const double fromTop : {2.5, 3.5, 6.5, 7.5}) {
            QCOMPARE(picture.at(30, 10 - fromTop), nothing);
        }
    }

    void inTheDarkTheStripesAreWhite()
    {
        focus(&m_panel);
        m_desk->setDark(true);
        QCOMPARE(topLeft(), darkStripe);
    }

    void aPartThatIsPaintedAnewKeepsItsStripes()
    {
        focus(&m_panel);
        QImage part(20, 10, QImage::Format_ARGB32_Premultiplied);
        part.fill(Qt::transparent);
        m_view->render(&part, {}, QRegion(40, 0, 20, 10), QWidget::DrawChildren);
        QCOMPARE(part.pixelColor(0, 0), stripe);
        QCOMPARE(part.pixelColor(19, 0), stripe);
    }

    void stripesCanBeSwitchedOff()
    {
        focus(&m_panel);
        QVERIFY(m_view->drawsPinstripes());
        QSignalSpy changed(m_view.get(), &PinstripeView::drawsPinstripesChanged);
        m_view->setDrawsPinstripes(false);
        QCOMPARE(topLeft(), nothing);
        QCOMPARE(changed.count(), 1);
    }

    void onlyARealChangeRepaints()
    {
        PaintCounter paints(*m_view);
        m_view->setDrawsPinstripes(true);
        QCOMPARE(paints.takeCount(), 0);
        m_view->setDrawsPinstripes(false);
        QCOMPARE(paints.takeCount(), 1);
        m_view->setDrawsPinstripes(false);
        QCOMPARE(paints.takeCount(), 0);
    }

    void aNewAppearanceRepaints()
    {
        PaintCounter paints(*m_view);
        m_desk->setDark(true);
        QCOMPARE(paints.takeCount(), 1);
    }

private:
    [[nodiscard]] QColor topLeft() const { return Picture(*m_view).at(0.5, 9.5); }

    QWindow m_panel;
    std::unique_ptr<SkinDesk> m_desk;
    std::unique_ptr<PinstripeView> m_view;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PinstripeViewTest, QApplication)
#include "PinstripeViewTest.moc"
