// SPDX-License-Identifier: MIT
#include "player/PlayerView.h"

#include "player/LcdView.h"
#include "player/ScrollingMarqueeView.h"
#include "player/SpeakerButton.h"
#include "skin/difference.h"
#include "skin/drawing/PixelFont.h"
#include "skin/views/ClassicAudioProgressSlider.h"
#include "skin/views/DrawerBackground.h"
#include "skin/views/PinstripeView.h"
#include "skin/views/PlainButton.h"
#include "skin/views/PlayerButton.h"
#include "skin/views/ShadowView.h"
#include "skin/views/TunedeckPlayerButton.h"
#include "skin/views/VolumeSlider.h"
#include "skin/views/WindowButtonsView.h"
#include "skin/views/WindowControlButton.h"
#include "support/SkinDesk.h"
#include "support/registerTest.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QRegularExpression>
#include <QTest>

#include <initializer_list>
#include <utility>

using namespace tunedeck;

namespace {
QImage picture(QWidget &view)
{
    QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    view.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

/// The darkness of all pixels together.
double amountOfInk(QWidget &view)
{
    const QImage image = picture(view);
    double ink = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            ink += image.pixelColor(x, y).alphaF() * (1 - image.pixelColor(x, y).lightnessF());
        }
    }
    return ink;
}
} // namespace

class PlayerViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void everythingHasItsPlace_data()
    {
        QTest::addColumn<int>("width");
        for (const int width : {350, 450, 550}) {
            QTest::newRow(qPrintable(QString::number(width))) << width;
        }
    }

    void everythingHasItsPlace()
    {
        QFETCH(const int, width);
        const SkinDesk desk;
        PlayerView view(desk.environment);
        view.resize(width, 128);
        view.show();
        const auto frame = [&view](const QWidget &control) {
            return QRect(control.mapTo(&view, QPoint()), control.size());
        };
        QCOMPARE(frame(view.closeButton()), QRect(8, 6, 14, 14));
        QCOMPARE(frame(view.minimizeButton()), QRect(8, 25, 14, 14));
        QCOMPARE(frame(view.maximizeButton()), QRect(8, 44, 14, 14));
        QCOMPARE(frame(view.backwardButton()), QRect(30, 9, 25, 25));
        QCOMPARE(frame(view.playPauseButton()), QRect(57, 4, 35, 35));
        QCOMPARE(frame(view.forwardButton()), QRect(94, 9, 25, 25));
        const auto seen = [&view](const PlainButton &button) {
            return button.visibleRect().translated(button.mapTo(&view, QPoint()));
        };
        QCOMPARE(seen(view.volumeMinButton()), QRect(32, 44, 12, 16));
        QCOMPARE(seen(view.volumeMaxButton()), QRect(108, 44, 12, 16));
        QCOMPARE(seen(view.lcd().infoButton()), QRect(width - 26, 36, 14, 12));
        for (const QWidget *control :
            std::initializer_list<QWidget *>{&view.volumeMinButton(), &view.volumeSlider(), &view.volumeMaxButton()}) {
            QCOMPARE(frame(*control).y() + frame(*control).height() / 2, 52);
        }
        LcdView &lcd = view.lcd();
        QCOMPARE(frame(lcd), QRect(130, 6, width - 138, 52));
        QCOMPARE(frame(lcd.trackInfoLabel()), QRect(138, 6, width - 154, 30));
        for (const QWidget *control : std::initializer_list<QWidget *>{
                 &lcd.primaryTimeLabel(), &lcd.trackProgressSlider(), &lcd.secondaryTimeLabel(), &lcd.isLiveLabel()}) {
            QCOMPARE(frame(*control).y() + frame(*control).height() / 2, 42);
        }
        QCOMPARE(frame(view.drawerContainerView()), QRect(0, 60, width, 64));
    }

    void itsTextsHaveTheirSizes()
    {
        const SkinDesk desk;
        PlayerView view(desk.environment);
        LcdView &lcd = view.lcd();
        const auto pixels = [](const QWidget &text) { return text.font().pointSizeF() * text.logicalDpiY() / 72; };
        QCOMPARE(pixels(lcd.primaryTimeLabel()), 9.5);
        QCOMPARE(pixels(lcd.secondaryTimeLabel()), 9.5);
        QCOMPARE(pixels(lcd.isLiveLabel()), 9.0);
        QVERIFY(lcd.isLiveLabel().font().bold());
        QCOMPARE(pixels(lcd.infoButton()), 12.0);
        QVERIFY(lcd.infoButton().font().bold());
        QVERIFY(lcd.infoButton().font().italic());
        QCOMPARE(lcd.infoButton().text(), QStringLiteral("i"));
        QCOMPARE(pixels(lcd.trackInfoLabel()), 10.5);
        QVERIFY(lcd.trackInfoLabel().font().bold());
    }

    void itsTextsAskForTheSkinsTypefaces()
    {
        const SkinDesk desk;
        PlayerView view(desk.environment);
        LcdView &lcd = view.lcd();
        for (const QWidget *text : std::initializer_list<QWidget *>{
                 &lcd.primaryTimeLabel(), &lcd.secondaryTimeLabel(), &lcd.isLiveLabel(), &lcd.trackInfoLabel()}) {
            QCOMPARE(text->font().families(), pixelFont(humanistSans(), 1, *text).families());
        }
        QCOMPARE(lcd.infoButton().font().families(), pixelFont(romanSerif(), 1, lcd.infoButton()).families());
    }

    void theWindowsButtonsHaveTheirNames()
    {
        const SkinDesk desk;
        PlayerView view(desk.environment);
        const QList<std::pair<const QWidget *, QString>> names{{&view.closeButton(), QStringLiteral("Close")},
            {&view.minimizeButton(), QStringLiteral("Minimize")}, {&view.maximizeButton(), QStringLiteral("Zoom")}};
        for (const auto &[button, name] : names) {
            QCOMPARE(button->accessibleName(), name);
            QCOMPARE(button->toolTip(), name);
        }
    }

    void theSmallButtonsHaveTargetsThatAHandHits_data()
    {
        QTest::addColumn<int>("width");
        for (const int width : {350, 450, 550}) {
            QTest::newRow(qPrintable(QString::number(width))) << width;
        }
    }

    void theSmallButtonsHaveTargetsThatAHandHits()
    {
        QFETCH(const int, width);
        const SkinDesk desk;
        PlayerView view(desk.environment);
        view.resize(width, 64);
        view.show();
        for (QWidget *button : std::initializer_list<QWidget *>{
                 &view.volumeMinButton(), &view.volumeMaxButton(), &view.lcd().infoButton()}) {
            const QRect target(button->mapTo(&view, QPoint()), button->size());
            QVERIFY(target.width() >= 20);
            QVERIFY(target.height() >= 20);
            QVERIFY(view.rect().contains(target));
            for (const QPoint corner :
                {target.topLeft(), target.topRight(), target.bottomLeft(), target.bottomRight(), target.center()}) {
                QCOMPARE(view.childAt(corner), button);
            }
            QCOMPARE(QAccessible::queryAccessibleInterface(button)->rect().size(), target.size());
        }
    }

    void theTargetsTakeNothingFromTheirNeighbours()
    {
        const SkinDesk desk;
        PlayerView view(desk.environment);
        view.resize(350, 64);
        view.lcd().secondaryTimeLabel().setText(QStringLiteral("-10:00:00"));
        view.show();
        QCoreApplication::processEvents();
        LcdView &lcd = view.lcd();
        for (QWidget *neighbour : std::initializer_list<QWidget *>{&view.closeButton(), &view.minimizeButton(),
                 &view.maximizeButton(), &view.backwardButton(), &view.playPauseButton(), &view.forwardButton(),
                 &lcd.trackInfoLabel(), &lcd.secondaryTimeLabel(), &lcd.trackProgressSlider()}) {
            const QRect frame(neighbour->mapTo(&view, QPoint()), neighbour->size());
            for (int y = frame.top(); y <= frame.bottom(); ++y) {
                for (int x = frame.left(); x <= frame.right(); ++x) {
                    QCOMPARE(view.childAt(x, y), neighbour);
                }
            }
        }
        // The speakers begin where the groove ends.
        for (int x = 44; x < 108; ++x) {
            QVERIFY(view.childAt(x, 52) == &view.volumeSlider());
        }
        // The metal beside them moves the window.
        for (const QPoint metal : {QPoint(38, 41), QPoint(38, 62), QPoint(114, 41), QPoint(128, 52)}) {
            QVERIFY(!qobject_cast<QAbstractButton *>(view.childAt(metal)));
        }
    }

    void aLampBelowTheTransportShowsWhereTheKeyboardIs()
    {
        const SkinDesk desk;
        PlayerView view(desk.environment);
        view.resize(450, 64);
        view.show();
        view.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&view));
        view.lcd().infoButton().setFocus(Qt::OtherFocusReason);
        const QImage plain = picture(view);
        for (QWidget *button :
            std::initializer_list<QWidget *>{&view.backwardButton(), &view.playPauseButton(), &view.forwardButton()}) {
            button->setFocus(Qt::TabFocusReason);
            const QRect lamp = difference(plain, picture(view));
            QVERIFY(lamp.width() >= 8);
            QVERIFY(lamp.height() >= 3);
            QVERIFY(lamp.top() > button->geometry().bottom());
            QVERIFY(lamp.bottom() < view.volumeSlider().geometry().center().y());
            QVERIFY(lamp.left() > button->geometry().left());
            QVERIFY(lamp.right() < button->geometry().right());
            button->clearFocus();
            QCOMPARE(picture(view), plain);
        }
    }

    void theDisplayPointsAtItsSliderWhereTheKeyboardIs()
    {
        const SkinDesk desk;
        PlayerView view(desk.environment);
        view.resize(350, 64);
        LcdView &lcd = view.lcd();
        lcd.primaryTimeLabel().setText(QStringLiteral("0:10"));
        lcd.secondaryTimeLabel().setText(QStringLiteral("-3:10"));
        view.show();
        view.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&view));
        QCoreApplication::processEvents();
        lcd.infoButton().setFocus(Qt::OtherFocusReason);
        const QImage plain = picture(lcd);
        lcd.trackProgressSlider().setFocus(Qt::TabFocusReason);
        const QImage marked = picture(lcd);
        const QRect slider = lcd.trackProgressSlider().geometry();
        const QRect marks = difference(plain, marked);
        QCOMPARE(marked.copy(slider), plain.copy(slider));
        QCOMPARE(difference(plain.copy(0, 0, slider.left(), 52), marked.copy(0, 0, slider.left(), 52)).height(),
            marks.height());
        QVERIFY(marks.left() > lcd.primaryTimeLabel().geometry().right());
        QVERIFY(marks.left() < slider.left() - 2);
        QVERIFY(marks.right() > slider.right() + 2);
        QVERIFY(marks.right() < lcd.secondaryTimeLabel().geometry().left());
        QVERIFY(marks.top() >= slider.top());
        QVERIFY(marks.bottom() <= slider.bottom());
    }

    void theLoudSpeakerHasMoreInkThanTheQuietOne()
    {
        const SkinDesk desk;
        PlayerView view(desk.environment);
        QVERIFY(amountOfInk(view.volumeMinButton()) > 0);
        QVERIFY(amountOfInk(view.volumeMaxButton()) > 1.2 * amountOfInk(view.volumeMinButton()));
    }

    void thePinstripesCoverThePlayerAndNoMore()
    {
        const SkinDesk desk;
        PlayerView view(desk.environment);
        view.resize(450, 124);
        view.drawerContainerView().show();
        view.show();
        view.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&view));
        const QImage striped = picture(view);
        view.findChild<PinstripeView *>()->hide();
        const QRect stripes = difference(picture(view), striped);
        QVERIFY(stripes.width() > 440);
        QVERIFY(stripes.height() > 50);
        QVERIFY(QRect(0, 0, 450, 64).contains(stripes));
    }

    void thePlayerCastsAShadowIntoTheDrawer()
    {
        const SkinDesk desk;
        PlayerView view(desk.environment);
        view.resize(450, 124);
        view.drawerContainerView().show();
        const QImage shaded = picture(view);
        view.findChild<ShadowView *>()->hide();
        const QImage plain = picture(view);
        const QRect shadow = difference(plain, shaded);
        QVERIFY(shadow.width() > 440);
        QVERIFY(shadow.top() >= 60);
        QVERIFY(shaded.pixelColor(225, 65).lightness() < plain.pixelColor(225, 65).lightness());
        QCOMPARE(shaded.pixelColor(225, 110), plain.pixelColor(225, 110));
    }

    void itsCornersAreRoundAndItsInsideIsNot()
    {
        const SkinDesk desk;
        PlayerView view(desk.environment);
        view.resize(450, 64);
        const QImage image = picture(view);
        for (const QPoint corner : {QPoint(0, 0), QPoint(449, 0), QPoint(0, 63), QPoint(449, 63)}) {
            QVERIFY(image.pixelColor(corner).alpha() < 128);
        }
        QCOMPARE(image.pixelColor(225, 2).alpha(), 255);
        QCOMPARE(image.pixelColor(2, 32).alpha(), 255);
    }
};

TUNEDECK_TEST(PlayerViewTest, QApplication)
#include "PlayerViewTest.moc"
