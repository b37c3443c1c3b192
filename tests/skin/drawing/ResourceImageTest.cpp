// SPDX-License-Identifier: MIT
#include "skin/drawing/ResourceImage.h"

#include "skin/Picture.h"
#include "support/abortedRun.h"
#include "support/registerTest.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;

namespace {
const QString missingImage = QStringLiteral("missing");
} // namespace

class ResourceImageTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void itsSizeIsTheOneThatThePictureTells()
    {
        QCOMPARE(ResourceImage(QStringLiteral("knob")).size(), QSizeF(13, 13));
    }

    void itFillsItsRectangleWhateverTheProportions()
    {
        const Picture picture(QSize(40, 20), 1,
            [](QPainter &painter) { ResourceImage(QStringLiteral("knob")).draw(painter, QRectF(5, 5, 30, 10)); });
        QVERIFY(picture.at(6.5, 10).alpha() > 0);
        QVERIFY(picture.at(33.5, 10).alpha() > 0);
        QCOMPARE(picture.at(4.5, 10).alpha(), 0);
        QCOMPARE(picture.at(20, 4.5).alpha(), 0);
        QCOMPARE(picture.at(20, 15.5).alpha(), 0);
    }

    void oneThatIsMissingIsFatalAndNamed()
    {
        const std::optional<QString> said = lastWordsOfAbortedRun(missingImage);
        QVERIFY(said);
        QVERIFY(said->contains(QStringLiteral("the picture \"missing\" is missing")));
    }
};

TUNEDECK_TEST(ResourceImageTest, QGuiApplication, [](const QString &name) { const ResourceImage image(name); })

#include "ResourceImageTest.moc"
