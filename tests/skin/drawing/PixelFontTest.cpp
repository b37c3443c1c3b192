// SPDX-License-Identifier: MIT
#include "skin/drawing/PixelFont.h"

#include "skin/SkinLogRecorder.h"
#include "support/registerTest.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QImage>
#include <QTest>

namespace tunedeck {

namespace {
const QString missingFamily = QStringLiteral("Nobody Has This Font");

QStringList sorted(QStringList families)
{
    families.sort();
    return families;
}
} // namespace

class PixelFontTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itsSizeIsInPixelsAndMayBeAFraction()
    {
        const QImage device(10, 10, QImage::Format_RGB32);
        const QFont font = pixelFont(humanistSans(), 10.5, device);
        QCOMPARE(font.pointSizeF() * device.logicalDpiY() / 72, 10.5);
        QCOMPARE(sorted(font.families()), sorted(humanistSans()));
    }

    void theSkinsOwnFamiliesAreTheBest()
    {
        QCOMPARE(humanistSans().first(), QStringLiteral("Lucida Grande"));
        QCOMPARE(romanSerif().first(), QStringLiteral("Times New Roman"));
    }

    /// Qt has names such as "Serif" for the desktop's choice.
    void noFamilyOfTheSkinIsAPlaceholder()
    {
        const QStringList families = humanistSans() + romanSerif();
        for (const QString &placeholder : {QStringLiteral("Serif"), QStringLiteral("Sans Serif")}) {
            QVERIFY(!families.contains(placeholder, Qt::CaseInsensitive));
        }
    }

    void anInstalledFamilyComesBeforeAMissingOne()
    {
        const QImage device(10, 10, QImage::Format_RGB32);
        const QStringList installed = QFontDatabase::families();
        QVERIFY(!installed.isEmpty());
        for (const QString &name : installed) {
            const QString family = name.section(QStringLiteral(" ["), 0, 0);
            const QFont font = pixelFont({missingFamily, family.toUpper()}, 10, device);
            QCOMPARE(font.families(), QStringList({family.toUpper(), missingFamily}));
        }
    }

    void installedFamiliesAndMissingOnesKeepTheirOrder()
    {
        const QImage device(10, 10, QImage::Format_RGB32);
        const QString installed = QFontInfo(QGuiApplication::font()).family();
        const QString otherMissing = missingFamily + u'2';
        const QStringList families{missingFamily, installed.toUpper(), otherMissing, installed};
        QCOMPARE(pixelFont(families, 10, device).families(),
            QStringList({installed.toUpper(), installed, missingFamily, otherMissing}));
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
