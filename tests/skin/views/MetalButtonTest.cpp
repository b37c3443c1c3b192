// SPDX-License-Identifier: MIT
#include "skin/views/MetalButton.h"

#include "skin/FocusedWindow.h"
#include "skin/PaintCounter.h"
#include "skin/Picture.h"
#include "skin/cells/MetalButtonCell.h"
#include "skin/cells/MetalGlyphButtonCell.h"
#include "skin/difference.h"
#include "skin/looksLike.h"
#include "skin/views/MetalGlyphButton.h"
#include "support/SkinDesk.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace tunedeck {

namespace {
constexpr QSize size(44, 30);
const QString knob = QStringLiteral("knob");

template <typename Cell> Picture drawn(const MetalButtonState &state)
{
    return {size, 1, [&state](QPainter &painter) {
                painter.resetTransform();
                Cell().draw(painter, QRectF({}, size), state);
            }};
}
} // namespace

class MetalButtonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        focus(nullptr);
        m_desk = std::make_unique<SkinDesk>();
        m_parent = std::make_unique<QWidget>();
        m_button = new MetalButton(m_desk->environment, m_parent.get());
        m_button->resize(size);
    }

    void cleanup()
    {
        m_parent.reset();
        m_desk.reset();
    }

    void itShowsItsStateAsTheCellDrawsIt()
    {
        m_button->setText(QStringLiteral("Done"));
        const auto expected = [this](bool isPressed, bool isEnabled, bool isMainWindow) {
            return drawn<MetalButtonCell>({.title = QStringLiteral("Done"),
                .font = m_button->font(),
                .isPressed = isPressed,
                .isEnabled = isEnabled,
                .isMainWindow = isMainWindow});
        };
        QVERIFY(looksLike(Picture(*m_button), expected(false, true, false), size));
        focus(&m_window);
        QVERIFY(looksLike(Picture(*m_button), expected(false, true, true), size));
        m_button->setDown(true);
        QVERIFY(looksLike(Picture(*m_button), expected(true, true, true), size));
        focus(nullptr);
        QVERIFY(looksLike(Picture(*m_button), expected(true, true, false), size));
        m_button->setDown(false);
        m_button->setEnabled(false);
        QVERIFY(looksLike(Picture(*m_button), expected(false, false, false), size));
    }

    void itIsPaintedAgainWhenAWindowBecomesMain()
    {
        PaintCounter paints(*m_button);
        focus(nullptr);
        static_cast<void>(paints.takeCount());
        focus(&m_window);
        QVERIFY(m_button->isMainWindow());
        QCOMPARE(paints.takeCount(), 1);
        focus(&m_window);
        QCOMPARE(paints.takeCount(), 0);
    }

    void onlyANewImageIsPainted()
    {
        PaintCounter paints(*m_button);
        m_button->setImage({});
        QCOMPARE(paints.takeCount(), 0);
        m_button->setImage(knob);
        QCOMPARE(paints.takeCount(), 1);
        QCOMPARE(m_button->image(), knob);
        m_button->setImage(knob);
        QCOMPARE(paints.takeCount(), 0);
    }

    void aClickCounts()
    {
        QSignalSpy clicked(m_button, &MetalButton::clicked);
        QTest::mouseClick(m_button, Qt::LeftButton);
        QCOMPARE(clicked.count(), 1);
    }

    void aLampCanTakeThePlaceOfItsFocusRing()
    {
        m_button->move(20, 20);
        m_parent->resize(100, 80);
        m_parent->show();
        QVERIFY(QTest::qWaitForWindowActive(m_parent.get()));
        m_button->clearFocus();
        const QImage plain = m_parent->grab().toImage();
        m_button->setFocus(Qt::TabFocusReason);
        QVERIFY(m_parent->grab().toImage() != plain);
        m_button->clearFocus();
        QCOMPARE(m_parent->grab().toImage(), plain);
        m_button->showFocusByLamp();
        m_button->setFocus(Qt::TabFocusReason);
        QVERIFY(m_button->hasFocus());
        const QRect lamp = difference(plain, m_parent->grab().toImage());
        QVERIFY(!lamp.isEmpty());
        QVERIFY(lamp.top() >= MetalButtonCell::rim(m_button->geometry()).bottom());
        m_button->clearFocus();
        QCOMPARE(m_parent->grab().toImage(), plain);
    }

    void aGlyphButtonWithoutAnImageIsNothingButItsBezel()
    {
        MetalGlyphButton button(m_desk->environment);
        button.resize(size);
        button.setText(QStringLiteral("Done"));
        QCOMPARE(Picture(button), drawn<MetalButtonCell>({}));
        button.setDown(true);
        QCOMPARE(Picture(button), drawn<MetalButtonCell>({.isPressed = true}));
    }

    void aGlyphButtonShowsItsImageAsItsOwnCellDrawsIt()
    {
        MetalGlyphButton button(m_desk->environment);
        button.resize(size);
        button.setImage(knob);
        QCOMPARE(Picture(button), drawn<MetalGlyphButtonCell>({.image = knob}));
        QVERIFY(Picture(button) != drawn<MetalButtonCell>({.image = knob}));
    }

private:
    QWindow m_window;
    std::unique_ptr<SkinDesk> m_desk;
    std::unique_ptr<QWidget> m_parent;
    MetalButton *m_button = nullptr;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::MetalButtonTest, QApplication)
#include "MetalButtonTest.moc"
