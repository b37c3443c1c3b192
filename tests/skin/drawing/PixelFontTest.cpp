// SPDX-License-Identifier: MIT
#include "skin/drawing/PixelFont.h"

#include "skin/SkinLogRecorder.h"
#include "support/registerTest.h"

#include <QFontInfo>
#include <QGuiApplication>
#include <QImage>
#include <QTest>

namespace tunedeck {

namespace {
const QString missingFamily = QStringLiteral("Nobody Has This Font");
} // namespace

class PixelFontTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itsSizeIsInPixelsAndMayBeAFraction()
    {
        const QImage device(10, 10, QImage::Format_RGB32);
        const QFont font = pixelFont(humanistSans(), 10.5, device);
        QCOMPARE(font.pointSizeF() * device.logicalDpiY() / 72, 10.5);
        QCOMPARE(font.families(), humanistSans());
    }

    void aFontThatIsMissingIsLogged()
    {
        const SkinLogRecorder log(true);
        const QImage device(10, 10, QImage::Format_RGB32);
        const QString substitute = QFontInfo(pixelFont({missingFamily}, 10, device)).family();
        QCOMPARE(SkinLogRecorder::lines,
            {QStringLiteral("no font of Nobody Has This Font is installed, Qt uses ") + substitute});
    }

    void aFontThatIsInstalledIsNotLogged()
    {
        const SkinLogRecorder log(true);
        const QImage device(10, 10, QImage::Format_RGB32);
        const QString installed = QFontInfo(QGuiApplication::font()).family();
        static_cast<void>(pixelFont({missingFamily, installed}, 10, device));
        QVERIFY(SkinLogRecorder::lines.isEmpty());
    }

    void nothingIsLoggedUnlessTheLogIsSwitchedOn()
    {
        const SkinLogRecorder log(false);
        const QImage device(10, 10, QImage::Format_RGB32);
        static_cast<void>(pixelFont({missingFamily}, 10, device));
        QVERIFY(SkinLogRecorder::lines.isEmpty());
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PixelFontTest, QGuiApplication)
#include "PixelFontTest.moc"
