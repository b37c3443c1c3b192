// SPDX-License-Identifier: MIT
#include "player/MarqueeText.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QRegularExpression>
#include <QTest>

#include <cmath>
#include <limits>

using namespace tunedeck;

namespace {
constexpr double height = 25;
/// The middle of the second block shows the ink alone.
const QString blocks(3, QChar(0x2588));

QFont font()
{
    QFont bold = QApplication::font();
    bold.setBold(true);
    return bold;
}

QImage picture(const MarqueeText &text)
{
    return text.picture().toImage().convertToFormat(QImage::Format_ARGB32);
}

bool isEmpty(const QImage &image, const QRect &part)
{
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0) {
                return false;
            }
        }
    }
    return true;
}
} // namespace

class MarqueeTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void aPictureIsAsHighAsAskedForAndHasRoomBesideTheText_data()
    {
        QTest::addColumn<double>("scale");
        for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
            QTest::addRow("%g", scale) << scale;
        }
    }

    void aPictureIsAsHighAsAskedForAndHasRoomBesideTheText()
    {
        QFETCH(const double, scale);
        const MarqueeText text(QStringLiteral("Blues"), font(), height, scale, MarqueeInk::Dark);
        const double width = QFontMetricsF(font()).horizontalAdvance(QStringLiteral("Blues")) + 16;
        QCOMPARE(text.picture().size(),
            QSize(static_cast<int>(std::ceil(width * scale)), static_cast<int>(std::ceil(height * scale))));
        QCOMPARE(text.picture().devicePixelRatio(), scale);
        QCOMPARE(text.scale(), scale);
    }

    void theInkedRowsHoldAllThatIsDrawn_data()
    {
        QTest::addColumn<bool>("isDark");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void theInkedRowsHoldAllThatIsDrawn()
    {
        QFETCH(const bool, isDark);
        const MarqueeText text(
            QStringLiteral("Qyj\u00c5\u0302"), font(), 60, 2, isDark ? MarqueeInk::Light : MarqueeInk::Dark);
        const QImage image = picture(text);
        const QRect rows = text.inkedRows();
        QCOMPARE(rows.left(), 0);
        QCOMPARE(rows.width(), image.width());
        QVERIFY(rows.top() > 0);
        QVERIFY(rows.bottom() < image.height() - 1);
        QVERIFY(isEmpty(image, QRect(0, 0, image.width(), rows.top())));
        QVERIFY(isEmpty(image, QRect(QPoint(0, rows.bottom() + 1), image.rect().bottomRight())));
        QVERIFY(!isEmpty(image, QRect(0, rows.top(), image.width(), 1)));
        QVERIFY(!isEmpty(image, QRect(0, rows.bottom(), image.width(), 1)));
    }

    void inTheDarkTheInkIsLight()
    {
        const QPoint middle(static_cast<int>(MarqueeText::overhang + MarqueeText::width(blocks, font()) / 2), 12);
        const QColor dark = picture(MarqueeText(blocks, font(), height, 1, MarqueeInk::Dark)).pixelColor(middle);
        QCOMPARE(dark, QColor(0x35, 0x39, 0x2a));
        const QColor light = picture(MarqueeText(blocks, font(), height, 1, MarqueeInk::Light)).pixelColor(middle);
        QVERIFY(light.lightness() > 250);
        QVERIFY(std::abs(light.alpha() - 191) <= 1);
    }

    void atHighContrastTheInkIsBlack()
    {
        const QPoint middle(static_cast<int>(MarqueeText::overhang + MarqueeText::width(blocks, font()) / 2), 12);
        QCOMPARE(
            picture(MarqueeText(blocks, font(), height, 1, MarqueeInk::Full)).pixelColor(middle), QColor(Qt::black));
    }

    void anEmptyTextGivesAnEmptyPicture()
    {
        const MarqueeText text(QString(), font(), height, 1, MarqueeInk::Dark);
        QCOMPARE(text.picture().size(), QSize(16, 25));
        QVERIFY(text.inkedRows().isEmpty());
    }

    void whatHasNoHeightOrNoScaleGivesNoPicture_data()
    {
        QTest::addColumn<double>("height");
        QTest::addColumn<double>("scale");
        constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
        QTest::newRow("no height") << 0.0 << 1.0;
        QTest::newRow("negative height") << -1.0 << 1.0;
        QTest::newRow("height that is no number") << notANumber << 1.0;
        QTest::newRow("no scale") << 25.0 << 0.0;
        QTest::newRow("negative scale") << 25.0 << -1.0;
        QTest::newRow("scale that is no number") << 25.0 << notANumber;
    }

    void whatHasNoHeightOrNoScaleGivesNoPicture()
    {
        QFETCH(const double, height);
        QFETCH(const double, scale);
        const MarqueeText text(QStringLiteral("Blues"), font(), height, scale, MarqueeInk::Dark);
        QVERIFY(text.picture().isNull());
        QVERIFY(text.inkedRows().isEmpty());
        QCOMPARE(text.scale(), 0.0);
    }

    void whatBreaksTheLineBecomesASpace()
    {
        QCOMPARE(MarqueeText::oneLine(QStringLiteral("one\ntwo\tthree\u2028four\u2029five"), font()),
            QStringLiteral("one two three four five"));
    }

    void aCharacterOfTwoHalvesIsNotCutInTwo()
    {
        const QString line = MarqueeText::oneLine(QString(999, u'i') + QStringLiteral("\U0001F3B5\U0001F3B5"), font());
        QCOMPARE(line, QString(999, u'i') + QChar(0x2026));
    }
};

TUNEDECK_TEST(MarqueeTextTest, QApplication)
#include "MarqueeTextTest.moc"
