// SPDX-License-Identifier: MIT
#include "drawer/PlaylistView.h"

#include "skin/Picture.h"
#include "skin/cells/MetalButtonCell.h"
#include "skin/difference.h"
#include "skin/drawing/PixelFont.h"
#include "skin/views/EngravedLabel.h"
#include "skin/views/MetalButton.h"
#include "skin/views/MetalPopupButton.h"
#include "support/SkinDesk.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QImage>
#include <QTest>

#include <initializer_list>

using namespace tunedeck;

namespace {
QImage picture(QWidget &view)
{
    QImage image(view.size(), QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    view.render(&image, {}, {}, {});
    return image;
}

} // namespace

class PlaylistViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        // Not of the picker's list, which the offscreen platform neither raises nor gives the keyboard.
        tunedeck::failOnWarning();
    }

    void itsControlsStandInOneRowAtEveryWidth()
    {
        const SkinDesk desk;
        PlaylistView view(desk.environment);
        view.show();
        for (const int width : {350, 450, 550}) {
            view.resize(width, 64);
            int right = 0;
            for (const QWidget *control : std::initializer_list<QWidget *>{&view.playlistLabel(),
                     &view.playlistPicker(), &view.doneButton(), &view.shuffleButton(), &view.repeatButton()}) {
                // The picker's margin is empty and may cover the caption's end.
                QVERIFY(control->geometry().left() >= right - 9);
                QVERIFY(control->width() > 30);
                right = control->geometry().right();
            }
            QVERIFY(right < width - 6);
            QVERIFY(view.playlistPicker().width() >= 100);
        }
    }

    void itsControlsHaveNames()
    {
        const SkinDesk desk;
        PlaylistView view(desk.environment);
        for (const QWidget *control :
            std::initializer_list<QWidget *>{&view.playlistPicker(), &view.shuffleButton(), &view.repeatButton()}) {
            QVERIFY(!control->accessibleName().isEmpty());
        }
        QVERIFY(!view.doneButton().text().isEmpty());
        QCOMPARE(view.playlistLabel().buddy(), &view.playlistPicker());
    }

    void itsTextsAreTheSkinsAndSmall()
    {
        const SkinDesk desk;
        PlaylistView view(desk.environment);
        for (const QWidget *text : std::initializer_list<QWidget *>{
                 &view.playlistLabel(), &view.playlistPicker(), &view.doneButton(), &view.shuffleButton()}) {
            QCOMPARE(text->font().families(), pixelFont(humanistSans(), 1, *text).families());
            QCOMPARE(text->font().pointSizeF() * text->logicalDpiY() / 72, 11.0);
            QCOMPARE(text->font().bold(), text == &view.playlistLabel());
        }
    }

    void itsCaptionIsEngraved()
    {
        const SkinDesk desk;
        PlaylistView view(desk.environment);
        QCOMPARE(view.playlistLabel().text(), QStringLiteral("Playlist:"));
        // Bars instead of letters.
        view.playlistLabel().setText(QString(8, QChar(0x2588)));
        view.playlistLabel().resize(60, 40);
        const QImage caption = picture(view.playlistLabel());
        QList<QColor> rows;
        for (int y = 0; y < caption.height(); ++y) {
            if (const QColor color = caption.pixelColor(40, y); color.alpha() > 20) {
                rows.append(color);
            }
        }
        QVERIFY(rows.size() > 5);
        // Above the ink is its shadow, and below it is none. The bars do not begin with a whole pixel.
        QVERIFY(isNear(rows[0], QColor(73, 78, 89, rows[0].alpha()), 4));
        QVERIFY(rows[2].lightness() > 200);
        QVERIFY(rows.last().lightness() > 200);
    }

    void thePickersListIsDarkInALightApplicationToo()
    {
        const SkinDesk desk;
        PlaylistView view(desk.environment);
        view.show();
        view.playlistPicker().addItem(QStringLiteral("Blues"));
        view.playlistPicker().showPopup();
        QVERIFY(view.playlistPicker().view()->isVisible());
        QVERIFY(view.playlistPicker().view()->palette().color(QPalette::Base).lightness() < 128);
        view.playlistPicker().hidePopup();
    }

    void aLampBelowTheModesShowsWhereTheKeyboardIs()
    {
        const SkinDesk desk;
        PlaylistView view(desk.environment);
        view.resize(450, 64);
        view.show();
        view.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&view));
        const QImage plain = view.grab().toImage();
        const auto mark = [&view, &plain](QWidget &control) {
            control.setFocus(Qt::TabFocusReason);
            const QRect changed = difference(plain, view.grab().toImage());
            control.clearFocus();
            return changed;
        };
        for (MetalButton *mode : {&view.shuffleButton(), &view.repeatButton()}) {
            const QRect lamp = mark(*mode);
            const QRectF rim = MetalButtonCell::rim(mode->geometry());
            QVERIFY(lamp.width() >= 8);
            QVERIFY(lamp.height() >= 3);
            QVERIFY(lamp.top() >= rim.bottom());
            QVERIFY(lamp.left() > rim.left());
            QVERIFY(lamp.right() < rim.right());
        }
        for (QWidget *control : std::initializer_list<QWidget *>{&view.doneButton(), &view.playlistPicker()}) {
            const QRect ring = mark(*control);
            QVERIFY(ring.contains(control->geometry().center()));
            QVERIFY(ring.height() > 20);
        }
    }
};

TUNEDECK_TEST(PlaylistViewTest, QApplication)
#include "PlaylistViewTest.moc"
