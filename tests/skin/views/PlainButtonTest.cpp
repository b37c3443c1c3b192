// SPDX-License-Identifier: MIT
#include "skin/views/PlainButton.h"

#include "support/SkinDesk.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QImage>
#include <QRegularExpression>
#include <QTest>

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
