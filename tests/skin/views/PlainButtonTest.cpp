// SPDX-License-Identifier: MIT
#include "skin/views/PlainButton.h"

#include "support/SkinDesk.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QImage>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QWidget>
#include <QWindow>

using namespace tunedeck;

namespace {
QImage picture(PlainButton &button)
{
    button.resize(16, 16);
    QImage image(button.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    button.render(&image, {}, {}, {});
    return image;
}
} // namespace

class PlainButtonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void itShowsItsImageInTheMiddle()
    {
        const SkinDesk desk;
        PlainButton button(desk.environment);
        button.setImage(QStringLiteral("speaker-loud"), {12, 12});
        const QImage image = picture(button);
        QCOMPARE(image.pixelColor(0, 8), QColor(Qt::white));
        // The box of the speaker.
        QVERIFY(image.pixelColor(5, 7).lightness() < 128);
    }

    void itDarkensWhilePressedAndFadesWhileDisabled()
    {
        const SkinDesk desk;
        PlainButton button(desk.environment);
        button.setImage(QStringLiteral("speaker-quiet"), {12, 12});
        const QImage plain = picture(button);
        button.setDown(true);
        const QImage pressed = picture(button);
        QVERIFY(pressed != plain);
        button.setDown(false);
        button.setEnabled(false);
        QVERIFY(picture(button) != plain);
        QVERIFY(picture(button) != pressed);
    }

    void itsTargetIsLargerThanWhatIsSeen()
    {
        const SkinDesk desk;
        QWidget window;
        window.resize(60, 60);
        PlainButton button(desk.environment, &window);
        button.setImage(QStringLiteral("speaker-loud"), {12, 12});
        button.setGeometry(20, 20, 16, 16);
        window.show();
        const QImage small = window.grab().toImage();
        const QMargins margins(8, 1, 3, 5);
        button.setTargetMargins(margins);
        button.setGeometry(QRect(20, 20, 16, 16).marginsAdded(margins));
        QCOMPARE(button.visibleRect(), QRect(8, 1, 16, 16));
        QCOMPARE(window.grab().toImage(), small);
        QSignalSpy clicked(&button, &PlainButton::clicked);
        for (const QPoint corner : {QPoint(12, 19), QPoint(38, 40)}) {
            QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, corner);
        }
        QCOMPARE(clicked.count(), 2);
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, QPoint(11, 19));
        QCOMPARE(clicked.count(), 2);
    }

    void theRingIsAroundWhatIsSeen()
    {
        const SkinDesk desk;
        QWidget window;
        window.resize(60, 60);
        PlainButton button(desk.environment, &window);
        button.setImage(QStringLiteral("speaker-loud"), {12, 12});
        button.setTargetMargins({8, 2, 0, 2});
        button.setGeometry(12, 20, 20, 20);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        button.clearFocus();
        const QImage plain = window.grab().toImage();
        button.setFocus(Qt::TabFocusReason);
        const QImage ringed = window.grab().toImage();
        QVERIFY(ringed.pixel(18, 30) != plain.pixel(18, 30));
        QCOMPARE(ringed.pixel(10, 30), plain.pixel(10, 30));
    }

    void itShowsItsTextWhereItHasNoImage()
    {
        const SkinDesk desk;
        PlainButton button(desk.environment);
        const QImage empty = picture(button);
        button.setText(QStringLiteral("i"));
        QVERIFY(picture(button) != empty);
    }
};

TUNEDECK_TEST(PlainButtonTest, QApplication)
#include "PlainButtonTest.moc"
