// SPDX-License-Identifier: MIT
#include "skin/views/PlayerButton.h"

#include "skin/PaintCounter.h"
#include "skin/Picture.h"
#include "skin/views/TunedeckPlayerButton.h"
#include "support/SkinDesk.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QRegularExpression>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

#include <memory>

using namespace tunedeck;

namespace {
class ListeningWindow : public QWidget {
public:
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent *) override { ++presses; }
};

/// The colour of a pressed face, above its glare.
constexpr QPointF upperFace(17.5, 30.5);

/// The button as last painted. A picture that the test asks for would hide that no one painted it.
QImage seenFace(const QWidget &button)
{
    const QRect place(button.mapTo(button.window(), QPoint()), button.size());
    const QPixmap screen =
        button.screen()->grabWindow(button.window()->winId(), place.x(), place.y(), place.width(), place.height());
    return screen.toImage();
}
} // namespace

class PlayerButtonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        m_desk = std::make_unique<SkinDesk>();
        m_window = std::make_unique<ListeningWindow>();
        m_window->resize(100, 60);
        m_button = new PlayerButton(m_desk->environment, m_window.get());
        m_button->setGeometry(10, 10, 35, 35);
        m_seekButton = new TunedeckPlayerButton(m_desk->environment, m_window.get());
        m_seekButton->setGeometry(60, 10, 25, 25);
    }

    void cleanup()
    {
        m_window.reset();
        m_desk.reset();
    }

    void aNewButtonShowsForward()
    {
        QCOMPARE(m_button->controlGlyph(), PlayerButtonTypes::forward);
        QCOMPARE(m_seekButton->controlGlyph(), PlayerButtonTypes::forward);
        QVERIFY(!m_seekButton->isHoldButton());
    }

    void onlyANewGlyphIsPainted()
    {
        PaintCounter paints(*m_button);
        m_button->setControlGlyph(PlayerButtonTypes::forward);
        QCOMPARE(paints.takeCount(), 0);
        m_button->setControlGlyph(PlayerButtonTypes::play);
        QCOMPARE(paints.takeCount(), 1);
        QCOMPARE(m_button->controlGlyph(), PlayerButtonTypes::play);
    }

    void aClickOnTheFaceCounts()
    {
        QSignalSpy clicked(m_button, &PlayerButton::clicked);
        QTest::mouseClick(m_button, Qt::LeftButton, {}, QPoint(17, 17));
        QTest::mouseClick(m_button, Qt::LeftButton, {}, QPoint(17, 2));
        QCOMPARE(clicked.count(), 2);
    }

    void aClickInACornerGoesToNoOne()
    {
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        QSignalSpy clicked(m_button, &PlayerButton::clicked);
        for (const QPoint corner : {QPoint(1, 1), QPoint(34, 1), QPoint(1, 34), QPoint(34, 34), QPoint(17, 0)}) {
            QTest::mousePress(m_window->windowHandle(), Qt::LeftButton, {}, m_button->pos() + corner);
            QVERIFY(!m_button->isDown());
            QTest::mouseRelease(m_window->windowHandle(), Qt::LeftButton, {}, m_button->pos() + corner);
        }
        QCOMPARE(clicked.count(), 0);
        QCOMPARE(m_window->presses, 0);
    }

    void aPressInACornerStartsNoHold()
    {
        m_seekButton->setHoldButton(true);
        QTest::mousePress(m_seekButton, Qt::LeftButton, {}, QPoint(1, 1));
        QVERIFY(!m_seekButton->isHeld());
        QVERIFY(!m_seekButton->isDown());
        QVERIFY(!m_seekButton->findChild<QTimer *>()->isActive());
        QTest::mouseRelease(m_seekButton, Qt::LeftButton, {}, QPoint(1, 1));
        QVERIFY(!m_seekButton->isHeld());
    }

    void aHoldEndsWhereverTheReleaseIs()
    {
        m_seekButton->setHoldButton(true);
        QTest::mousePress(m_seekButton, Qt::LeftButton, {}, QPoint(12, 12));
        QVERIFY(m_seekButton->isHeld());
        m_seekButton->fireTimer();
        QTest::mouseRelease(m_seekButton, Qt::LeftButton, {}, QPoint(1, 1));
        QVERIFY(!m_seekButton->isHeld());
        QVERIFY(!m_seekButton->isIntentionallyHeld());
        QVERIFY(!m_seekButton->isDown());
    }

    void aClickLeavesTheFaceAsItWasOnTheScreen()
    {
        m_seekButton->setHoldButton(true);
        PaintCounter paints(*m_seekButton);
        const QImage before = seenFace(*m_seekButton);
        QTest::mousePress(m_seekButton, Qt::LeftButton, {}, QPoint(12, 12));
        QCOMPARE(paints.takeCount(), 1);
        QVERIFY(seenFace(*m_seekButton) != before);
        QTest::mouseRelease(m_seekButton, Qt::LeftButton, {}, QPoint(12, 12));
        QCOMPARE(paints.takeCount(), 1);
        QCOMPARE(seenFace(*m_seekButton), before);
    }

    void aPressedFaceIsBlueUnlessTheAccentIsGraphite()
    {
        m_button->setDown(true);
        const auto face = [this] { return Picture(*m_button).at(upperFace.x(), upperFace.y()); };
        QVERIFY(isNear(face(), QColor(140, 184, 230)));
        m_desk->setAccentColor(-1);
        QVERIFY(isNear(face(), QColor(166, 176, 186)));
        m_desk->setAccentColor(3);
        QVERIFY(isNear(face(), QColor(140, 184, 230)));
    }

    void aNewAccentIsPainted()
    {
        PaintCounter paints(*m_button);
        m_desk->setAccentColor(-1);
        QCOMPARE(paints.takeCount(), 1);
        m_desk->defaults.setBool(SettingsKey::remainingTimeEnabled, true);
        QCOMPARE(paints.takeCount(), 0);
    }

    void aNewAppearanceIsPainted()
    {
        const QColor light = Picture(*m_seekButton).at(12.5, 0.5);
        PaintCounter paints(*m_seekButton);
        m_desk->setDark(true);
        QCOMPARE(paints.takeCount(), 1);
        QVERIFY(Picture(*m_seekButton).at(12.5, 0.5).alpha() < light.alpha());
    }

    void itIsPaintedAgainWhenAWindowBecomesMain()
    {
        PaintCounter paints(*m_button);
        const bool wasMain = m_button->isMainWindow();
        QWindow *now = wasMain ? nullptr : m_window->windowHandle();
        Q_EMIT qGuiApp->focusWindowChanged(now);
        QCOMPARE(m_button->isMainWindow(), !wasMain);
        QCOMPARE(paints.takeCount(), 1);
        Q_EMIT qGuiApp->focusWindowChanged(now);
        QCOMPARE(paints.takeCount(), 0);
    }

    void aDisabledButtonIsPaintedFaint()
    {
        PaintCounter paints(*m_seekButton);
        m_seekButton->setEnabled(false);
        QCOMPARE(paints.takeCount(), 1);
        QVERIFY(isNear(Picture(*m_seekButton).at(8.5, 13.5), grey(192)));
    }

private:
    std::unique_ptr<SkinDesk> m_desk;
    std::unique_ptr<ListeningWindow> m_window;
    PlayerButton *m_button = nullptr;
    TunedeckPlayerButton *m_seekButton = nullptr;
};

TUNEDECK_TEST(PlayerButtonTest, QApplication)
#include "PlayerButtonTest.moc"
