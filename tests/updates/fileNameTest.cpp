// SPDX-License-Identifier: MIT
#include "updates/fileName.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

class fileNameTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aNameIsThatOfTheVersion_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<QString>("name");
        const QByteArray file("https://a.example/t.deb");
        QTest::newRow("plain") << u"1.2~rc1+b"_s << file << u"tunedeck_1.2~rc1+b.deb"_s;
        QTest::newRow("the address says another version")
            << u"1.2"_s << QByteArray("https://a.example/tunedeck_9.0.deb") << u"tunedeck_1.2.deb"_s;
        QTest::newRow("with a query") << u"1.2"_s << QByteArray("https://a.example/t.deb?name=../../x.y")
                                      << u"tunedeck_1.2.deb"_s;
        QTest::newRow("slashes in the version") << u"../../etc/1"_s << file << u"tunedeck_....etc1.deb"_s;
        QTest::newRow("slashes in the suffix")
            << u"1.2"_s << QByteArray("https://a.example/t.a%2F..%2Fb.c%2Fd") << u"tunedeck_1.2"_s;
        QTest::newRow("control characters")
            << u"1\n2"_s << QByteArray("https://a.example/t.d%00%0A%1Beb") << u"tunedeck_12.deb"_s;
        QTest::newRow("turned around") << QString(u"1"_s + QChar(0x202e))
                                       << QByteArray("https://a.example/t.%E2%80%AEdeb") << u"tunedeck_1.deb"_s;
        QTest::newRow("no suffix") << u"1.2"_s << QByteArray("https://a.example/t") << u"tunedeck_1.2"_s;
        QTest::newRow("a folder") << u"1.2"_s << QByteArray("https://a.example/a.b/") << u"tunedeck_1.2"_s;
        QTest::newRow("no path") << u"1.2"_s << QByteArray("https://a.example") << u"tunedeck_1.2"_s;
        QTest::newRow("endless") << QString(5'000, u'1') << file
                                 << QString(u"tunedeck_"_s + QString(100, u'1') + u".deb"_s);
        QTest::newRow("an endless suffix")
            << u"1.2"_s << QByteArray("https://a.example/a." + QByteArray(5'000, 'b')) << u"tunedeck_1.2"_s;
    }
    void aNameIsThatOfTheVersion()
    {
        QFETCH(const QString, version);
        QFETCH(const QByteArray, address);
        QFETCH(const QString, name);
        QCOMPARE(fileNameFor(version, QUrl::fromEncoded(address)), name);
    }

    void aNumberStandsBeforeTheSuffix()
    {
        QCOMPARE(numberedFileName(u"tunedeck_1.2.deb"_s, 0), u"tunedeck_1.2.deb"_s);
        QCOMPARE(numberedFileName(u"tunedeck_1.2.deb"_s, 1), u"tunedeck_1.2 (1).deb"_s);
        QCOMPARE(numberedFileName(u"tunedeck"_s, 12), u"tunedeck (12)"_s);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::fileNameTest, QCoreApplication)
#include "fileNameTest.moc"
