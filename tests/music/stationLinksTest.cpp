// SPDX-License-Identifier: MIT
#include "music/stationLinks.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;

class stationLinksTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void theFourStationsHaveTheLabel_data()
    {
        QTest::addColumn<QString>("link");
        QTest::newRow("1") << QStringLiteral("itmss://radio.example/link?n=Apple%20Music%201");
        QTest::newRow("Hits") << QStringLiteral("itmss://radio.example/link?n=Apple%20Music%20Hits");
        QTest::newRow("Country") << QStringLiteral("itmss://radio.example/link?n=Apple%20Music%20Country");
        QTest::newRow("TV") << QStringLiteral("itmss://radio.example/link?n=Apple%20Music%20TV");
        QTest::newRow("any host") << QStringLiteral("itmss://elsewhere.example:8080/link?n=Apple%20Music%201");
    }
    void theFourStationsHaveTheLabel()
    {
        QFETCH(QString, link);
        const std::optional<QString> label = radioStationLabel(link);
        QVERIFY(label);
        QCOMPARE(label->toUtf8(), QByteArray("\xEF\xA3\xBFMusic"));
    }

    void anyOtherAddressHasNone_data()
    {
        QTest::addColumn<QString>("link");
        QTest::newRow("nothing") << QString();
        QTest::newRow("another scheme") << QStringLiteral("https://radio.example/link?n=Apple%20Music%201");
        QTest::newRow("a scheme before it") << QStringLiteral("xitmss://radio.example/link?n=Apple%20Music%201");
        QTest::newRow("scheme in capitals") << QStringLiteral("ITMSS://radio.example/link?n=Apple%20Music%201");
        QTest::newRow("no authority") << QStringLiteral("itmss:/link?n=Apple%20Music%201");
        QTest::newRow("a longer path") << QStringLiteral("itmss://radio.example/a/link?n=Apple%20Music%201");
        QTest::newRow("path with a slash") << QStringLiteral("itmss://radio.example/link/?n=Apple%20Music%201");
        QTest::newRow("path in capitals") << QStringLiteral("itmss://radio.example/Link?n=Apple%20Music%201");
        QTest::newRow("another station") << QStringLiteral("itmss://radio.example/link?n=Apple%20Music%202");
        QTest::newRow("station in lower case") << QStringLiteral("itmss://radio.example/link?n=apple%20music%20hits");
        QTest::newRow("spaces as plus") << QStringLiteral("itmss://radio.example/link?n=Apple+Music+Hits");
        QTest::newRow("spaces as such") << QStringLiteral("itmss://radio.example/link?n=Apple Music Hits");
        QTest::newRow("a second item") << QStringLiteral("itmss://radio.example/link?n=Apple%20Music%201&x=1");
        QTest::newRow("an item before") << QStringLiteral("itmss://radio.example/link?x=1&n=Apple%20Music%201");
        QTest::newRow("a fragment") << QStringLiteral("itmss://radio.example/link?n=Apple%20Music%201#x");
        QTest::newRow("a line feed") << QStringLiteral("itmss://radio.example/link?n=Apple%20Music%201\n");
        QTest::newRow("within a query") << QStringLiteral("itmss://radio.example?/link?n=Apple%20Music%201");
    }
    void anyOtherAddressHasNone()
    {
        QFETCH(QString, link);
        QCOMPARE(radioStationLabel(link), std::nullopt);
    }
};

TUNEDECK_TEST(stationLinksTest, QCoreApplication)
#include "stationLinksTest.moc"
