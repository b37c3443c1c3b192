// SPDX-License-Identifier: MIT
#include "dock/dockTileIcon.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QImage>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;

class dockTileIconTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void eachStateHasItsOwnPictureInEverySize()
    {
        QList<QImage> pictures;
        for (const QString &state : {QStringLiteral("Play"), QStringLiteral("Pause"), QStringLiteral("Stop")}) {
            for (const QString &appearance : {QString(), QStringLiteral("-Dark")}) {
                const QIcon icon = dockTileIcon(QStringLiteral("DockTile_") + state + appearance);
                QCOMPARE(icon.availableSizes().first(), QSize(16, 16));
                QCOMPARE(icon.availableSizes().last(), QSize(128, 128));
                const QImage picture = icon.pixmap(32, 32).toImage();
                QCOMPARE(picture.size(), QSize(32, 32));
                QVERIFY(!pictures.contains(picture));
                pictures.append(picture);
            }
        }
    }

    void anImageThatIsMissingIsNone()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("Cannot open file .*Nonesuch")));
        QVERIFY(dockTileIcon(QStringLiteral("DockTile_Nonesuch")).isNull());
    }
};

TUNEDECK_TEST(dockTileIconTest, QApplication)
#include "dockTileIconTest.moc"
