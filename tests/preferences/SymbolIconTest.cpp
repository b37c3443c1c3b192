// SPDX-License-Identifier: MIT
#include "preferences/SymbolIcon.h"

#include "PreferencesDesk.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

using namespace tunedeck;

namespace {
/// The strongest colour in `picture`, which has one ink.
QColor inkOf(const QImage &picture)
{
    QColor ink(Qt::transparent);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y).alpha() > ink.alpha()) {
                ink = picture.pixelColor(x, y);
            }
        }
    }
    return ink;
}

QPalette palette(const QColor &text, const QColor &highlight)
{
    QPalette palette;
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, Qt::gray);
    palette.setColor(QPalette::Highlight, highlight);
    return palette;
}
} // namespace

class SymbolIconTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }
    void cleanup() { QApplication::setPalette(QPalette()); }

    void theProgramHasEverySymbol_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("General") << QStringLiteral("gearshape");
        QTest::newRow("Interface") << QStringLiteral("macwindow");
        QTest::newRow("Updates") << QStringLiteral("arrow.triangle.2.circlepath");
    }

    void theProgramHasEverySymbol()
    {
        QFETCH(const QString, name);
        const QIcon icon = symbolIcon(name);
        QVERIFY(!icon.isNull());
        for (const int size : {24, 30, 36, 48}) {
            const QImage picture = icon.pixmap(QSize(size, size), 1.0).toImage();
            QCOMPARE(picture.size(), QSize(size, size));
            QCOMPARE(inkOf(picture).alpha(), 255);
            QCOMPARE(picture.pixelColor(0, 0).alpha(), 0);
        }
    }

    void aSymbolThatThereIsNotIsANullIcon()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("Cannot open file .*nonsense")));
        QVERIFY(symbolIcon(QStringLiteral("nonsense")).isNull());
    }

    void itIsDrawnInTheColourOfTextAndFollowsThePalette()
    {
        const QIcon icon = symbolIcon(QStringLiteral("macwindow"));
        for (const QColor &text : {QColor(Qt::black), QColor(0xee, 0xee, 0xee)}) {
            QApplication::setPalette(palette(text, Qt::blue));
            QCOMPARE(inkOf(icon.pixmap(QSize(48, 48), 1.0).toImage()), text);
            QCOMPARE(inkOf(icon.pixmap(QSize(48, 48), 1.0, QIcon::Disabled).toImage()), QColor(Qt::gray));
        }
    }

    void itIsHighlightedWhileItIsOn()
    {
        QApplication::setPalette(palette(Qt::black, QColor(0, 0, 200)));
        const QIcon icon = symbolIcon(QStringLiteral("macwindow"));
        const QColor ink = inkOf(icon.pixmap(QSize(48, 48), 1.0, QIcon::Normal, QIcon::On).toImage());
        QCOMPARE(ink.red(), 0);
        QVERIFY(ink.blue() > 100 && ink.blue() < 200);
    }

    void itIsPaintedAsCrispAsThePaintedDevice()
    {
        const QIcon icon = symbolIcon(QStringLiteral("macwindow"));
        QImage canvas(48, 48, QImage::Format_ARGB32_Premultiplied);
        canvas.setDevicePixelRatio(2);
        canvas.fill(Qt::transparent);
        QPainter painter(&canvas);
        icon.paint(&painter, QRect(0, 0, 24, 24));
        painter.end();
        canvas.setDevicePixelRatio(1);
        QCOMPARE(canvas, icon.pixmap(QSize(48, 48), 1.0).toImage());
    }
};

TUNEDECK_TEST(SymbolIconTest, QApplication)
#include "SymbolIconTest.moc"
