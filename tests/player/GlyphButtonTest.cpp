// SPDX-License-Identifier: MIT
#include "GlyphButton.h"

#include <QImage>
#include <QPalette>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;

namespace {
QImage picture(GlyphButton &button)
{
    button.resize(35, 35);
    return button.grab().toImage();
}
} // namespace

class GlyphButtonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void eachGlyphIsAPictureOfItsOwn()
    {
        QList<QImage> pictures;
        for (int glyph = 0; glyph <= static_cast<int>(GlyphButton::Glyph::Loud); ++glyph) {
            GlyphButton button(static_cast<GlyphButton::Glyph>(glyph), GlyphButton::Face::Round);
            const QImage image = picture(button);
            QVERIFY(!pictures.contains(image));
            pictures.append(image);
        }
    }

    void aNewGlyphIsDrawn()
    {
        GlyphButton button(GlyphButton::Glyph::Play, GlyphButton::Face::Round);
        const QImage play = picture(button);
        button.setControlGlyph(GlyphButton::Glyph::Pause);
        QCOMPARE(button.controlGlyph(), GlyphButton::Glyph::Pause);
        QVERIFY(picture(button) != play);
        button.setControlGlyph(GlyphButton::Glyph::Play);
        QCOMPARE(picture(button), play);
    }

    void aDisabledButtonIsFainter()
    {
        GlyphButton button(GlyphButton::Glyph::Play, GlyphButton::Face::Round);
        const QImage enabled = picture(button);
        button.setEnabled(false);
        QVERIFY(picture(button) != enabled);
    }

    void theFocusRingIsDrawnUnlessItIsUnwanted()
    {
        QWidget window;
        GlyphButton button(GlyphButton::Glyph::Play, GlyphButton::Face::Round, &window);
        window.show();
        window.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        const QImage plain = picture(button);
        button.setFocus();
        QVERIFY(picture(button) != plain);
        button.setDrawsFocusRing(false);
        QCOMPARE(picture(button), plain);
    }
};

QTEST_MAIN(GlyphButtonTest)
#include "GlyphButtonTest.moc"
