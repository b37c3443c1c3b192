// SPDX-License-Identifier: MIT
#include "help/pageStyle.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QColor>
#include <QPalette>
#include <QRegularExpression>
#include <QTest>

#include <cmath>

namespace tunedeck {

namespace {
double luminance(const QColor &color)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// The contrast of two colours, from 1 (the same) to 21 (black on white).
double contrast(const QColor &one, const QColor &other)
{
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return a > b ? a / b : b / a;
}

QColor linkColorIn(const QString &style)
{
    return QColor(QRegularExpression(QStringLiteral("a:link \\{ color: (#[0-9a-f]{6})")).match(style).captured(1));
}
} // namespace

class pageStyleTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void linksCanBeReadOnLightAndOnDark_data()
    {
        QTest::addColumn<QColor>("base");
        QTest::addColumn<QColor>("link");
        for (const int grey : {0x10, 0x1e, 0x2b, 0x32, 0xf2, 0xff}) {
            for (const QColor &link : {QColor(Qt::blue), QColor(0x29, 0x80, 0xb9), QColor(0x80, 0x80, 0x80)}) {
                QTest::addRow("%s on %02x", qPrintable(link.name()), grey) << QColor(grey, grey, grey) << link;
            }
        }
    }
    void linksCanBeReadOnLightAndOnDark()
    {
        QFETCH(QColor, base);
        QFETCH(QColor, link);
        QPalette palette(base);
        palette.setColor(QPalette::Base, base);
        palette.setColor(QPalette::Text, base.lightness() < 128 ? Qt::white : Qt::black);
        palette.setColor(QPalette::Link, link);
        const QColor shown = linkColorIn(pageStyle(palette));
        QVERIFY(shown.isValid());
        QVERIFY2(contrast(shown, base) >= 4.5, qPrintable(QString::number(contrast(shown, base))));
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::pageStyleTest, QApplication)
#include "pageStyleTest.moc"
