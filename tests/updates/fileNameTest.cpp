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

    void aNameIsWhatIsHarmlessOfTheAddress_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << QByteArray("https://a.example/x/tunedeck_1.2~rc1+b_amd64.deb")
                               << u"tunedeck_1.2~rc1+b_amd64.deb"_s;
        QTest::newRow("with a query") << QByteArray("https://a.example/t.deb?name=../../x#y") << u"t.deb"_s;
        QTest::newRow("hidden") << QByteArray("https://a.example/..t.deb") << u"t.deb"_s;
        QTest::newRow("an option") << QByteArray("https://a.example/--help.deb") << u"help.deb"_s;
        QTest::newRow("slashes") << QByteArray("https://a.example/..%2F..%2Fetc%2Fpasswd") << u"passwd"_s;
        QTest::newRow("a backslash") << QByteArray("https://a.example/a%5Cb.deb") << u"ab.deb"_s;
        QTest::newRow("control characters") << QByteArray("https://a.example/a%00%0A%1Bb.deb") << u"ab.deb"_s;
        QTest::newRow("turned around") << QByteArray("https://a.example/a%E2%80%AEbed.exe") << u"abed.exe"_s;
        QTest::newRow("nothing left") << QByteArray("https://a.example/%2F%2E%2E") << u"update"_s;
        QTest::newRow("a folder") << QByteArray("https://a.example/a/") << u"update"_s;
        QTest::newRow("no path") << QByteArray("https://a.example") << u"update"_s;
        QTest::newRow("endless") << QByteArray("https://a.example/" + QByteArray(5'000, 'a') + ".deb")
                                 << QString(QString(116, u'a') + u".deb"_s);
        QTest::newRow("an endless suffix")
            << QByteArray("https://a.example/a." + QByteArray(5'000, 'b')) << QString(u"a."_s + QString(118, u'b'));
    }
    void aNameIsWhatIsHarmlessOfTheAddress()
    {
        QFETCH(const QByteArray, address);
        QFETCH(const QString, name);
        QCOMPARE(fileNameFrom(QUrl::fromEncoded(address)), name);
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
